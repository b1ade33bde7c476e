#include "widgets/PaintedButton.h"

#include "widgets/ButtonKeys.h"

namespace corvane::qt {

void PaintedButton::keyPressEvent(QKeyEvent* event) {
  switch (buttonKeyOf(*event)) {
    case ButtonKey::Held:
      return;
    case ButtonKey::Return:
      click();
      return;
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

}  // namespace corvane::qt
