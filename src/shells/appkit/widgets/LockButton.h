// A padlock that is drawn open or closed.
#pragma once

#import "AppKit.h"

@interface CorvaneLockButton : NSButton {
  BOOL open_;
}
- (void)setOpen:(BOOL)open;
- (BOOL)isOpen;
@end
