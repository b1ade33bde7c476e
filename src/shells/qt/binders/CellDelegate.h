// Draws the cells of an outline, each description as the control that it stands for, and hands clicks on them
// to the core. Where a cell's control stands in its row is decided in one place (`controlRect`), for drawing,
// clicking and editing alike.
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

  /// Presses the cell's button from the keyboard; false when the cell has none.
  bool press(const QModelIndex& index);
  /// Where the control of the cell stands inside the row's rectangle.
  [[nodiscard]] QRect controlRect(const Cell& cell, const QRect& row) const;

 private:
  [[nodiscard]] PreparedCell prepared(const QModelIndex& index) const;

  OutlineView& outline_;
  const OutlineModel& model_;
};

}  // namespace corvane::qt
