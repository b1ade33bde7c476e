#include "accessibility/AccessibleOutline.h"

#include "accessibility/AccessibleRows.h"

namespace corvane::qt {

int AccessibleOutline::childCount() const {
  const AccessibleRows* rows = AccessibleRows::of(tree_);
  return rows != nullptr ? static_cast<int>(rows->outline().numberOfChildrenOfItem({})) : 0;
}

QAccessibleInterface* AccessibleOutline::child(int index) const {
  AccessibleRows* rows = AccessibleRows::of(tree_);
  if (rows == nullptr || index < 0) return nullptr;
  return rows->interfaceOf(rows->outline().childOfItem({}, static_cast<std::size_t>(index)));
}

int AccessibleOutline::indexOfChild(const QAccessibleInterface* child) const {
  for (int index = 0, count = childCount(); index < count; ++index) {
    if (this->child(index) == child) return index;
  }
  return -1;
}

QAccessibleInterface* AccessibleOutline::childAt(int x, int y) const {
  AccessibleRows* rows = AccessibleRows::of(tree_);
  const QModelIndex index = tree_.indexAt(tree_.viewport()->mapFromGlobal(QPoint(x, y)));
  return rows != nullptr ? rows->interfaceOf(rows->itemOf(index)) : nullptr;
}

QAccessibleInterface* AccessibleOutline::focusChild() const {
  AccessibleRows* rows = AccessibleRows::of(tree_);
  QAccessibleInterface* row =
      rows != nullptr && tree_.hasFocus() ? rows->interfaceOf(rows->itemOf(tree_.currentIndex())) : nullptr;
  return row != nullptr ? row : QAccessibleWidget::focusChild();
}

}  // namespace corvane::qt
