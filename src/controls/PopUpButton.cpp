#include "controls/PopUpButton.h"

#include <utility>

namespace corvane {

PopUpButton::PopUpButton(std::vector<std::string> items)
    : items_(std::move(items)), selected_(items_.empty() ? -1 : 0) {}

void PopUpButton::selectItemAtIndex(int index) {
  const int selected = index >= 0 && index < static_cast<int>(items_.size()) ? index : -1;
  if (selected == selected_) return;
  selected_ = selected;
  didChange();
}

void PopUpButton::choose(int index) {
  if (!takesUserActs() || index < 0 || index >= static_cast<int>(items_.size())) return;
  const bool isNewValue = index != selected_;
  selectItemAtIndex(index);
  if (isNewValue && onUserEdit) onUserEdit();
  if (action) action(*this);
}

}  // namespace corvane
