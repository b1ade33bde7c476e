#import "binders/AuthorizationViewBinder.h"

#import "Text.h"

namespace corvane::appkit {

AuthorizationViewBinder::AuthorizationViewBinder(AuthorizationView& view, CorvaneLockButton* button,
                                                 NSTextField* label)
    : Binder(view, button), lock_(view), button_(button), label_([label retain]), target_(button, [this] {
        lock_.click();
      }) {
  refresh();
}

AuthorizationViewBinder::~AuthorizationViewBinder() { [label_ release]; }

void AuthorizationViewBinder::show() {
  [button_ setOpen:lock_.state() == AuthorizationView::State::Open];
  [label_ setStringValue:toNSString(lock_.label())];
}

}  // namespace corvane::appkit
