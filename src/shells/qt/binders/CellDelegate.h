// Draws the cells of an outline, each description as the control that it stands for, edits them in place, and
// hands clicks and new values to the core. Where a cell's control stands in its row is decided in one place
// (`controlRect`), for drawing, clicking and editing alike.
#pragma once

#include <QPointer>
#include <QStyledItemDelegate>
#include <optional>

#include "controls/OutlineView.h"
#include "widgets/OutlineTree.h"

namespace corvane::qt {

class OutlineModel;

class CellDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  CellDelegate(OutlineView& outline, const OutlineModel& model, QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const override;
  /// An editor is filled when it is made; what is typed in it outlives every refresh of its row.
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

  /// What a press of the mouse does at the point inside the cell's rectangle, and where else it does that.
  [[nodiscard]] CellTarget targetAt(const QModelIndex& index, const QRect& row, const QPoint& point) const;
  /// What the mouse looks like at the point. Asked for every move of the mouse: no stored value is read for
  /// it.
  [[nodiscard]] Qt::CursorShape shapeAt(const QModelIndex& index, const QRect& row,
                                        const QPoint& point) const;
  /// Presses the cell's button; false when the cell has none.
  bool press(const QModelIndex& index);
  /// Whether the user may edit the cell in a widget now; `mayType`: in one that is typed in.
  [[nodiscard]] bool mayEdit(const QModelIndex& index) const;
  [[nodiscard]] bool mayType(const QModelIndex& index) const;
  /// The editor that was opened last, while there is one.
  [[nodiscard]] QWidget* openEditor() const { return openEditor_; }
  /// Closes it without storing what was typed.
  void dropEditor();
  /// Closes it as if the user had left it.
  void leaveEditor();
  /// Where the control of the cell stands inside the row's rectangle.
  [[nodiscard]] QRect controlRect(const Cell& cell, const QRect& row) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] PreparedCell prepared(const QModelIndex& index) const;
  /// The cell without its value, for all that only asks what kind of cell it is: to read a value can mean to
  /// ask root.
  [[nodiscard]] CellReference bare(const QModelIndex& index) const;
  /// The part of the control that takes clicks.
  [[nodiscard]] QRect hitRect(const Cell& cell, const QRect& row) const;

  OutlineView& outline_;
  const OutlineModel& model_;
  mutable QPointer<QWidget> openEditor_;  // set by the toolkit's factory call, which is const
};

}  // namespace corvane::qt
