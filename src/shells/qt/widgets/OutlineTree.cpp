#include "widgets/OutlineTree.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <utility>

#include "TextLine.h"
#include "appearance/Shapes.h"
#include "widgets/ButtonKeys.h"

namespace corvane::qt {
namespace {

/// Keys that only say which letter the next key is.
bool isModifier(int key) {
  switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_Mode_switch:
    case Qt::Key_Multi_key:
      return true;
    default:
      return key >= Qt::Key_Dead_Grave && key <= Qt::Key_Dead_Longsolidusoverlay;
  }
}

}  // namespace

OutlineTree::OutlineTree(QWidget* parent) : QTreeView(parent) {
  setItemsExpandable(false);  // by the toolkit itself
  setExpandsOnDoubleClick(false);
  setAllColumnsShowFocus(false);
  setUniformRowHeights(false);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  viewport()->setMouseTracking(true);
}

bool OutlineTree::hasTriangle(const QModelIndex& index) const {
  return index.isValid() && showsTriangle && showsTriangle(index);
}

bool OutlineTree::isLeftOut(const QModelIndex& index) const {
  for (QModelIndex row = index; row.isValid(); row = row.parent()) {
    if (isRowHidden(row.row(), row.parent())) return true;
  }
  return false;
}

void OutlineTree::setCurrentCell(const QModelIndex& index) {
  const bool scrolls = hasAutoScroll();
  setAutoScroll(false);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  setAutoScroll(scrolls);
}

void OutlineTree::paintEvent(QPaintEvent* event) {
  const auto rows = drawsRows ? drawsRows() : nullptr;
  QTreeView::paintEvent(event);
  if (model() == nullptr || model()->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Active, QPalette::PlaceholderText));
  drawTextLine(painter, viewport()->rect(), Qt::AlignHCenter, placeholder_);
}

void OutlineTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const bool isMarked =
      marksCurrentRow_ && hasFocus() && index.siblingAtColumn(0) == currentIndex().siblingAtColumn(0);
  const QRectF row(0, option.rect.top(), viewport()->width(), option.rect.height());
  if (isMarked) drawFocusBelow(*painter, row, palette());
  QTreeView::drawRow(painter, option, index);
  if (isMarked) drawFocusAround(*painter, row, palette());
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

bool OutlineTree::takePress(const QMouseEvent& event) {
  tookPress_ = false;
  if (event.button() != Qt::LeftButton) return false;
  const QPoint point = event.position().toPoint();
  if (const QModelIndex row = triangleAt(point); row.isValid()) {
    tookPress_ = true;
    emit triangleClicked(row);
    return true;
  }
  const QModelIndex cell = indexAt(point);
  const CellTarget target = cell.isValid() && targetAt ? targetAt(cell, point) : CellTarget{};
  if (target.act == CellAct::None) return false;
  tookPress_ = true;
  setCurrentCell(cell);
  if (target.act == CellAct::Edit) {
    emit editorPressed(cell, point);
  } else {
    pressed_ = cell;
    pressedPlace_ = target.place.translated(-visualRect(cell).topLeft());
    isOverPressed_ = true;
    update(cell);
    setMouseDown(true);
  }
  return true;
}

bool OutlineTree::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
      // The toolkit would draw the rows anew that the mouse enters and leaves, which reads their values; no
      // row looks different under the mouse.
      return true;
    default:
      return QTreeView::viewportEvent(event);
  }
}

void OutlineTree::mousePressEvent(QMouseEvent* event) {
  setMarksCurrentRow(false);
  if (!takePress(*event)) QTreeView::mousePressEvent(event);
}

void OutlineTree::mouseDoubleClickEvent(QMouseEvent* event) {
  // The second click of two fast ones is a click like every other.
  if (!takePress(*event)) QTreeView::mouseDoubleClickEvent(event);
}

void OutlineTree::showShapeAt(const QPoint& point) {
  const QModelIndex cell = indexAt(point);
  viewport()->setCursor(cell.isValid() && shapeAt ? shapeAt(cell, point) : Qt::ArrowCursor);
}

void OutlineTree::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  showShapeAt(point);
  // The release goes elsewhere where the press has opened something.
  if (!event->buttons().testFlag(Qt::LeftButton)) tookPress_ = false;
  if (!pressed_.isValid()) {
    // To the toolkit a move after a press selects rows. Without a button held it would only note the row, and
    // draw it anew, as for a hovering mouse.
    if (!tookPress_ && event->buttons() != Qt::NoButton) QTreeView::mouseMoveEvent(event);
    return;
  }
  const bool isOver = pressedPlace_.translated(visualRect(pressed_).topLeft()).contains(point);
  if (isOver == std::exchange(isOverPressed_, isOver)) return;
  update(pressed_);
}

void OutlineTree::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) tookPress_ = false;
  if (!isMouseDown_ || event->button() != Qt::LeftButton) {
    QTreeView::mouseReleaseEvent(event);
    return;
  }
  // Invalid when the row has gone: then nothing was clicked.
  const QModelIndex clicked = isOverPressed_ ? QModelIndex(pressed_) : QModelIndex();
  endPress();
  if (clicked.isValid()) emit cellClicked(clicked);
}

void OutlineTree::endPress() {
  if (pressed_.isValid()) update(pressed_);
  pressed_ = QPersistentModelIndex();
  isOverPressed_ = false;
  setMouseDown(false);
}

void OutlineTree::stepSideways(bool opens) {
  const QModelIndex current = currentIndex();
  const QModelIndex row = current.siblingAtColumn(0);
  if (hasTriangle(row) && isExpanded(row) != opens) {
    emit triangleClicked(row);
  } else if (!opens && row.parent().isValid()) {
    setCurrentIndex(row.parent().siblingAtColumn(current.column()));
  } else if (opens && isExpanded(row) && model()->rowCount(row) > 0) {
    setCurrentIndex(model()->index(0, current.column(), row));
  }
}

QString OutlineTree::wordsOf(const QModelIndex& row) const {
  return row.siblingAtColumn(qMax(0, treePosition())).data().toString().trimmed();
}

bool OutlineTree::isSearching() const {
  return sinceLetter_.isValid() && sinceLetter_.elapsed() < QApplication::keyboardInputInterval();
}

// The toolkit's own search takes the blank before a plug-in's name for its first letter.
void OutlineTree::keyboardSearch(const QString& letters) {
  const bool goesOn = isSearching();
  sought_ = goesOn ? sought_ + letters : letters;
  sinceLetter_.start();
  if (letters.isEmpty() || model()->rowCount() == 0) return;
  const bool repeats = sought_.count(sought_.front(), Qt::CaseInsensitive) == sought_.size();
  const QString wanted = repeats ? sought_.left(1) : sought_;
  const QModelIndex first = model()->index(0, 0);
  const QModelIndex current = currentIndex().siblingAtColumn(0);
  const bool isShown = current.isValid() && visualRect(current).isValid();  // not below a closed row
  const QModelIndex start = isShown ? current : first;
  QModelIndex row = start;
  do {
    const bool counts = row != start || (goesOn && !repeats) || !isShown;
    if (counts && wordsOf(row).startsWith(wanted, Qt::CaseInsensitive)) {
      setCurrentIndex(row.siblingAtColumn(qMax(0, currentIndex().column())));
      return;
    }
    row = indexBelow(row).siblingAtColumn(0);
    if (!row.isValid()) row = first;
  } while (row != start);
}

void OutlineTree::keyPressEvent(QKeyEvent* event) {
  setMarksCurrentRow(true);
  const ButtonKey button = buttonKeyOf(*event);
  if (button == ButtonKey::Space && isSearching()) {
    keyboardSearch(event->text());  // a blank between two words that are being typed
    return;
  }
  if (event->text().trimmed().isEmpty() && !isModifier(event->key())) sinceLetter_.invalidate();
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      stepSideways(event->key() == Qt::Key_Right);
      return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (button != ButtonKey::Held) activateCurrentRow();
      return;
    case Qt::Key_F2:
      if (!event->isAutoRepeat()) activateCurrentRow();
      return;
    default:
      QTreeView::keyPressEvent(event);
  }
}

void OutlineTree::activateCurrentRow() {
  if (currentIndex().isValid() && state() != EditingState) emit rowActivated(currentIndex());
}

void OutlineTree::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  tellFocus();
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
    setMarksCurrentRow(true);
}

void OutlineTree::focusOutEvent(QFocusEvent* event) {
  endPress();  // whatever took the keyboard may have taken the mouse too
  QTreeView::focusOutEvent(event);
}

void OutlineTree::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const QPersistentModelIndex edited = currentIndex();
  // The toolkit would go on to the next cell of any kind; which cells are edited is not its to know.
  QTreeView::closeEditor(editor, QAbstractItemDelegate::NoHint);
  const bool forward = hint == QAbstractItemDelegate::EditNextItem;
  if (forward || hint == QAbstractItemDelegate::EditPreviousItem) emit editorTabbed(edited, forward);
  emit busyChanged();
}

void OutlineTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  // Not as the toolkit's tree does it, which tells of cells, and also while the keyboard is elsewhere.
  QAbstractItemView::currentChanged(current, previous);
  tellFocus();
  if (!marksCurrentRow_) return;
  // The mark goes around the whole row; the toolkit draws anew the one cell that is left and the one that is
  // reached. Where a point is no whole number of pixels two rows share a line of them.
  for (const QModelIndex& index : {previous, current}) {
    const QRect cell = visualRect(index);
    viewport()->update(0, cell.top() - 1, viewport()->width(), cell.height() + 2);
  }
}

void OutlineTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QAbstractItemView::selectionChanged(selected, deselected);  // rows are not selected to assistive technology
}

void OutlineTree::tellFocus() {
  if (!QAccessible::isActive() || !hasFocus()) return;
  QAccessibleInterface* own = QAccessible::queryAccessibleInterface(this);
  if (QAccessibleInterface* row = own->focusChild()) {
    QAccessibleEvent event(row, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
  }
}

void OutlineTree::setMouseDown(bool isDown) {
  if (isDown == std::exchange(isMouseDown_, isDown)) return;
  emit busyChanged();
}

void OutlineTree::setMarksCurrentRow(bool marks) {
  if (marks == std::exchange(marksCurrentRow_, marks)) return;
  viewport()->update();
}

}  // namespace corvane::qt
