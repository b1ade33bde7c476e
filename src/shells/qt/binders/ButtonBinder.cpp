#include "binders/ButtonBinder.h"

#include <QCheckBox>
#include <QSignalBlocker>

#include "Text.h"
#include "widgets/LabelButton.h"

namespace corvane::qt {

ButtonBinder::ButtonBinder(Button& button, QAbstractButton& widget)
    : Binder(button, widget), button_(button), widget_(widget) {
  if (auto* checkBox = qobject_cast<QCheckBox*>(&widget_)) {
    // Assistive technology switches the box without a click.
    connect(checkBox, &QCheckBox::stateChanged, this, &ButtonBinder::act);
  } else {
    connect(&widget_, &QAbstractButton::clicked, this, &ButtonBinder::act);
  }
  refresh();
}

// A check box has changed its own state when it reports that; the control's state is the one that counts,
// also when the act was not taken.
void ButtonBinder::act() {
  if (isInReach()) button_.click();
  refresh();
}

void ButtonBinder::show() {
  if (auto* label = qobject_cast<LabelButton*>(&widget_)) {
    label->setAttributedText(button_.attributedTitle());
    label->setLink(button_.takesKeyboard());
  } else if (!button_.title().empty()) {
    widget_.setText(withoutShortcuts(toQString(button_.title())));
  }
  if (auto* checkBox = qobject_cast<QCheckBox*>(&widget_)) {
    const QSignalBlocker blocker(checkBox);
    switch (button_.state()) {
      case ButtonState::Off:
        checkBox->setCheckState(Qt::Unchecked);
        break;
      case ButtonState::On:
        checkBox->setCheckState(Qt::Checked);
        break;
      case ButtonState::Mixed:
        checkBox->setCheckState(Qt::PartiallyChecked);
        break;
    }
    checkBox->setTristate(button_.state() == ButtonState::Mixed);  // a click never leads to the mixed state
  }
}

}  // namespace corvane::qt
