// A window with a page of controls of the test's own: no files, no pane.
#pragma once

#import "Acts.h"
#include "pane/PaneView.h"
#import "tabs/Page.h"

namespace corvane::test {

/// Makes views for controls as the pages of the pane do.
class TestPage final : public appkit::Page {
 public:
  TestPage() : Page(NSMakeSize(kPaneWidth, 510)) {}
  using Page::add;
  using Page::checkBox;
  using Page::entry;
  using Page::label;
  using Page::labelButton;
  using Page::popUp;
  using Page::pushButton;
  using Page::put;
  using Page::scrollView;
};

class AppKitWindowTest : public ::testing::Test {
 protected:
  AppKitWindowTest()
      : window([[NSWindow alloc] initWithContentRect:NSMakeRect(100, 100, kPaneWidth, 510)
                                           styleMask:appkit::kTitled
                                             backing:NSBackingStoreBuffered
                                               defer:NO]) {
    [window setReleasedWhenClosed:NO];
    [[window contentView] addSubview:page.view()];
    [window makeKeyAndOrderFront:nil];
    EXPECT_TRUE(eventually([this] { return [window isKeyWindow] == YES; }));
  }
  /// The page goes before the controls that it shows, which are the members of a test.
  void TearDown() override {
    [page.view() removeFromSuperview];
    pages_.reset();
    [window close];
    [window release];
  }

 private:
  std::unique_ptr<TestPage> pages_ = std::make_unique<TestPage>();

 protected:
  NSWindow* window;
  TestPage& page = *pages_;
};

}  // namespace corvane::test
