#include "widgets/PushButton.h"

#include "widgets/ButtonKeys.h"

namespace corvane::qt {

PushButton::PushButton(const QString& title, QWidget* parent) : QPushButton(title, parent) {
  setAutoDefault(false);  // or the one that has the keyboard would become the default one of a dialog
}

void PushButton::keyPressEvent(QKeyEvent* event) {
  if (!takeButtonKey(*this, *event)) QPushButton::keyPressEvent(event);
}

}  // namespace corvane::qt
