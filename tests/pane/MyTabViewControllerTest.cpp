#include <gtest/gtest.h>

#include "pane/MyTabViewController.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

class MyTabViewControllerTest : public ::testing::Test {
 protected:
  MyTabViewControllerTest() { platform_.layOutFolders(); }

  /// Whether the switch happened.
  bool select(int index) {
    tabs_.selectTabViewItemAtIndex(index);
    return tabs_.indexOfSelectedItem() == index;
  }
  const ScriptedDialogs::Sheet& lastSheet() { return platform_.dialogs.sheets.back(); }
  std::size_t sheets() const { return platform_.dialogs.sheets.size(); }

  TestPlatform platform_;
  TabView tabs_{{"Configuration", "Options", "Plugins"}};
  MyTabViewController guard_{platform_.platform, platform_.paths, tabs_};
};

TEST_F(MyTabViewControllerTest, TheFirstTwoTabsOpenFreely) {
  EXPECT_TRUE(select(1));
  EXPECT_TRUE(select(0));
  EXPECT_EQ(sheets(), 0U);
  EXPECT_FALSE(guard_.showPluginTab());
}

TEST_F(MyTabViewControllerTest, ThePluginsTabAsksForConfirmationFirst) {
  EXPECT_FALSE(select(2));
  ASSERT_EQ(sheets(), 1U);
  const AlertDescription& alert = lastSheet().alert;
  EXPECT_EQ(alert.messageText, "Proceed with caution");
  EXPECT_EQ(alert.informativeText,
            "Altering these settings may result in unreported errors or false alarms.\n");
  EXPECT_EQ(alert.style, AlertStyle::Critical);
  EXPECT_EQ(alert.iconPath, "/bundle/Resources/Corvane.icns");
  ASSERT_EQ(alert.buttons.size(), 2U);
  EXPECT_EQ(alert.buttons[0].title, "Continue");
  EXPECT_EQ(alert.buttons[0].keyEquivalent, "") << "Return must not continue";
  EXPECT_EQ(alert.buttons[1].title, "Cancel");
  EXPECT_EQ(alert.buttons[1].keyEquivalent, "\r");
  EXPECT_TRUE(alert.buttons[1].cancels && !alert.buttons[0].cancels);
  EXPECT_EQ(lastSheet().window, SheetWindow::PaneWindow);
}

TEST_F(MyTabViewControllerTest, ContinueOpensThePluginsTabNowAndLaterWithoutAQuestion) {
  select(2);
  platform_.dialogs.endSheet(1000);
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 2);
  EXPECT_TRUE(guard_.showPluginTab());
  EXPECT_TRUE(select(0));
  EXPECT_TRUE(select(2));
  EXPECT_EQ(sheets(), 1U);
}

TEST_F(MyTabViewControllerTest, CancelKeepsTheCurrentTabAndTheQuestion) {
  select(2);
  platform_.dialogs.endSheet(1001);
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
  EXPECT_FALSE(guard_.showPluginTab());
  EXPECT_FALSE(select(2));
  EXPECT_EQ(sheets(), 2U);
}

TEST_F(MyTabViewControllerTest, AConfirmationHoldsUntilAnAlertEndsInAnotherWay) {
  guard_.alertDidEndReturnCodeContextInfo(1000);
  EXPECT_TRUE(guard_.showPluginTab());
  guard_.alertDidEndReturnCodeContextInfo(1001);
  EXPECT_FALSE(guard_.showPluginTab());
}

TEST_F(MyTabViewControllerTest, AfterTheRemovalEverySwitchIsRefusedAndExplained) {
  guard_.setUninstalled(true);
  for (const int index : {1, 2}) EXPECT_FALSE(select(index));
  ASSERT_EQ(sheets(), 2U);
  for (const auto& sheet : platform_.dialogs.sheets) {
    EXPECT_EQ(sheet.alert.messageText, "Monitoring Client Removed");
    EXPECT_EQ(
        sheet.alert.informativeText,
        "The Monitoring Client has been removed. Please choose another pane or quit System Preferences.");
    EXPECT_EQ(sheet.alert.style, AlertStyle::Warning);
    EXPECT_EQ(sheet.alert.buttons.size(), 1U);
    EXPECT_EQ(sheet.alert.buttons.at(0).title, "OK");
    EXPECT_EQ(sheet.window, SheetWindow::ApplicationMainWindow);
  }
  platform_.dialogs.endSheet(1000);
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
  EXPECT_FALSE(guard_.showPluginTab()) << "the end of that alert changes nothing";
}

TEST_F(MyTabViewControllerTest, WhileTheSettingsAreUnreadableEverySwitchIsRefusedAndExplained) {
  guard_.setClientSettingsReadError(true);
  EXPECT_FALSE(select(1));
  ASSERT_EQ(sheets(), 1U);
  EXPECT_EQ(lastSheet().alert.messageText, "Error Reading Settings");
  EXPECT_EQ(lastSheet().alert.informativeText,
            "The client settings could not be read. Please click the lock to authorize and attempt to fix "
            "the settings.");
  EXPECT_EQ(lastSheet().alert.style, AlertStyle::Warning);
  EXPECT_EQ(lastSheet().alert.buttons.at(0).title, "OK");
  EXPECT_EQ(lastSheet().window, SheetWindow::ApplicationMainWindow);
}

TEST_F(MyTabViewControllerTest, DismissingTheSettingsAlertAsksForThePluginsTabAndIsAnsweredByTheSameAlert) {
  guard_.setClientSettingsReadError(true);
  select(1);
  platform_.dialogs.endSheet(1000);
  EXPECT_TRUE(guard_.showPluginTab());
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
  ASSERT_EQ(sheets(), 2U);
  EXPECT_EQ(lastSheet().alert.messageText, "Error Reading Settings");
}

TEST_F(MyTabViewControllerTest, WithoutTheInstallFolderUnreadableSettingsGuardOnlyThePluginsTab) {
  guard_.setClientSettingsReadError(true);
  platform_.remove(platform_.paths.installFolder);
  EXPECT_TRUE(select(1));
  EXPECT_FALSE(select(2));
  ASSERT_EQ(sheets(), 1U);
  EXPECT_EQ(lastSheet().alert.messageText, "Proceed with caution");
}

TEST_F(MyTabViewControllerTest, TheRemovalIsToldEvenWhereTheSettingsAreUnreadableToo) {
  guard_.setClientSettingsReadError(true);
  guard_.setUninstalled(true);
  EXPECT_FALSE(select(1));
  EXPECT_EQ(lastSheet().alert.messageText, "Monitoring Client Removed");
}

TEST_F(MyTabViewControllerTest, AConfirmationThatComesAfterTheSettingsWereLostIsAnsweredBySayingSo) {
  select(2);
  guard_.setClientSettingsReadError(true);
  platform_.dialogs.endSheet(1000);
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
  ASSERT_EQ(sheets(), 2U);
  EXPECT_EQ(lastSheet().alert.messageText, "Error Reading Settings");
}

TEST_F(MyTabViewControllerTest, AConfirmationThatComesAfterTheRemovalChangesNothing) {
  select(2);
  guard_.setUninstalled(true);
  platform_.dialogs.endSheet(1000);
  EXPECT_FALSE(guard_.showPluginTab());
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
  EXPECT_EQ(sheets(), 1U);
}

TEST_F(MyTabViewControllerTest, ASheetThatEndsAfterTheGuardHasGoneChangesNothing) {
  auto guard = std::make_unique<MyTabViewController>(platform_.platform, platform_.paths, tabs_);
  tabs_.selectTabViewItemAtIndex(2);
  guard.reset();
  platform_.dialogs.endSheet(1000);
  EXPECT_EQ(tabs_.indexOfSelectedItem(), 0);
}

}  // namespace
}  // namespace corvane::test
