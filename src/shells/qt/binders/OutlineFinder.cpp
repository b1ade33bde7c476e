#include "binders/OutlineFinder.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "Text.h"
#include "binders/CellContents.h"
#include "widgets/OutlineTree.h"

namespace corvane::qt {

OutlineFinder::OutlineFinder(OutlineView& outline, OutlineTree& tree, QLineEdit& field, QLabel& nothing)
    : QObject(&tree), outline_(outline), tree_(tree), field_(field), nothing_(nothing) {
  nothing_.hide();
  field_.installEventFilter(this);
  connect(&field_, &QLineEdit::textChanged, this, &OutlineFinder::narrow);
  // What was read again is narrowed again: all its rows are new to the widget.
  connect(tree_.model(), &QAbstractItemModel::modelReset, this, [this] {
    if (!field_.text().isEmpty()) narrow();
  });
}

void OutlineFinder::narrow() {
  bool isAnyFound = false;
  int row = 0;
  for (const OutlineItem& item : outline_.childrenOfItem({})) {
    const bool isFound = narrowRow(item, row);
    tree_.setRowHidden(row++, {}, !isFound);
    isAnyFound = isAnyFound || isFound;
  }
  if (field_.text().isEmpty()) closeWhatWasOpened();
  const bool saysNothing = row > 0 && !isAnyFound;
  if (saysNothing && !nothing_.isVisible()) {
    QAccessibleEvent told(&nothing_, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
  }
  nothing_.setVisible(saysNothing);
}

bool OutlineFinder::narrowRow(const OutlineItem& item, int row) {
  const bool isWhole = field_.text().isEmpty() || contains(item);
  const QModelIndex parent = tree_.model()->index(row, 0);
  bool isBelow = false;
  int place = 0;
  for (const OutlineItem& below : outline_.childrenOfItem(item)) {
    const bool isFound = !isWhole && contains(below);
    tree_.setRowHidden(place++, parent, !isWhole && !isFound);
    isBelow = isBelow || isFound;
  }
  if (isBelow && !outline_.isItemExpanded(item)) {
    opened_.insert(outline_.persistentNameOfItem(item));
    outline_.expandItem(item);
  }
  return isWhole || isBelow;
}

bool OutlineFinder::contains(const OutlineItem& item) const {
  const QString sought = field_.text();
  if (toQString(outline_.persistentNameOfItem(item)).contains(sought, Qt::CaseInsensitive)) return true;
  for (const OutlineView::Column& column : outline_.columns()) {
    if (!column.checkBox && textOf(outline_.preparedCell(column, item)).contains(sought, Qt::CaseInsensitive))
      return true;
  }
  return false;
}

void OutlineFinder::closeWhatWasOpened() {
  for (const OutlineItem& item : outline_.childrenOfItem({})) {
    if (opened_.count(outline_.persistentNameOfItem(item)) > 0) outline_.collapseItem(item);
  }
  opened_.clear();
}

void OutlineFinder::goToFirst() {
  for (int row = 0; row < tree_.model()->rowCount(); ++row) {
    if (tree_.isRowHidden(row, {})) continue;
    tree_.setFocus(Qt::TabFocusReason);
    tree_.setCurrentIndex(tree_.model()->index(row, 0));
    return;
  }
}

bool OutlineFinder::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
      field_.clear();
      tree_.setFocus(Qt::OtherFocusReason);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
      goToFirst();
      return true;
    default:
      return false;
  }
}

}  // namespace corvane::qt
