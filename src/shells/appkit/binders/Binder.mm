#import "binders/Binder.h"

#import "Text.h"

namespace corvane::appkit {

Binder::Binder(Control& control, NSView* view, Placement placement)
    : control_(control), view_([view retain]), placement_(placement) {
  control_.onChange = [this] { refresh(); };
}

Binder::~Binder() {
  control_.onChange = nullptr;
  [view_ release];
}

void Binder::refresh() {
  NSString* toolTip = control_.toolTip().empty() ? nil : toNSString(control_.toolTip());
  if (toolTip != [view_ toolTip] && ![toolTip isEqual:[view_ toolTip]]) [view_ setToolTip:toolTip];
  if (!control_.accessibleName().empty()) setSpokenName(view_, toNSString(control_.accessibleName()));
  show();
  const bool takes = takesActs();
  if (!takes || control_.hidden()) takeKeyboardAway();
  if ([view_ isKindOfClass:[NSControl class]]) [static_cast<NSControl*>(view_) setEnabled:takes];
  [view_ setHidden:control_.hidden()];
  place();
}

bool Binder::hasKeyboard() const {
  NSResponder* first = [[view_ window] firstResponder];
  if ([first isKindOfClass:[NSText class]] && [static_cast<NSText*>(first) isFieldEditor])
    return static_cast<id>([static_cast<NSText*>(first) delegate]) == view_;
  return first == view_;
}

// Where the Tab key would go; nowhere when that leads back to the view.
void Binder::takeKeyboardAway() {
  if (hasKeyboard()) [[view_ window] selectKeyViewFollowingView:view_];
  if (hasKeyboard()) [[view_ window] makeFirstResponder:nil];
}

void Binder::place() {
  if (placement_ == Placement::Layout) return;
  NSRect placed = toNSRect(control_.frame());
  if (placement_ == Placement::Horizontal) {
    placed.origin.y = [view_ frame].origin.y;
    placed.size.height = [view_ frame].size.height;
  }
  if (NSEqualRects(placed, [view_ frame])) return;
  [[view_ superview] setNeedsDisplayInRect:[view_ frame]];
  [view_ setFrame:placed];
  [view_ setNeedsDisplay:YES];
}

}  // namespace corvane::appkit
