// The box over the right part of the table of volumes: it hides the rows below it.
#pragma once

#import "AppKit.h"

@interface CorvaneVolumeBox : NSView
@end
