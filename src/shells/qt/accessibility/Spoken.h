// What is said of a widget to assistive technology. A text that has not changed is not set again: the toolkit
// would announce it as a change all the same, and unlocking the pane would read out every control.
#pragma once

#include <QWidget>

namespace corvane::qt {

inline void setSpokenName(QWidget& widget, const QString& name) {
  if (name != widget.accessibleName()) widget.setAccessibleName(name);
}

inline void setSpokenDescription(QWidget& widget, const QString& text) {
  if (text != widget.accessibleDescription()) widget.setAccessibleDescription(text);
}

}  // namespace corvane::qt
