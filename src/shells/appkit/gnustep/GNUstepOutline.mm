#import "gnustep/GNUstepOutline.h"

#include <algorithm>

namespace {
constexpr CGFloat kIndentation = 16;
constexpr CGFloat kTriangle = 14;
}  // namespace

@interface NSObject (GNUstepOutlineDelegate)
- (CGFloat)outlineView:(NSOutlineView*)outline heightOfRowByItem:(id)item;
@end

@implementation GNUstepOutline

- (id)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil) [self setIndentationPerLevel:0];  // the frames of the cells have it
  return self;
}

- (const std::vector<CGFloat>&)tops {
  const NSInteger rows = [self numberOfRows];
  if (tops_.size() != static_cast<std::size_t>(rows) + 1) {
    tops_.assign(1, 0);
    for (NSInteger row = 0; row < rows; ++row) {
      tops_.push_back(tops_.back() + [[self delegate] outlineView:self
                                                heightOfRowByItem:[self itemAtRow:row]]);
    }
  }
  return tops_;
}

- (void)noteNumberOfRowsChanged {
  tops_.clear();
  [super noteNumberOfRowsChanged];
}

- (void)reloadData {
  tops_.clear();
  [super reloadData];
}

- (NSSize)sizeFor:(NSSize)size {
  size.height = [self tops].back() + 1;
  if ([[self superview] isKindOfClass:[NSClipView class]])
    size.height = MAX(size.height, [[self superview] bounds].size.height);
  return size;
}

// The table would count with its one height.
- (void)setFrameSize:(NSSize)size {
  auto set = (void (*)(id, SEL, NSSize))[NSControl instanceMethodForSelector:_cmd];
  set(self, _cmd, [self sizeFor:size]);
}

- (void)setFrame:(NSRect)frame {
  frame.size = [self sizeFor:frame.size];
  auto set = (void (*)(id, SEL, NSRect))[NSControl instanceMethodForSelector:_cmd];
  set(self, _cmd, frame);
}

- (NSRect)rectOfRow:(NSInteger)row {
  if (row < 0 || row >= [self numberOfRows]) return NSZeroRect;
  const std::vector<CGFloat>& tops = [self tops];
  const auto index = static_cast<std::size_t>(row);
  return NSMakeRect(0, tops[index], [self bounds].size.width, tops[index + 1] - tops[index]);
}

- (NSInteger)rowAtPoint:(NSPoint)point {
  const std::vector<CGFloat>& tops = [self tops];
  if (!NSMouseInRect(point, [self bounds], YES) || point.y >= tops.back()) return -1;
  return std::upper_bound(tops.begin(), tops.end(), point.y) - tops.begin() - 1;
}

- (NSRect)frameOfCellAtColumn:(NSInteger)column row:(NSInteger)row {
  NSRect frame = [super frameOfCellAtColumn:column row:row];
  const NSRect whole = [self rectOfRow:row];
  frame.origin.y = whole.origin.y + 1;
  frame.size.height = whole.size.height - 2;
  if ([[self tableColumns] objectAtIndex:static_cast<NSUInteger>(column)] == [self outlineTableColumn]) {
    const CGFloat indentation = kIndentation * static_cast<CGFloat>([self levelForRow:row] + 1);
    frame.origin.x += indentation;
    frame.size.width -= indentation;
  }
  return frame;
}

- (NSRect)frameOfOutlineCellAtRow:(NSInteger)row {
  if (![self isExpandable:[self itemAtRow:row]]) return NSZeroRect;
  const NSUInteger column = [[self tableColumns] indexOfObjectIdenticalTo:[self outlineTableColumn]];
  const NSRect cell = [super frameOfCellAtColumn:static_cast<NSInteger>(column) row:row];
  return NSMakeRect(cell.origin.x, [self rectOfRow:row].origin.y + 4, kTriangle, kTriangle);
}

// The outline looks for the triangle in a narrower place.
- (void)mouseDown:(NSEvent*)event {
  const NSPoint point = [self convertPoint:[event locationInWindow] fromView:nil];
  const NSInteger row = [self rowAtPoint:point];
  if (row < 0 || !NSMouseInRect(point, [self frameOfOutlineCellAtRow:row], YES)) {
    [super mouseDown:event];
    return;
  }
  id item = [self itemAtRow:row];
  if ([self isItemExpanded:item]) {
    [self collapseItem:item];
  } else {
    [self expandItem:item];
  }
}

@end
