#include "widgets/ButtonKeys.h"

#include <QDialog>

#include "widgets/PushButton.h"
#include "widgets/SheetPanel.h"

namespace corvane::qt {
namespace {

/// Whether Return belongs to a panel or sheet around the widget.
bool isInPanel(const QWidget& widget) {
  for (const QWidget* around = widget.parentWidget(); around != nullptr; around = around->parentWidget()) {
    if (qobject_cast<const SheetPanel*>(around) != nullptr ||
        qobject_cast<const QDialog*>(around) != nullptr) {
      return true;
    }
  }
  return false;
}

}  // namespace

ButtonKey buttonKeyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Space:
      return event.isAutoRepeat() ? ButtonKey::Held : ButtonKey::Space;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return event.isAutoRepeat() ? ButtonKey::Held : ButtonKey::Return;
    case Qt::Key_Escape:
      return event.isAutoRepeat() ? ButtonKey::Held : ButtonKey::Escape;
    default:
      return ButtonKey::None;
  }
}

bool takeButtonKey(QAbstractButton& button, QKeyEvent& event) {
  switch (buttonKeyOf(event)) {
    case ButtonKey::Held:
      return true;
    case ButtonKey::Return:
      if (isInPanel(button)) {
        event.ignore();  // the panel knows whose key it is
      } else {
        button.click();
      }
      return true;
    default:
      return false;
  }
}

bool pressButtonOf(const QWidget& panel, const QKeyEvent& event) {
  const ButtonKey key = buttonKeyOf(event);
  if (key == ButtonKey::None || key == ButtonKey::Space) return false;
  if (key == ButtonKey::Held) return true;
  for (PushButton* button : panel.findChildren<PushButton*>()) {
    if (key == ButtonKey::Return ? button->isDefault() : button->escapes()) {
      button->click();
      return true;
    }
  }
  return true;
}

}  // namespace corvane::qt
