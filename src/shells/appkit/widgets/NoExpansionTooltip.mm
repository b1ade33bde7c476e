#import "widgets/NoExpansionTooltip.h"

@implementation NSTextFieldCell (noExpansionTooltip)

- (NSRect)expansionFrameWithFrame:(NSRect)frame inView:(NSView*)view {
  return NSZeroRect;
}

@end
