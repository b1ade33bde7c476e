// What a Mac draws by itself: placeholders, and the system's icons for file type codes.
#import "System.h"

/// A field that shows its placeholder, which the toolkit keeps to itself.
@interface GNUstepEntryCell : NSTextFieldCell
@end

@implementation GNUstepEntryCell

- (void)drawInteriorWithFrame:(NSRect)frame inView:(NSView*)view {
  [super drawInteriorWithFrame:frame inView:view];
  // In this order: to ask a cell that is being edited for its text is to store it.
  if (_cell.in_editing || [self placeholderString] == nil || [[self stringValue] length] > 0) return;
  NSDictionary* attributes = [NSDictionary
      dictionaryWithObjectsAndKeys:[NSColor disabledControlTextColor], NSForegroundColorAttributeName,
                                   [self font], NSFontAttributeName, nil];
  const NSRect inside = NSInsetRect([self titleRectForBounds:frame], 2, 0);
  [[self placeholderString] drawInRect:inside withAttributes:attributes];
}

@end

namespace corvane::appkit {
namespace {

NSImage* pictureFor(const std::string& typeCode) {
  if (typeCode == "fldr") return [NSImage imageNamed:@"common_Folder"];
  if (typeCode == "trsh") return [NSImage imageNamed:@"common_RecyclerEmpty"];
  if (typeCode == "docu") return [NSImage imageNamed:@"common_Unknown"];
  return nil;
}

}  // namespace

NSImage* iconForTypeCode(const std::string& typeCode) { return pictureFor(typeCode); }

NSTextFieldCell* makeEntryCell() {
  NSTextFieldCell* cell = [[[GNUstepEntryCell alloc] initTextCell:@""] autorelease];
  [cell setEditable:YES];
  [cell setSelectable:YES];
  [cell setBezeled:YES];
  [cell setDrawsBackground:YES];
  return cell;
}

}  // namespace corvane::appkit
