// A pop-up menu of titles of which one is chosen.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "controls/Control.h"

namespace corvane {

class PopUpButton final : public Control {
 public:
  explicit PopUpButton(std::vector<std::string> items);

  [[nodiscard]] const std::vector<std::string>& items() const { return items_; }
  [[nodiscard]] int indexOfSelectedItem() const { return selected_; }
  /// An index outside the menu selects nothing (-1).
  void selectItemAtIndex(int index);

  /// The user's choice: a binding hears of it when it is another one, the action is called in any case. An
  /// index outside the menu does nothing.
  void choose(int index);
  std::function<void(PopUpButton&)> action;

 private:
  std::vector<std::string> items_;
  int selected_ = 0;
};

}  // namespace corvane
