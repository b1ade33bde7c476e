#include "widgets/KeyboardParking.h"

#include <QVariant>

namespace corvane::qt {
namespace {

/// The property of a window that names the control from which its keyboard was taken.
constexpr const char* kTakenFrom = "keyboardTakenFrom";

}  // namespace

void parkKeyboard(QWidget& widget) {
  QWidget* window = widget.window();
  const QWidget* focus = window->focusWidget();
  if (window == &widget || focus == nullptr || (focus != &widget && !widget.isAncestorOf(focus))) return;
  window->setFocus(Qt::OtherFocusReason);
  window->setProperty(kTakenFrom, QVariant::fromValue<QObject*>(&widget));
}

void returnKeyboard(QWidget& widget) {
  QWidget* window = widget.window();
  if (window->property(kTakenFrom).value<QObject*>() != &widget) return;
  if (window->focusWidget() != window) {
    window->setProperty(kTakenFrom, QVariant());
  } else if (widget.isEnabled() && widget.isVisible()) {
    window->setProperty(kTakenFrom, QVariant());
    widget.setFocus(Qt::OtherFocusReason);
  }
}

}  // namespace corvane::qt
