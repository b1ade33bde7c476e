// The tree widget of an outline for assistive technology: below it the rows of the top level.
#pragma once

#include <QAccessibleWidget>

#include "widgets/OutlineTree.h"

namespace corvane::qt {

class AccessibleRows;

class AccessibleOutline final : public QAccessibleWidget {
 public:
  explicit AccessibleOutline(OutlineTree& tree) : QAccessibleWidget(&tree, QAccessible::Tree), tree_(tree) {}

  [[nodiscard]] int childCount() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  /// The row that the keyboard is on, or what has it within the row.
  [[nodiscard]] QAccessibleInterface* focusChild() const override;

 private:
  OutlineTree& tree_;
};

}  // namespace corvane::qt
