#import "gnustep/GNUstepTabView.h"

@implementation GNUstepTabView

- (BOOL)acceptsFirstResponder {
  return YES;
}

- (BOOL)becomeFirstResponder {
  [self setNeedsDisplay:YES];
  return YES;
}

- (BOOL)resignFirstResponder {
  [self setNeedsDisplay:YES];
  return YES;
}

// The toolkit would give this view to the last one of the page, and have none itself.
- (void)setNextKeyView:(NSView*)view {
  auto set = (void (*)(id, SEL, NSView*))[NSView instanceMethodForSelector:_cmd];
  set(self, _cmd, view);
}

- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  switch ([keys length] == 1 ? [keys characterAtIndex:0] : 0) {
    case NSLeftArrowFunctionKey:
      [self selectPreviousTabViewItem:self];
      break;
    case NSRightArrowFunctionKey:
      [self selectNextTabViewItem:self];
      break;
    default:
      [super keyDown:event];
      break;
  }
}

// A frame round the title of the tab that the keyboard is on.
- (void)drawRect:(NSRect)rect {
  [super drawRect:rect];
  if ([[self window] firstResponder] != self) return;
  [[NSColor blackColor] set];
  NSDottedFrameRect(NSInsetRect([[self selectedTabViewItem] _tabRect], -2, 2));
}

@end
