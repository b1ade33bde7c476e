// What the text cell of a Mac does by itself: it draws its placeholder while it is empty.
#pragma once

#import <AppKit/AppKit.h>

@interface GNUstepEntryCell : NSTextFieldCell
@end
