#import "widgets/OutlineTree.h"

#include <objc/runtime.h>

@implementation CorvaneOutlineTree

- (NSRect)frameOfOutlineCellAtRow:(NSInteger)row {
  if (owner_ == nullptr || !owner_->showsTriangle(row)) return NSZeroRect;
  return [super frameOfOutlineCellAtRow:row];
}

- (NSRect)frameOfCellAtColumn:(NSInteger)column row:(NSInteger)row {
  const NSRect frame = [super frameOfCellAtColumn:column row:row];
  return owner_ != nullptr ? owner_->frameOfControl(column, row, frame) : frame;
}

- (void)highlightSelectionInClipRect:(NSRect)rect {
  if (owner_ == nullptr || owner_->highlightsSelection()) [super highlightSelectionInClipRect:rect];
}

- (void)drawPlaceholder {
  NSAttributedString* text = owner_ != nullptr ? owner_->placeholder() : nil;
  if (text == nil) return;
  const NSRect seen = [self visibleRect];
  const NSSize size = [text size];
  [text drawAtPoint:NSMakePoint(NSMidX(seen) - size.width / 2, NSMidY(seen) - size.height / 2)];
}

// A frame for the row that the keyboard is on, where no other mark is wanted.
- (void)drawRect:(NSRect)rect {
  [super drawRect:rect];
  [self drawPlaceholder];
  const bool hasKeyboard = [[self window] firstResponder] == self;
  if (!hasKeyboard || owner_ == nullptr || owner_->highlightsSelection() || [self selectedRow] < 0) return;
  [[NSColor selectedControlColor] set];
  NSFrameRectWithWidth(NSInsetRect([self rectOfRow:[self selectedRow]], 1, 0), 2);
}

- (BOOL)becomeFirstResponder {
  [self setNeedsDisplay:YES];
  return [super becomeFirstResponder];
}

- (BOOL)resignFirstResponder {
  [self setNeedsDisplay:YES];
  return [super resignFirstResponder];
}

- (void)mouseDown:(NSEvent*)event {
  const NSPoint point = [self convertPoint:[event locationInWindow] fromView:nil];
  const NSInteger row = [self rowAtPoint:point];
  const NSInteger column = [self columnAtPoint:point];
  const bool onControl = row >= 0 && column >= 0 &&
                         NSMouseInRect(point, [self frameOfCellAtColumn:column row:row], [self isFlipped]);
  if (onControl && owner_ != nullptr && owner_->isTypedIn(column, row)) {
    [self typeInColumn:column row:row];
    return;
  }
  if (owner_ != nullptr) owner_->setTracking(true);
  [super mouseDown:event];
  if (owner_ != nullptr) owner_->setTracking(false);
}

- (void)typeInColumn:(NSInteger)column row:(NSInteger)row {
  if ([self editedRow] >= 0) [[self window] makeFirstResponder:self];
  [self selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)] byExtendingSelection:NO];
  if ([self selectedRow] != row) return;
  [self scrollRowToVisible:row];
  [self editColumn:column row:row withEvent:nil select:YES];
}

- (void)keyDown:(NSEvent*)event {
  NSString* keys = [event characters];
  const NSInteger row = [self selectedRow];
  const unichar key = [keys length] == 1 ? [keys characterAtIndex:0] : 0;
  if (owner_ == nullptr || row < 0) {
    [super keyDown:event];
  } else if (key == ' ' || key == '\r') {
    owner_->activate(row);
  } else if (key == NSRightArrowFunctionKey || key == NSLeftArrowFunctionKey) {
    owner_->disclose(row, key == NSRightArrowFunctionKey);
  } else {
    [super keyDown:event];
  }
}

- (void)editColumn:(NSInteger)column row:(NSInteger)row withEvent:(NSEvent*)event select:(BOOL)select {
  [super editColumn:column row:row withEvent:event select:select];
  if (owner_ != nullptr) owner_->editingDidChange();
}

- (void)textDidChange:(NSNotification*)notification {
  if (owner_ != nullptr) owner_->didType([notification object]);
  [super textDidChange:notification];
}

// Return ends the typing where it was; the toolkit would go on in the row below.
- (void)textDidEndEditing:(NSNotification*)notification {
  const bool isReturn =
      [[[notification userInfo] objectForKey:@"NSTextMovement"] integerValue] == NSReturnTextMovement;
  NSNotification* ended = notification;
  if (isReturn) {
    NSNumber* none = [NSNumber numberWithInteger:NSIllegalTextMovement];
    ended = [NSNotification notificationWithName:[notification name]
                                          object:[notification object]
                                        userInfo:[NSDictionary dictionaryWithObject:none
                                                                             forKey:@"NSTextMovement"]];
  }
  [super textDidEndEditing:ended];
  if (isReturn) [[self window] makeFirstResponder:self];
  if (owner_ != nullptr) owner_->editingDidChange();
}

- (BOOL)abortEditing {
  const BOOL wasEditing = [super abortEditing];
  if (owner_ != nullptr) owner_->editingDidChange();
  return wasEditing;
}

// Escape drops what was typed; GNUstep has it complete a word.
- (BOOL)textView:(NSTextView*)editor doCommandBySelector:(SEL)command {
  if (!sel_isEqual(command, @selector(cancelOperation:)) && !sel_isEqual(command, @selector(complete:)))
    return NO;
  [self abortEditing];
  [[self window] makeFirstResponder:self];
  return YES;
}

@end
