#import "Acts.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#import "Text.h"

using namespace corvane::appkit;

/// Looks for panels that run an event loop of their own, from inside that loop.
@interface CorvaneAnswering : NSObject {
 @public
  std::vector<corvane::test::Answer> answers_;
  std::size_t answered_;
  NSWindow* seen_;  // the one that was answered last, or is about to be
  bool isDue_;
}
- (void)look:(NSTimer*)timer;
@end

/// Is passed by the run loop in its turn.
@interface CorvaneFence : NSObject {
 @public
  bool isPassed_;
}
- (void)pass;
@end

@implementation CorvaneFence

- (void)pass {
  isPassed_ = true;
}

@end

namespace {

constexpr NSTimeInterval kPatience = 60;
constexpr NSTimeInterval kMoment = 0.01;

NSWindow* panelInFront() {
  if (NSWindow* modal = [NSApp modalWindow]) return modal;
  for (NSWindow* window in [NSApp windows]) {
    if ([window attachedSheet] != nil) return [window attachedSheet];
  }
  return nil;
}

/// Wakes a loop that waits for an event.
void postNothing() {
  [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                      location:NSZeroPoint
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0]
           atStart:NO];
}

/// Handles one event, or waits a moment for one.
bool turn(NSTimeInterval wait) {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                      untilDate:[NSDate dateWithTimeIntervalSinceNow:wait]
                                         inMode:NSDefaultRunLoopMode
                                        dequeue:YES];
  if (event != nil) [NSApp sendEvent:event];
  [NSApp updateWindows];
  const bool wasBusy = event != nil;
  [pool drain];
  return wasBusy;
}

}  // namespace

@implementation CorvaneAnswering

- (void)look:(NSTimer*)timer {
  NSWindow* panel = panelInFront();
  postNothing();
  if (panel == nil || ![panel isVisible] || (panel == seen_ && !isDue_)) return;
  if (panel != seen_) {  // it does more right after it has opened
    seen_ = panel;
    isDue_ = true;
    return;
  }
  isDue_ = false;
  if (answered_ < answers_.size()) {
    const corvane::test::Answer answer = answers_[answered_++];
    answer(panel);
  } else {
    ADD_FAILURE() << "nobody has expected\n" << corvane::test::textsIn([panel contentView]);
    [NSApp abortModal];
  }
  postNothing();
}

@end

namespace corvane::test {

bool eventually(const std::function<bool()>& condition) {
  NSDate* end = [[NSDate dateWithTimeIntervalSinceNow:kPatience] retain];
  bool holds = condition();
  while (!holds && [end timeIntervalSinceNow] > 0) {
    turn(kMoment);
    holds = condition();
  }
  [end release];
  return holds;
}

void settle() {
  // What is called soon may have something else called soon, as a press of a cell's button does.
  constexpr int kRounds = 3;
  for (int round = 0; round < kRounds; ++round) {
    CorvaneFence* fence = [[CorvaneFence new] autorelease];
    [[NSRunLoop currentRunLoop] performSelector:@selector(pass)
                                         target:fence
                                       argument:nil
                                          order:0
                                          modes:commonModes()];
    while (turn(0) || !fence->isPassed_) {
    }
  }
}

void click(NSView* view, NSPoint point, NSUInteger modifiers) {
  NSWindow* window = [view window];
  ASSERT_NE(window, nil) << "the view is in no window";
  if (![window isKeyWindow]) {
    [window makeKeyAndOrderFront:nil];
    ASSERT_TRUE(eventually([&] { return [window isKeyWindow] == YES; }));
  }
  // Both through the queue: what follows the mouse takes the release from there.
  for (const NSEventType kind : {NSLeftMouseDown, NSLeftMouseUp}) {
    [NSApp postEvent:[NSEvent mouseEventWithType:kind
                                        location:[view convertPoint:point toView:nil]
                                   modifierFlags:modifiers
                                       timestamp:0
                                    windowNumber:[window windowNumber]
                                         context:[window graphicsContext]
                                     eventNumber:0
                                      clickCount:1
                                        pressure:1]
             atStart:NO];
  }
  settle();
}

void click(NSView* view, NSUInteger modifiers) {
  const NSRect bounds = [view bounds];
  click(view, NSMakePoint(MIN(12, NSWidth(bounds) / 2), NSMidY(bounds)), modifiers);
}

void press(NSWindow* window, const char* key, NSUInteger modifiers) {
  for (const NSEventType kind : {NSKeyDown, NSKeyUp}) {
    NSString* characters = toNSString(key);
    [NSApp postEvent:[NSEvent keyEventWithType:kind
                                            location:NSZeroPoint
                                       modifierFlags:modifiers
                                           timestamp:0
                                        windowNumber:[window windowNumber]
                                             context:[window graphicsContext]
                                          characters:characters
                         charactersIgnoringModifiers:characters
                                           isARepeat:NO
                                             keyCode:0]
             atStart:NO];
  }
  settle();
}

void type(NSWindow* window, const std::string& text) {
  NSString* all = toNSString(text);
  for (NSUInteger at = 0; at < [all length];) {
    const NSRange letter = [all rangeOfComposedCharacterSequenceAtIndex:at];
    press(window, fromNSString([all substringWithRange:letter]).c_str());
    at = NSMaxRange(letter);
  }
}

bool answering(const std::function<void()>& act, std::vector<Answer> answers) {
  CorvaneAnswering* answering = [CorvaneAnswering new];
  const std::size_t expected = answers.size();
  answering->answers_ = std::move(answers);
  NSTimer* timer = [NSTimer timerWithTimeInterval:kMoment
                                           target:answering
                                         selector:@selector(look:)
                                         userInfo:nil
                                          repeats:YES];
  for (NSString* mode in commonModes()) [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
  act();
  const bool answered =
      eventually([&] { return answering->answered_ == expected && panelInFront() != answering->seen_; });
  [timer invalidate];
  [answering release];
  return answered;
}

bool answering(const std::function<void()>& act, Answer answer) {
  return answering(act, std::vector<Answer>{std::move(answer)});
}

bool answering(const std::function<void()>& act, const std::string& title) {
  return answering(act, Answer([title](NSWindow* panel) {
                     NSButton* button = buttonTitled([panel contentView], title);
                     EXPECT_NE(button, nil) << "no button says " << title << " among\n"
                                            << textsIn([panel contentView]);
                     // Not left waiting, whatever the test has thought of.
                     if (button == nil) [NSApp abortModal];
                     [button performClick:nil];
                   }));
}

NSButton* buttonTitled(NSView* view, const std::string& title) {
  if ([view isKindOfClass:[NSButton class]] && textOf(view) == title) return static_cast<NSButton*>(view);
  for (NSView* below in [view subviews]) {
    if (NSButton* found = buttonTitled(below, title)) return found;
  }
  return nil;
}

namespace {

void collectTexts(NSView* view, NSView* root, std::vector<std::pair<CGFloat, std::string>>& texts) {
  if ([view isHidden]) return;
  const std::string text = textOf(view);
  if (!text.empty()) {
    const NSRect frame = [view convertRect:[view bounds] toView:root];
    texts.emplace_back([root isFlipped] ? -NSMinY(frame) : NSMaxY(frame), text);
  }
  for (NSView* below in [view subviews]) collectTexts(below, root, texts);
}

}  // namespace

std::string textsIn(NSView* view) {
  std::vector<std::pair<CGFloat, std::string>> texts;
  collectTexts(view, view, texts);
  std::stable_sort(texts.begin(), texts.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::string all;
  for (const auto& [top, text] : texts) all += text + "\n";
  return all;
}

std::string textOf(NSView* view) {
  if ([view isKindOfClass:[NSButton class]]) return fromNSString([static_cast<NSButton*>(view) title]);
  if ([view isKindOfClass:[NSTextField class]])
    return fromNSString([static_cast<NSTextField*>(view) stringValue]);
  return {};
}

bool isTyping(NSWindow* window) {
  NSResponder* first = [window firstResponder];
  return [first isKindOfClass:[NSText class]] && [static_cast<NSText*>(first) isFieldEditor];
}

std::string typedText(NSWindow* window) {
  return isTyping(window) ? fromNSString([static_cast<NSText*>([window firstResponder]) string])
                          : std::string();
}

void picture(NSWindow* window, const std::string& name) {
  const char* folder = std::getenv("CORVANE_PICTURES");
  if (folder == nullptr) return;
  settle();
  NSView* view =
      [[window contentView] superview] != nil ? [[window contentView] superview] : [window contentView];
  [window display];
  [view lockFocus];
  NSBitmapImageRep* pixels = [[NSBitmapImageRep alloc] initWithFocusedViewRect:[view bounds]];
  [view unlockFocus];
  NSData* png = [pixels representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
  EXPECT_TRUE([png writeToFile:toNSString(std::string(folder) + "/" + name + ".png") atomically:NO]);
  [pixels release];
}

}  // namespace corvane::test
