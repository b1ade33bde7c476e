// Draws and edits the cells of an outline, each description as the control that it stands for, and hands
// clicks and edits to the core. Where a cell's control stands in its row is decided in one place
// (`controlRect`), for drawing, clicking and editing alike.
#pragma once

#include <QStyledItemDelegate>

#include "controls/OutlineView.h"

namespace corvane::qt {

class OutlineModel;

class CellDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  CellDelegate(OutlineView& outline, const OutlineModel& model, QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  /// Null where the core does not let the cell be edited.
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

  [[nodiscard]] bool canEdit(const QModelIndex& index) const;
  /// Presses the cell's button from the keyboard; false when the cell has none.
  bool press(const QModelIndex& index);
  /// Where the control of the cell stands inside the row's rectangle.
  [[nodiscard]] QRect controlRect(const Cell& cell, const QRect& row) const;
 signals:
  /// The user clicked a cell that can be edited.
  void editRequested(const QPersistentModelIndex& index);

 private:
  void commitChoice(QWidget* editor);
  [[nodiscard]] PreparedCell prepared(const QModelIndex& index) const;

  OutlineView& outline_;
  const OutlineModel& model_;
};

}  // namespace corvane::qt
