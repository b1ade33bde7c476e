#import "binders/ButtonBinder.h"

#import "Text.h"

namespace corvane::appkit {

// A check box has changed its own state when it reports the click; the control's state is the one that
// counts, also when the click was not taken.
ButtonBinder::ButtonBinder(Button& button, NSButton* view, Placement placement)
    : Binder(button, view, placement), button_(button), widget_(view), target_(view, [this] {
        button_.click();
        refresh();
      }) {
  refresh();
}

void ButtonBinder::show() {
  if (button_.kind() == ButtonKind::Label) {
    // A label that does nothing is a text, which is never shown as disabled.
    const TextStyle style{[widget_ font], [widget_ alignment], button_.enabled() || !button_.action};
    [widget_ setAttributedTitle:toNSAttributedString(button_.attributedTitle(), style)];
    [[widget_ cell] setRefusesFirstResponder:!button_.takesKeyboard()];
    return;
  }
  [widget_ setTitle:toNSString(button_.title())];
  if (button_.kind() != ButtonKind::CheckBox) return;
  [widget_ setAllowsMixedState:button_.state() == ButtonState::Mixed];  // no click leads to the mixed state
  [widget_ setState:static_cast<NSInteger>(button_.state())];
}

}  // namespace corvane::appkit
