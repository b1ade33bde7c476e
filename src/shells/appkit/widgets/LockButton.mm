#import "widgets/LockButton.h"

namespace {

/// The padlock in a square of 28 points.
void drawPadlock(bool open) {
  const CGFloat left = open ? 17 : 9;
  NSBezierPath* shackle = [NSBezierPath bezierPath];
  [shackle moveToPoint:NSMakePoint(left, 14)];
  [shackle lineToPoint:NSMakePoint(left, 19)];
  [shackle appendBezierPathWithArcWithCenter:NSMakePoint(left + 4, 19)
                                      radius:4
                                  startAngle:180
                                    endAngle:0
                                   clockwise:YES];
  if (!open) [shackle lineToPoint:NSMakePoint(left + 8, 14)];
  [shackle setLineWidth:2.5];
  [[NSColor grayColor] set];
  [shackle stroke];
  NSBezierPath* body = [NSBezierPath bezierPathWithRect:NSMakeRect(5.5, 3.5, 15, 11)];
  [[NSColor colorWithCalibratedRed:0.93 green:0.66 blue:0.2 alpha:1] set];
  [body fill];
  [[NSColor brownColor] set];
  [body stroke];
}

}  // namespace

@implementation CorvaneLockButton

- (id)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil) {
    [self setButtonType:corvane::appkit::kMomentaryChange];
    [self setBordered:NO];
    [self setTitle:@""];
  }
  return self;
}

- (void)setOpen:(BOOL)open {
  open_ = open;
  [self setNeedsDisplay:YES];
}

- (BOOL)isOpen {
  return open_;
}

- (void)drawRect:(NSRect)rect {
  [NSGraphicsContext saveGraphicsState];
  if ([self isFlipped]) {
    NSAffineTransform* upright = [NSAffineTransform transform];
    [upright translateXBy:0 yBy:28];
    [upright scaleXBy:1 yBy:-1];
    [upright concat];
  }
  drawPadlock(open_);
  [NSGraphicsContext restoreGraphicsState];
  if ([[self window] firstResponder] == self) NSFrameRect(NSInsetRect([self bounds], 0.5, 0.5));
}

@end
