// What the tab view of a Mac does by itself: it takes the keyboard, and the arrow keys go from tab to tab.
#pragma once

#import <AppKit/AppKit.h>

@interface GNUstepTabView : NSTabView
@end
