#include "widgets/PaintedButton.h"

#include <QKeyEvent>

namespace corvane::qt {

void PaintedButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    // A key that is held down clicks once.
    if (!event->isAutoRepeat()) click();
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

}  // namespace corvane::qt
