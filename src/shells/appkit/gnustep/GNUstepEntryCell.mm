#import "gnustep/GNUstepEntryCell.h"

@implementation GNUstepEntryCell

- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view {
  [super drawInteriorWithFrame:frame inView:view];
  // In this order: to ask a cell that is being edited for its text is to store it.
  if (_cell.in_editing || [self placeholderString] == nil || [[self stringValue] length] > 0) return;
  NSDictionary* attributes = [NSDictionary
      dictionaryWithObjectsAndKeys:[NSColor disabledControlTextColor], NSForegroundColorAttributeName,
                                   [self font], NSFontAttributeName, nil];
  const NSRect inside = NSInsetRect([self titleRectForBounds:frame], 2, 0);
  [[self placeholderString] drawInRect:inside withAttributes:attributes];
}

@end
