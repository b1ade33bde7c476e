// What an open menu of a Mac does by itself: it follows the keyboard.
#include <utility>

#import "System.h"
#import "binders/Target.h"

/// Has the keyboard while the menu of a cell is open.
@interface GNUstepMenuKeys : NSView {
  NSPopUpButtonCell* cell_;
  NSView* owner_;  // of the keyboard, before and after
  std::function<void()> closed_;
}
- (id)initWithCell:(NSPopUpButtonCell*)cell owner:(NSView*)owner closed:(std::function<void()>)closed;
@end

@implementation GNUstepMenuKeys

- (id)initWithCell:(NSPopUpButtonCell*)cell owner:(NSView*)owner closed:(std::function<void()>)closed {
  self = [super initWithFrame:NSZeroRect];
  if (self != nil) {
    cell_ = [cell retain];
    owner_ = owner;
    closed_ = std::move(closed);
  }
  return self;
}

- (void)dealloc {
  [cell_ release];
  [super dealloc];
}

- (BOOL)acceptsFirstResponder {
  return YES;
}

- (void)step:(NSInteger)step {
  NSMenuView* menu = [[cell_ menu] menuRepresentation];
  const NSInteger next = [menu highlightedItemIndex] + step;
  if (next >= 0 && next < [cell_ numberOfItems]) [menu setHighlightedItemIndex:next];
}

- (void)finish:(NSInteger)chosen {
  const std::function<void()> closed = std::exchange(closed_, nullptr);
  if (!closed) return;
  [[self retain] autorelease];
  [cell_ dismissPopUp];
  if ([[self window] firstResponder] == self) [[self window] makeFirstResponder:owner_];
  [self removeFromSuperview];
  if (chosen >= 0) {
    [cell_ selectItemAtIndex:chosen];
    [NSApp sendAction:[cell_ action] to:[cell_ target] from:owner_];
  }
  closed();
}

// Whoever takes the keyboard closes the menu.
- (BOOL)resignFirstResponder {
  GNUstepMenuKeys* keys = [self retain];
  corvane::appkit::callSoon([keys] {
    [keys finish:-1];
    [keys release];
  });
  return YES;
}

- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  switch ([keys length] == 1 ? [keys characterAtIndex:0] : 0) {
    case NSUpArrowFunctionKey:
      [self step:-1];
      break;
    case NSDownArrowFunctionKey:
      [self step:1];
      break;
    case '\r':
    case ' ':
      [self finish:[[[cell_ menu] menuRepresentation] highlightedItemIndex]];
      break;
    default:
      [self finish:-1];
      break;
  }
}

@end

namespace corvane::appkit {

void openMenu(NSPopUpButtonCell* cell, NSRect frame, NSView* view, std::function<void()> closed) {
  [cell attachPopUpWithFrame:frame inView:view];
  [[[cell menu] menuRepresentation] setHighlightedItemIndex:[cell indexOfSelectedItem]];
  GNUstepMenuKeys* keys = [[[GNUstepMenuKeys alloc] initWithCell:cell owner:view
                                                          closed:std::move(closed)] autorelease];
  [view addSubview:keys];
  [[view window] makeFirstResponder:keys];
}

}  // namespace corvane::appkit
