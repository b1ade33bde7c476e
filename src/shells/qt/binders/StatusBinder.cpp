#include "binders/StatusBinder.h"

#include <QAccessible>

#include "Text.h"

namespace corvane::qt {

StatusBinder::StatusBinder(TextField& field, StatusLabel& label)
    : Binder(field, label), field_(field), label_(label) {
  QSizePolicy policy = label.sizePolicy();
  policy.setRetainSizeWhenHidden(false);
  label.setSizePolicy(policy);
  refresh();
}

void StatusBinder::show() {
  const QString text = toQString(field_.stringValue());
  if (text == label_.text()) return;
  label_.setText(text);
  QAccessibleEvent event(&label_, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

}  // namespace corvane::qt
