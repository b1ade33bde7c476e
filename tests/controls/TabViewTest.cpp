#include <vector>

#include <gtest/gtest.h>

#include "controls/TabView.h"

namespace corvane {
namespace {

class Guard final : public TabViewDelegate {
 public:
  bool tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) override {
    asked.push_back(tabView.indexOfTabViewItem(item));
    return allows;
  }
  bool allows = true;
  std::vector<int> asked;
};

class TabViewTest : public testing::Test {
 protected:
  TabViewTest() {
    view.setDelegate(&guard);
    view.onChange = [this] { ++changes; };
  }
  TabView view{{"Configuration", "Options", "Plugins"}};
  Guard guard;
  int changes = 0;
};

TEST_F(TabViewTest, SelectsAnotherTabAfterAskingItsDelegate) {
  view.selectTabViewItemAtIndex(2);
  EXPECT_EQ(view.indexOfSelectedItem(), 2);
  EXPECT_EQ(guard.asked, (std::vector<int>{2}));
  EXPECT_EQ(changes, 1);
}

TEST_F(TabViewTest, ARefusedTabIsNotSelectedAndTheShellIsToldToGoBack) {
  guard.allows = false;
  view.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view.indexOfSelectedItem(), 0);
  EXPECT_EQ(changes, 1);
}

TEST_F(TabViewTest, TheSelectedTabAndIndicesOutsideAskNothing) {
  for (const int index : {0, -1, 3, 100}) view.selectTabViewItemAtIndex(index);
  EXPECT_EQ(view.indexOfSelectedItem(), 0);
  EXPECT_TRUE(guard.asked.empty());
  EXPECT_EQ(changes, 0);
}

TEST_F(TabViewTest, WithoutADelegateEveryTabMayBeSelected) {
  view.setDelegate(nullptr);
  view.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view.indexOfSelectedItem(), 1);
}

TEST_F(TabViewTest, AnItemThatIsNotOneOfItsOwnHasNoIndex) {
  const TabViewItem stranger{"Options"};
  EXPECT_EQ(view.indexOfTabViewItem(stranger), -1);
  EXPECT_EQ(view.indexOfTabViewItem(view.items()[1]), 1);
}

TEST_F(TabViewTest, AViewWithoutTabsSelectsNone) {
  const TabView empty({});
  EXPECT_EQ(empty.indexOfSelectedItem(), -1);
}

}  // namespace
}  // namespace corvane
