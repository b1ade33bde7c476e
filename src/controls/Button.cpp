#include "controls/Button.h"

#include <algorithm>
#include <utility>

#include "controls/ActInProgress.h"

namespace corvane {

Button::Button(ButtonKind kind, std::string title) : kind_(kind), title_(std::move(title)) {}

void Button::setTitle(std::string title) { setAttributedTitle(AttributedText(std::move(title))); }

void Button::setAttributedTitle(AttributedText title) {
  if (title == title_) return;
  title_ = std::move(title);
  didChange();
}

void Button::setState(ButtonState state) {
  if (state == state_) return;
  state_ = state;
  didChange();
}

void Button::setIntState(int state) {
  if (state == 0) {
    setState(ButtonState::Off);
  } else {
    setState(state == -1 ? ButtonState::Mixed : ButtonState::On);
  }
}

bool Button::takesKeyboard() const {
  if (kind_ != ButtonKind::Label) return true;
  const bool isLink =
      std::ranges::any_of(title_.runs, [](const auto& run) { return run.attributes.underlined; });
  return action && (isLink || title_.text.empty());
}

void Button::click() {
  if (!takesUserActs() || isActing_) return;
  const ActInProgress acting(isActing_);
  if (kind_ == ButtonKind::CheckBox) {
    setState(state_ == ButtonState::On ? ButtonState::Off : ButtonState::On);
    if (onUserEdit) onUserEdit();
  }
  if (action) action(*this);
}

}  // namespace corvane
