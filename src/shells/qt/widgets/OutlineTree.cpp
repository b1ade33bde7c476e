#include "widgets/OutlineTree.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "appearance/Shapes.h"

namespace corvane::qt {

OutlineTree::OutlineTree(QWidget* parent) : QTreeView(parent) {
  setItemsExpandable(false);  // by the toolkit itself
  setExpandsOnDoubleClick(false);
  setAllColumnsShowFocus(false);
  setUniformRowHeights(false);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
}

bool OutlineTree::hasTriangle(const QModelIndex& index) const {
  return index.isValid() && showsTriangle && showsTriangle(index);
}

void OutlineTree::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  if (!hasTriangle(index)) return;
  QRect place = rect;
  place.setLeft(rect.right() - indentation() + 1);
  drawDisclosure(*painter, place, isExpanded(index.siblingAtColumn(0)),
                 palette().color(QPalette::PlaceholderText));
}

QModelIndex OutlineTree::triangleAt(const QPoint& point) const {
  const QModelIndex clicked = indexAt(point);
  if (!clicked.isValid()) return {};
  const int column = treePosition() < 0 ? header()->logicalIndex(0) : treePosition();
  const QRect text = visualRect(clicked.siblingAtColumn(column));
  const bool before = point.x() < text.left() && point.x() >= text.left() - indentation();
  const QModelIndex row = clicked.siblingAtColumn(0);
  return before && hasTriangle(row) ? row : QModelIndex();
}

void OutlineTree::mousePressEvent(QMouseEvent* event) {
  const QModelIndex row = triangleAt(event->position().toPoint());
  if (row.isValid() && event->button() == Qt::LeftButton) {
    emit triangleClicked(row);
    return;
  }
  QTreeView::mousePressEvent(event);
}

// Two quick clicks are two clicks: a check box changes twice.
void OutlineTree::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void OutlineTree::keyPressEvent(QKeyEvent* event) {
  const QModelIndex current = currentIndex();
  const QModelIndex row = current.siblingAtColumn(0);
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
      const bool opens = event->key() == Qt::Key_Right;
      if (hasTriangle(row) && isExpanded(row) != opens) {
        emit triangleClicked(row);
      } else if (!opens && row.parent().isValid()) {
        setCurrentIndex(row.parent().siblingAtColumn(current.column()));
      } else if (opens && isExpanded(row) && model()->rowCount(row) > 0) {
        setCurrentIndex(model()->index(0, current.column(), row));
      }
      return;
    }
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (current.isValid() && state() != EditingState) {
        emit cellPressed(current);
        return;
      }
      break;
    default:
      break;
  }
  QTreeView::keyPressEvent(event);
}

}  // namespace corvane::qt
