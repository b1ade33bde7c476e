#include "widgets/PaintedButton.h"

#include "widgets/ButtonKeys.h"

namespace corvane::qt {

void PaintedButton::keyPressEvent(QKeyEvent* event) {
  if (!takeButtonKey(*this, *event)) QAbstractButton::keyPressEvent(event);
}

}  // namespace corvane::qt
