#include "widgets/CheckBox.h"

#include "widgets/ButtonKeys.h"

namespace corvane::qt {

void CheckBox::keyPressEvent(QKeyEvent* event) {
  if (!takeButtonKey(*this, *event)) QCheckBox::keyPressEvent(event);
}

}  // namespace corvane::qt
