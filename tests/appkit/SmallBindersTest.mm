// Labels, pop-up menus, tabs, the lock and sheets of controls.
#import "Text.h"
#import "WindowFixture.h"
#import "binders/AuthorizationViewBinder.h"
#import "binders/SheetBinder.h"
#import "binders/TabViewBinder.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

class AppKitLabel : public AppKitWindowTest {
 protected:
  TextField text{TextField::Role::Label, "Unknown"};
  NSTextField* view = page.label(text, NSMakeRect(20, 20, 200, 20));
};

TEST_F(AppKitLabel, ItShowsItsTextAlsoWhileItsControlIsDisabled) {
  EXPECT_EQ(textOf(view), "Unknown");
  text.setStringValue("November 15, 2026 at 3:45 PM");
  text.setEnabled(false);
  EXPECT_EQ(textOf(view), "November 15, 2026 at 3:45 PM");
  EXPECT_TRUE([view isEnabled]);
  text.setHidden(true);
  EXPECT_TRUE([view isHidden]);
}

class AppKitMenu : public AppKitWindowTest {
 protected:
  void choose(NSInteger index) {
    [view selectItemAtIndex:index];
    [view sendAction:[view action] to:[view target]];
  }
  PopUpButton menu{{"AM", "PM"}};
  NSPopUpButton* view = page.popUp(menu, NSMakeRect(20, 20, 80, 24));
};

TEST_F(AppKitMenu, ItsItemsAndItsChoiceAreTheControls) {
  EXPECT_EQ([view numberOfItems], 2);
  EXPECT_TRUE([[view itemTitleAtIndex:1] isEqual:@"PM"]);
  EXPECT_EQ([view indexOfSelectedItem], 0);
  menu.selectItemAtIndex(1);
  EXPECT_EQ([view indexOfSelectedItem], 1);
}

TEST_F(AppKitMenu, AChoiceIsToldOnceAndARefusedOneTakenBack) {
  int edits = 0;
  menu.onUserEdit = [&] { ++edits; };
  choose(1);
  EXPECT_EQ(menu.indexOfSelectedItem(), 1);
  EXPECT_EQ(edits, 1);
  menu.setEnabled(false);
  EXPECT_FALSE([view isEnabled]);
  choose(0);
  EXPECT_EQ(menu.indexOfSelectedItem(), 1);
  EXPECT_EQ([view indexOfSelectedItem], 1);
}

TEST_F(AppKitMenu, TheKeyboardChooses) {
  ASSERT_TRUE([window makeFirstResponder:view]);
  press(window, " ");
  press(window, kDown);
  press(window, kReturn);
  EXPECT_EQ(menu.indexOfSelectedItem(), 1);
}

class Guard final : public TabViewDelegate {
 public:
  bool tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) override {
    ++questions;
    return tabView.indexOfTabViewItem(item) != refused;
  }
  int refused = 2;
  int questions = 0;
};

class AppKitTabs : public AppKitWindowTest {
 protected:
  AppKitTabs() {
    tabs.setDelegate(&guard);
    page.put(view);
    std::vector<NSView*> pages;
    for (int i = 0; i < 3; ++i) pages.push_back([[[NSView alloc] initWithFrame:NSZeroRect] autorelease]);
    page.add(std::make_unique<appkit::TabViewBinder>(tabs, view, pages));
  }
  [[nodiscard]] NSInteger shown() const { return [view indexOfTabViewItem:[view selectedTabViewItem]]; }

  TabView tabs{{"Configuration", "Options", "Plugins"}};
  Guard guard;
  NSTabView* view = [[[NSTabView alloc] initWithFrame:NSMakeRect(20, 20, 600, 400)] autorelease];
};

TEST_F(AppKitTabs, LabelsAndSelectionAreTheControls) {
  ASSERT_EQ([view numberOfTabViewItems], 3);
  EXPECT_TRUE([[[view tabViewItemAtIndex:2] label] isEqual:@"Plugins"]);
  tabs.selectTabViewItemAtIndex(1);
  EXPECT_EQ(shown(), 1);
}

TEST_F(AppKitTabs, TheDelegateIsAskedOnceForEachChange) {
  [view selectTabViewItemAtIndex:1];
  EXPECT_EQ(tabs.indexOfSelectedItem(), 1);
  EXPECT_EQ(shown(), 1);
  EXPECT_EQ(guard.questions, 1);
}

TEST_F(AppKitTabs, ARefusedTabIsNotShown) {
  [view selectTabViewItemAtIndex:2];
  EXPECT_EQ(tabs.indexOfSelectedItem(), 0);
  EXPECT_EQ(shown(), 0);
  guard.refused = -1;
  tabs.selectTabViewItemAtIndex(2);
  EXPECT_EQ(shown(), 2);
}

class AppKitLock : public AppKitWindowTest {
 protected:
  AppKitLock() {
    page.put(button);
    page.put(label);
    page.add(std::make_unique<appkit::AuthorizationViewBinder>(lock, button, label));
  }
  RecordingAuthorization services;
  AuthorizationView lock{services};
  CorvaneLockButton* button =
      [[[CorvaneLockButton alloc] initWithFrame:NSMakeRect(20, 20, 28, 28)] autorelease];
  NSTextField* label =
      appkit::makeLabel(NSMakeRect(60, 20, 400, 28), appkit::kLeftAligned, appkit::smallFont());
};

TEST_F(AppKitLock, AClickOpensAndClosesItAndTheTextBesideFollows) {
  EXPECT_FALSE([button isOpen]);
  EXPECT_EQ(textOf(label), "Click the lock to make changes.");
  click(button);
  EXPECT_EQ(lock.state(), AuthorizationView::State::Open);
  EXPECT_TRUE([button isOpen]);
  EXPECT_EQ(textOf(label), "Click the lock to prevent further changes.");
  click(button);
  EXPECT_EQ(lock.state(), AuthorizationView::State::Closed);
  EXPECT_FALSE([button isOpen]);
}

TEST_F(AppKitLock, TheKeyboardOpensIt) {
  ASSERT_TRUE([window makeFirstResponder:button]);
  press(window, " ");
  EXPECT_TRUE([button isOpen]);
}

TEST_F(AppKitLock, ItIsDrawnOpenAndClosedAndWithTheKeyboard) {
  [window display];
  click(button);
  [window makeFirstResponder:button];
  [window display];
  picture(window, "lock");
  EXPECT_TRUE([button isOpen]);
}

class AppKitSheet : public AppKitWindowTest {
 protected:
  ~AppKitSheet() override {
    binder.reset();
    [panel release];
  }
  Window pane{"Pane"};
  Window options{"Time Machine Options"};
  appkit::SheetStage queue{[this] { return window; }};
  NSPanel* panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 300, 100)
                                              styleMask:appkit::kTitled
                                                backing:NSBackingStoreBuffered
                                                  defer:YES];
  std::unique_ptr<appkit::SheetBinder> binder = std::make_unique<appkit::SheetBinder>(options, panel, queue);
};

TEST_F(AppKitSheet, ItOpensAfterTheCallThatBeginsItAndClosesWhenTheCoreSaysSo) {
  [panel setReleasedWhenClosed:NO];
  ASSERT_TRUE(pane.beginSheet(options));
  EXPECT_FALSE(queue.isOpen());
  EXPECT_TRUE(answering([] {},
                        [&](NSWindow* sheet) {
                          EXPECT_EQ(sheet, panel);
                          EXPECT_TRUE([[sheet title] isEqual:@"Time Machine Options"]);
                          pane.endSheet(options);
                        }));
  EXPECT_TRUE(eventually([&] { return !queue.isOpen(); }));
  EXPECT_FALSE([panel isVisible]);
}

TEST_F(AppKitSheet, ItCanBeEndedBeforeItHasOpened) {
  ASSERT_TRUE(pane.beginSheet(options));
  pane.endSheet(options);
  settle();
  EXPECT_TRUE(queue.isEmpty());
}

TEST_F(AppKitSheet, ABinderThatGoesTakesItAway) {
  ASSERT_TRUE(pane.beginSheet(options));
  binder.reset();
  settle();
  EXPECT_FALSE(queue.isOpen());
  EXPECT_EQ(options.onChange, nullptr);
}

}  // namespace
}  // namespace corvane::test
