#import "binders/PopUpButtonBinder.h"

#import "Text.h"

namespace corvane::appkit {

PopUpButtonBinder::PopUpButtonBinder(PopUpButton& button, NSPopUpButton* view)
    : Binder(button, view), button_(button), widget_(view), target_(view, [this] {
        button_.choose(static_cast<int>([widget_ indexOfSelectedItem]));
        refresh();  // the control may have refused the choice
      }) {
  [widget_ removeAllItems];
  for (const std::string& item : button_.items()) [widget_ addItemWithTitle:toNSString(item)];
  refresh();
}

void PopUpButtonBinder::show() { [widget_ selectItemAtIndex:button_.indexOfSelectedItem()]; }

}  // namespace corvane::appkit
