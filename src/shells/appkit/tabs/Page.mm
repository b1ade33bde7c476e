#import "tabs/Page.h"

#include <cmath>

#import "Text.h"
#import "binders/ButtonBinder.h"
#import "binders/LabelBinder.h"
#import "binders/PopUpButtonBinder.h"
#import "binders/TextFieldBinder.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kButtonHeight = 26;
constexpr CGFloat kButtonMargin = 16;  // at both sides of the title

}  // namespace

NSTextField* makeLabel(NSRect frame, NSTextAlignment alignment, NSFont* font) {
  NSTextField* view = [[[NSTextField alloc] initWithFrame:frame] autorelease];
  [view setEditable:NO];
  [view setSelectable:NO];
  [view setBordered:NO];
  [view setBezeled:NO];
  [view setDrawsBackground:NO];
  [view setAlignment:alignment];
  [view setFont:font];
  return view;
}

Page::Page(NSSize size) : view_([[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)]) {}

Page::~Page() {
  binders_.clear();
  [view_ release];
}

NSView* Page::viewOf(const Control& control) const {
  for (const auto& binder : binders_) {
    if (&binder->control() == &control) return binder->view();
  }
  return nil;
}

void Page::setKeysAfter(NSView* before, NSView* next) const {
  NSView* last = before;
  for (const auto& binder : binders_) {
    if (!binder->isTabStop()) continue;
    [last setNextKeyView:binder->view()];
    last = binder->view();
  }
  [last setNextKeyView:next];
}

void Page::put(NSView* view) { [(into_ != nil ? into_ : view_) addSubview:view]; }

NSTextField* Page::label(TextField& field, NSRect frame, NSTextAlignment alignment) {
  NSTextField* view = makeLabel(frame, alignment, controlFont());
  put(view);
  add(std::make_unique<LabelBinder>(field, view));
  return view;
}

NSTextField* Page::hint(TextField& field, NSRect frame) {
  NSTextField* view = makeLabel(frame, kLeftAligned, smallFont());
  [view setTextColor:secondaryTextColor()];
  put(view);
  add(std::make_unique<LabelBinder>(field, view));
  return view;
}

NSTextField* Page::entry(TextField& field, NSRect frame, Placement placement) {
  NSTextField* view = [[[NSTextField alloc] initWithFrame:frame] autorelease];
  NSTextFieldCell* cell = [[[CORVANE_ENTRY_CELL alloc] initTextCell:@""] autorelease];
  [cell setEditable:YES];
  [cell setSelectable:YES];
  [cell setBezeled:YES];
  [cell setDrawsBackground:YES];
  [cell setScrollable:YES];
  [view setCell:cell];
  [view setFont:controlFont()];
  put(view);
  add(std::make_unique<TextFieldBinder>(field, view, placement));
  return view;
}

NSButton* Page::pushButton(Button& button, NSPoint origin) {
  NSButton* view = [[[NSButton alloc] initWithFrame:NSMakeRect(origin.x, origin.y, 100, 26)] autorelease];
  [view setButtonType:kMomentaryPushIn];
  [view setBezelStyle:kRoundedBezel];
  [view setFont:controlFont()];
  put(view);
  add(std::make_unique<ButtonBinder>(button, view));
  const CGFloat width = textWidth(button.title(), controlFont()) + 2 * kButtonMargin;
  [view setFrameSize:NSMakeSize(std::ceil(width), kButtonHeight)];
  return view;
}

NSButton* Page::checkBox(Button& button, NSRect frame) {
  NSButton* view = [[[NSButton alloc] initWithFrame:frame] autorelease];
  [view setButtonType:kSwitch];
  [view setFont:controlFont()];
  put(view);
  add(std::make_unique<ButtonBinder>(button, view));
  return view;
}

NSButton* Page::labelButton(Button& button, NSRect frame, NSTextAlignment alignment, Placement placement) {
  NSButton* view = [[[NSButton alloc] initWithFrame:frame] autorelease];
  [view setButtonType:kMomentaryChange];
  [view setBordered:NO];
  [view setAlignment:alignment];
  [view setFont:controlFont()];
  put(view);
  add(std::make_unique<ButtonBinder>(button, view, placement));
  return view;
}

NSPopUpButton* Page::popUp(PopUpButton& button, NSRect frame) {
  NSPopUpButton* view = [[[NSPopUpButton alloc] initWithFrame:frame pullsDown:NO] autorelease];
  [view setFont:controlFont()];
  put(view);
  add(std::make_unique<PopUpButtonBinder>(button, view));
  return view;
}

NSScrollView* Page::scrollView(NSRect frame, NSView* document) {
  NSScrollView* view = [[[NSScrollView alloc] initWithFrame:frame] autorelease];
  [view setHasVerticalScroller:YES];
  [view setBorderType:NSBezelBorder];
  put(view);
  [view setDocumentView:document];
  return view;
}

}  // namespace corvane::appkit
