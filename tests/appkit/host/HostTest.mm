// The pane in the real host of preference panes. This is a pane too: the host loads it beside the one that is
// tested, and from inside the host it opens that one by its icon and uses it with posted events.
#include <unistd.h>

#import "../Acts.h"
#import "Text.h"
#include "pane/PathTable.h"
#include "values/PropertyListCodec.h"

@interface CorvaneTestDriver : NSPreferencePane
@end

namespace corvane::test {
namespace {

NSWindow* hostWindow() { return [NSApp mainWindow] != nil ? [NSApp mainWindow] : [NSApp keyWindow]; }

/// The first view below this one for which the test holds; nil when there is none.
NSView* find(NSView* view, const std::function<bool(NSView*)>& test) {
  if (test(view)) return view;
  for (NSView* below in [view subviews]) {
    if (NSView* found = find(below, test)) return found;
  }
  return nil;
}

NSView* findKind(const char* name) {
  return find([hostWindow() contentView], [name](NSView* view) {
    return [view isKindOfClass:NSClassFromString(appkit::toNSString(name))] &&
           ![view isHiddenOrHasHiddenAncestor];
  });
}

/// The icon under which the host offers the pane; nil while it shows no icons.
NSView* paneIcon() {
  return find([hostWindow() contentView], [](NSView* view) {
    if (![view isKindOfClass:NSClassFromString(@"SPIcon")]) return false;
    NSString* path = [[[view valueForKey:@"pane"] bundle] bundlePath];
    return [[path lastPathComponent] isEqual:@"Corvane.prefPane"] == YES;
  });
}

NSButton* button(const char* title) { return buttonTitled([hostWindow() contentView], title); }

void clickTab(NSInteger index) {
  auto* tabs = static_cast<NSTabView*>(findKind("NSTabView"));
  ASSERT_NE(tabs, nil);
  const NSRect bounds = [tabs bounds];
  for (CGFloat y : {NSMaxY(bounds) - 10, NSMinY(bounds) + 10}) {
    for (CGFloat x = NSMinX(bounds); x < NSMaxX(bounds); x += 4) {
      NSTabViewItem* item = [tabs tabViewItemAtPoint:NSMakePoint(x, y)];
      if (item == nil || [tabs indexOfTabViewItem:item] != index) continue;
      click(tabs, NSMakePoint(x + 8, y));
      return;
    }
  }
  FAIL() << "there is no tab " << index;
}

std::string contents(const std::string& path) {
  NSData* bytes = [NSData dataWithContentsOfFile:appkit::toNSString(path)];
  return {static_cast<const char*>([bytes bytes]), static_cast<std::size_t>([bytes length])};
}

const PathTable& paths() {
  static const PathTable table(
      appkit::fromNSString([[NSUserDefaults standardUserDefaults] stringForKey:@"CorvaneRoot"]));
  return table;
}

TEST(SettingsHost, ThePaneIsOpenedByItsIconAndEveryTabIsUsed) {
  ASSERT_TRUE(eventually([] { return hostWindow() != nil && paneIcon() != nil; }))
      << "the host offers no such pane";
  picture(hostWindow(), "host");
  click(paneIcon());
  ASSERT_TRUE(eventually([] { return button("Run Client Now") != nil; })) << "the pane has not opened";
  EXPECT_FALSE([button("Run Client Now") isEnabled]);

  click(findKind("CorvaneLockButton"));
  ASSERT_TRUE(eventually([] { return [button("Run Client Now") isEnabled] == YES; }));
  const std::string settings = contents(paths().clientSettings);
  // In this host a click in the first moment after the lock has opened can be lost; nothing tells when it is over.
  [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:1.5]];
  click(button("Run Client Now"));
  EXPECT_TRUE(eventually([&] { return contents(paths().clientSettings) != settings; }));
  picture(hostWindow(), "host configuration");

  clickTab(1);
  const std::string volumes = contents(paths().rootCapacitySettings);
  click(button("Warn when the startup disk is"));
  EXPECT_TRUE(eventually([&] { return contents(paths().rootCapacitySettings) != volumes; }));
  picture(hostWindow(), "host options");

  EXPECT_TRUE(answering([] { clickTab(2); }, "Continue"));
  auto* tree = static_cast<NSOutlineView*>(findKind("NSOutlineView"));
  ASSERT_NE(tree, nil);
  const NSInteger rows = [tree numberOfRows];
  const NSRect triangle = [tree frameOfOutlineCellAtRow:0];
  click(tree, NSMakePoint(NSMidX(triangle), NSMidY(triangle)));
  EXPECT_GT([tree numberOfRows], rows);
  const NSRect box = [tree frameOfCellAtColumn:0 row:0];
  click(tree, NSMakePoint(NSMidX(box), NSMidY(box)));
  picture(hostWindow(), "host plugins");
}

}  // namespace
}  // namespace corvane::test

@implementation CorvaneTestDriver

- (id)initWithBundle:(NSBundle*)bundle {
  self = [super initWithBundle:bundle];
  if (self != nil) [self performSelector:@selector(drive) withObject:nil afterDelay:0];
  return self;
}

- (NSView*)loadMainView {
  [self setMainView:[[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)] autorelease]];
  return [self mainView];
}

// The host goes with the last test.
- (void)drive {
  int count = 1;
  char name[] = "host_tests";
  char* arguments[] = {name, nullptr};
  ::testing::InitGoogleTest(&count, arguments);
  ::alarm(120);
  ::_exit(RUN_ALL_TESTS());
}

@end
