#include "binders/AuthorizationViewBinder.h"

#include "Text.h"
#include "accessibility/Spoken.h"

namespace corvane::qt {

AuthorizationViewBinder::AuthorizationViewBinder(AuthorizationView& view, LockButton& button,
                                                 FittedLabel& label, QString tree)
    : Binder(view, button), view_(view), button_(button), label_(label), tree_(std::move(tree)) {
  connect(&button_, &QAbstractButton::clicked, this, [this] {
    if (isInReach()) view_.click();
  });
  refresh();
}

void AuthorizationViewBinder::show() {
  const QString text = toQString(view_.label());
  button_.setOpen(view_.state() == AuthorizationView::State::Open);
  setSpokenDescription(button_, tree_.isEmpty() ? text : tree_ + QLatin1Char('\n') + text);
  label_.setText(text);
}

}  // namespace corvane::qt
