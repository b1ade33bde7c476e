#include "widgets/PushButton.h"

#include "widgets/ButtonKeys.h"

namespace corvane::qt {

PushButton::PushButton(const QString& title, QWidget* parent) : QPushButton(title, parent) {
  setAutoDefault(false);  // or the one that has the keyboard would become the default one of a dialog
}

void PushButton::keyPressEvent(QKeyEvent* event) {
  switch (buttonKeyOf(*event)) {
    case ButtonKey::Held:
      return;
    case ButtonKey::Return:
      if (isInPanel(*this)) {
        event->ignore();  // the panel knows whose key it is
      } else {
        click();
      }
      return;
    default:
      QPushButton::keyPressEvent(event);
  }
}

}  // namespace corvane::qt
