// Push buttons, check boxes and labels that can be clicked.
#pragma once

#include <functional>
#include <string>

#include "controls/Control.h"
#include "values/AttributedText.h"

namespace corvane {

enum class ButtonKind { Push, CheckBox, Label };
enum class ButtonState { Off = 0, On = 1, Mixed = -1 };

class Button final : public Control {
 public:
  explicit Button(ButtonKind kind, std::string title = {});

  [[nodiscard]] ButtonKind kind() const { return kind_; }
  [[nodiscard]] const std::string& title() const { return title_.text; }
  [[nodiscard]] const AttributedText& attributedTitle() const { return title_; }
  void setTitle(std::string title);
  void setAttributedTitle(AttributedText title);

  [[nodiscard]] ButtonState state() const { return state_; }
  void setState(ButtonState state);
  /// By the platform's rule for integers: 0 is off, -1 is mixed, anything else on.
  void setIntState(int state);

  /// Whether the keyboard goes to it, as far as it is in use. Of the labels only to a link and to a picture
  /// that do something: any other text that can be clicked belongs to a control that has the keyboard itself.
  [[nodiscard]] bool takesKeyboard() const;

  /// The user's click: a check box changes its state (anything but on becomes on), a binding hears of it,
  /// then the action is called. A click that comes while another one is still being carried out does nothing.
  void click();
  std::function<void(Button&)> action;

 private:
  ButtonKind kind_;
  AttributedText title_;
  ButtonState state_ = ButtonState::Off;
  bool isActing_ = false;
};

}  // namespace corvane
