// What the outline of a Mac does by itself: rows of several heights as the delegate says, the triangle in the
// outline's own column, one frame of a cell for drawing, clicking and editing, and menus of cells that follow
// the keyboard.
#pragma once

#include <vector>

#import <AppKit/AppKit.h>

@interface GNUstepOutline : NSOutlineView {
  std::vector<CGFloat> tops_;  // of the rows, and the end of the last one; empty: to be measured
}
@end
