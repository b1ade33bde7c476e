// What an open menu of a Mac does by itself: it follows the keyboard.
#import "System.h"

/// Has the keyboard while the menu of a cell is open.
@interface GNUstepMenuKeys : NSView {
  NSPopUpButtonCell* cell_;
  NSView* owner_;  // of the keyboard, before and after
}
- (id)initWithCell:(NSPopUpButtonCell*)cell owner:(NSView*)owner;
@end

@implementation GNUstepMenuKeys

- (id)initWithCell:(NSPopUpButtonCell*)cell owner:(NSView*)owner {
  self = [super initWithFrame:NSZeroRect];
  if (self != nil) {
    cell_ = [cell retain];
    owner_ = owner;
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

- (void)close {
  [[self retain] autorelease];
  [cell_ dismissPopUp];
  NSWindow* window = [self window];
  [self removeFromSuperview];
  [window makeFirstResponder:owner_];
}

- (void)choose {
  const NSInteger chosen = [[[cell_ menu] menuRepresentation] highlightedItemIndex];
  [self close];
  if (chosen < 0) return;
  [cell_ selectItemAtIndex:chosen];
  [NSApp sendAction:[cell_ action] to:[cell_ target] from:owner_];
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
      [self choose];
      break;
    default:
      [self close];
      break;
  }
}

@end

namespace corvane::appkit {

void openMenu(NSPopUpButtonCell* cell, NSRect frame, NSView* view) {
  [cell attachPopUpWithFrame:frame inView:view];
  [[[cell menu] menuRepresentation] setHighlightedItemIndex:[cell indexOfSelectedItem]];
  GNUstepMenuKeys* keys = [[[GNUstepMenuKeys alloc] initWithCell:cell owner:view] autorelease];
  [view addSubview:keys];
  [[view window] makeFirstResponder:keys];
}

}  // namespace corvane::appkit
