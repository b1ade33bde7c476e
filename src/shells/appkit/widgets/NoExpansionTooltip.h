// No text cell shows its whole text in a tip of the toolkit's own where it is cut off: over the name of a
// volume the only tip is the one that the table's data source gives. This holds for every text cell of the
// process, the host's among them; it is intended.
#pragma once

#import "AppKit.h"

@interface NSTextFieldCell (noExpansionTooltip)
- (NSRect)expansionFrameWithFrame:(NSRect)frame inView:(NSView*)view;
@end
