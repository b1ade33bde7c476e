// What alerts of a Mac do by themselves: they have a place for a view of one's own, and leave the Return key
// to the button that has it as its key.
#import "System.h"
#import "binders/Target.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kAccessoryHeight = 20;
constexpr CGFloat kGap = 10;

bool isAnswer(NSView* view) { return [view isKindOfClass:[NSButton class]] && [(NSButton*)view isBordered]; }

/// Makes room above the buttons; they stay where they are, and what stands above them goes up.
void addAccessory(NSWindow* panel, NSView* accessory) {
  NSView* content = [panel contentView];
  const NSSize size = [content frame].size;
  [panel setMaxSize:NSMakeSize(10000, 10000)];
  [content setAutoresizesSubviews:NO];
  [panel setContentSize:NSMakeSize(size.width, size.height + kAccessoryHeight + kGap)];
  CGFloat top = 0;
  for (NSView* view in [content subviews]) {
    const NSRect frame = [view frame];
    if (isAnswer(view)) {
      top = MAX(top, NSMaxY(frame));
    } else {
      [view setFrameOrigin:NSMakePoint(frame.origin.x, frame.origin.y + kAccessoryHeight + kGap)];
    }
  }
  [accessory setFrame:NSMakeRect(16, top + kGap, size.width - 32, kAccessoryHeight)];
  [content addSubview:accessory];
}

/// The first button would have the keyboard, and Return would press it whatever its key is.
void giveKeyboardToDefault(NSWindow* panel) {
  for (NSView* view in [[panel contentView] subviews]) {
    if (isAnswer(view) && [[(NSButton*)view keyEquivalent] isEqual:@"\r"]) [panel makeFirstResponder:view];
  }
}

/// The panel has buttons of its own in the place of the alert's.
void addKey(NSWindow* panel, NSButton* key) {
  for (NSView* view in [[panel contentView] subviews]) {
    if (isAnswer(view) && [[(NSButton*)view title] isEqual:[[key target] title]]) [key setTarget:view];
  }
  [[panel contentView] addSubview:key];
}

}  // namespace

// The panel is made only when it opens, and that call returns when it has closed: from inside its loop, then.
void prepareAlert(NSAlert* alert, NSView* accessory, NSButton* key) {
  [alert retain];
  [accessory retain];
  [key retain];
  callSoon([alert, accessory, key] {
    if (NSWindow* panel = [alert window]) {
      if (accessory != nil) addAccessory(panel, accessory);
      if (key != nil) addKey(panel, key);
      giveKeyboardToDefault(panel);
      [panel display];
    }
    [key release];
    [accessory release];
    [alert release];
  });
}

}  // namespace corvane::appkit
