#include "binders/PopUpButtonBinder.h"

#include <QSignalBlocker>

#include "Text.h"

namespace corvane::qt {

PopUpButtonBinder::PopUpButtonBinder(PopUpButton& button, QComboBox& widget)
    : Binder(button, widget), button_(button), widget_(widget) {
  for (const std::string& item : button_.items()) widget_.addItem(toQString(item));
  connect(&widget_, &QComboBox::activated, this, [this](int index) {
    button_.choose(index);
    refresh();  // the control may have refused the choice
  });
  refresh();
}

void PopUpButtonBinder::show() {
  const QSignalBlocker blocker(widget_);
  widget_.setCurrentIndex(button_.indexOfSelectedItem());
}

}  // namespace corvane::qt
