// A menu or a box of numbers for assistive technology. The toolkit's own would be called by the item that it
// shows, and what the item is for would never be said.
#pragma once

#include <QAccessibleWidget>

#include "widgets/MenuBox.h"

namespace corvane::qt {

class AccessibleMenu final : public QAccessibleWidget {
 public:
  explicit AccessibleMenu(MenuBox& box) : QAccessibleWidget(&box, QAccessible::ComboBox), box_(box) {}

  /// The list of the items, then the field of a box that is typed in.
  [[nodiscard]] int childCount() const override { return box_.isEditable() ? 2 : 1; }
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QString text(QAccessible::Text kind) const override;
  [[nodiscard]] QAccessible::State state() const override;
  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;

 private:
  MenuBox& box_;
};

}  // namespace corvane::qt
