#import "PaneFixture.h"

#import "Text.h"

namespace corvane::test {

Host::Host(const std::string& root)
    : window_([[NSWindow alloc] initWithContentRect:NSMakeRect(80, 80, kPaneWidth, 510)
                                          styleMask:appkit::kTitled
                                            backing:NSBackingStoreBuffered
                                              defer:NO]) {
  [window_ setReleasedWhenClosed:NO];
  [window_ setTitle:@"Monitoring Client"];
  [[NSUserDefaults standardUserDefaults]
      registerDefaults:[NSDictionary dictionaryWithObject:appkit::toNSString(root) forKey:@"CorvaneRoot"]];
  [window_ makeKeyAndOrderFront:nil];
  EXPECT_TRUE(eventually([this] { return [window_ isKeyWindow] == YES; }));
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  NSBundle* bundle = [NSBundle bundleWithPath:appkit::toNSString(CORVANE_PANE_BUNDLE)];
  prefPane_ = [[CorvanePrefPane alloc] initWithBundle:bundle];
  NSView* view = [prefPane_ loadMainView];
  [prefPane_ willSelect];
  [window_ setContentSize:[view frame].size];
  [[window_ contentView] addSubview:view];
  [window_ makeFirstResponder:[prefPane_ initialKeyView]];
  [prefPane_ didSelect];
  [pool drain];
  settle();
}

Host::~Host() {
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  [prefPane_ willUnselect];
  [[prefPane_ mainView] removeFromSuperview];
  [prefPane_ didUnselect];
  [prefPane_ release];
  [window_ close];
  [window_ release];
  [pool drain];
  settle();
}

void AppKitPaneTest::fill(const TextField& field, const std::string& text) {
  auto* shown = view<NSTextField>(field);
  click(shown);
  ASSERT_NE([shown currentEditor], nil) << "the field can't be typed in";
  [[shown currentEditor] selectAll:nil];
  type([shown window], text);
}

void AppKitPaneTest::openTheLock() {
  press(paneView().authView);
  EXPECT_TRUE(eventually([this] { return host().assembly().pane().unlocked(); }));
}

void AppKitPaneTest::clickTab(int index) {
  auto* tabs = view<NSTabView>(paneView().tabView);
  // Where the toolkit itself says that the tab is.
  const NSRect bounds = [tabs bounds];
  for (CGFloat y : {NSMaxY(bounds) - 10, NSMinY(bounds) + 10}) {
    for (CGFloat x = NSMinX(bounds); x < NSMaxX(bounds); x += 4) {
      NSTabViewItem* item = [tabs tabViewItemAtPoint:NSMakePoint(x, y)];
      if (item != nil && [tabs indexOfTabViewItem:item] == index) {
        click(tabs, NSMakePoint(x + 8, y));
        return;
      }
    }
  }
  FAIL() << "there is no tab " << index;
}

int AppKitPaneTest::shownTab() {
  auto* tabs = view<NSTabView>(paneView().tabView);
  return static_cast<int>([tabs indexOfTabViewItem:[tabs selectedTabViewItem]]);
}

}  // namespace corvane::test
