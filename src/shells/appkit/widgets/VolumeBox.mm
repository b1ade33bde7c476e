#import "widgets/VolumeBox.h"

@implementation CorvaneVolumeBox

- (void)drawRect:(NSRect)rect {
  [[NSColor controlBackgroundColor] set];
  NSRectFill(rect);
}

@end
