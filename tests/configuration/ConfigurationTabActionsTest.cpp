// The buttons of the Configuration tab: running the client and its updater, the marker of a run, the removal.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "ConfigurationTabTest.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Step = test::ScriptedFileEventQueues::Step;

class ConfigurationTabActions : public ConfigurationTabTest {
 protected:
  /// One of the client's scripts was started through the helper, and nothing else was.
  void expectOneRun(const std::string& script, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), test_.root.path() + "/Library/Corvane/" + script);
    ASSERT_THAT(pane_.helperCalls, SizeIs(1));
    EXPECT_EQ(pane_.helperCalls[0].program, "/bin/bash");
    EXPECT_EQ(pane_.helperCalls[0].arguments, arguments);
  }
};

TEST_F(ConfigurationTabActions, RunClientNowDisablesItsButtonAndRunsTheClientAsRoot) {
  openUnlockedTab();
  view_.runClientButton.click();
  EXPECT_FALSE(view_.runClientButton.enabled());
  EXPECT_TRUE(view_.updateClientNowButton.enabled());
  expectOneRun("RunClient", {"--log-parent", "prefpane-client", "--force"});
}

TEST_F(ConfigurationTabActions, RunUpdaterNowDisablesItsButtonAndRunsTheUpdaterAsRoot) {
  openUnlockedTab();
  view_.updateClientNowButton.click();
  EXPECT_FALSE(view_.updateClientNowButton.enabled());
  EXPECT_TRUE(view_.runClientButton.enabled());
  expectOneRun("RunUpdater", {"--log-parent", "prefpane-updater", "--force"});
}

TEST_F(ConfigurationTabActions, WithoutARootPrefixTheScriptsAreTheFixedOnes) {
  const PathTable paths;
  EXPECT_EQ(paths.runClient, "/Library/Corvane/RunClient");
  EXPECT_EQ(paths.runUpdater, "/Library/Corvane/RunUpdater");
}

TEST_F(ConfigurationTabActions, TheButtonIsDisabledBeforeTheScriptIsStarted) {
  openUnlockedTab();
  for (Button* button : {&view_.runClientButton, &view_.updateClientNowButton}) {
    pane_.helperCalls.clear();
    std::vector<std::size_t> callsWhenDisabled;
    button->onChange = [&] { callsWhenDisabled.push_back(pane_.helperCalls.size()); };
    button->click();
    button->onChange = nullptr;
    EXPECT_THAT(callsWhenDisabled, ElementsAre(0U));
    EXPECT_THAT(pane_.helperCalls, SizeIs(1));
  }
}

TEST_F(ConfigurationTabActions, TheUpdateButtonIsEnabledByTheNextUpdateTime) {
  openUnlockedTab();
  view_.updateClientNowButton.click();
  tab_->updateLastUpdateTime();
  EXPECT_FALSE(view_.updateClientNowButton.enabled()) << "no date has been written yet";
  writeLastChecked(PropertyList::date(kAfternoon));
  tab_->updateLastUpdateTime();
  EXPECT_TRUE(view_.updateClientNowButton.enabled());
}

TEST_F(ConfigurationTabActions, TheUpdateButtonStaysDisabledWhenTheUpdateTimeIsShownInALockedPane) {
  openUnlockedTab();
  view_.updateClientNowButton.click();
  pane_.setUnlocked(false);
  writeLastChecked(PropertyList::date(kAfternoon));
  tab_->updateLastUpdateTime();
  EXPECT_FALSE(view_.updateClientNowButton.enabled());
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
}

TEST_F(ConfigurationTabActions, AfterAFailedUpdateStartTheUpdateButtonStaysDisabledUntilTheNextRefresh) {
  writeLastChecked(PropertyList::date(kAfternoon));
  openUnlockedTab();
  view_.updateClientNowButton.click();  // the helper reports no failure to the tab
  test_.runLoop.advance(60);
  EXPECT_FALSE(view_.updateClientNowButton.enabled());
  tab_->refresh();
  EXPECT_TRUE(view_.updateClientNowButton.enabled());
}

TEST_F(ConfigurationTabActions, ARunDisablesTheRunButtonUntilItsMarkerDisappears) {
  openUnlockedTab();
  startRun();
  tick();
  EXPECT_FALSE(view_.runClientButton.enabled());
  EXPECT_THAT(test_.fileEventQueues.armedPaths(), ElementsAre(test_.paths.errorLoggerPid));
  test_.runLoop.advance(3600);
  EXPECT_FALSE(view_.runClientButton.enabled());
  endRun();
  EXPECT_TRUE(view_.runClientButton.enabled());
  EXPECT_EQ(test_.fileEventQueues.openQueues(), 0U);
  EXPECT_EQ(test_.fileEventQueues.openPaths(), 0U);
}

TEST_F(ConfigurationTabActions, ARunFromHereKeepsTheRunButtonDisabledFromTheClickToTheEndOfTheMarker) {
  openUnlockedTab();
  view_.runClientButton.click();
  tick();
  EXPECT_FALSE(view_.runClientButton.enabled()) << "the marker is not there yet";
  startRun();
  tick();
  EXPECT_FALSE(view_.runClientButton.enabled());
  tab_->refresh();
  EXPECT_FALSE(view_.runClientButton.enabled()) << "a refresh does not end a run";
  endRun();
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, OneRunHasOneWatcherAndTheNextRunANewOne) {
  openUnlockedTab();
  for (int run = 0; run < 3; ++run) {
    startRun();
    test_.runLoop.advance(10);
    EXPECT_EQ(test_.fileEventQueues.openQueues(), 1U);
    EXPECT_FALSE(view_.runClientButton.enabled());
    endRun();
    EXPECT_EQ(test_.fileEventQueues.openQueues(), 0U);
    EXPECT_TRUE(view_.runClientButton.enabled());
  }
}

TEST_F(ConfigurationTabActions, AMarkerThatAppearsAndVanishesWithinASecondNeverDisablesTheRunButton) {
  openUnlockedTab();
  bool disabled = false;
  view_.runClientButton.onChange = [&] { disabled = disabled || !view_.runClientButton.enabled(); };
  tick();
  test_.runLoop.advance(0.1);
  startRun();
  test_.runLoop.advance(0.8);
  endRun();
  test_.runLoop.advance(10);
  EXPECT_FALSE(disabled);
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, AMarkerIsFoundAtTheTickNotBefore) {
  openUnlockedTab();
  startRun();
  test_.runLoop.advance(0.99);
  EXPECT_TRUE(view_.runClientButton.enabled());
  test_.runLoop.advance(0.01);
  EXPECT_FALSE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, AMarkerThatVanishesBeforeItCanBeWatchedDisablesNothing) {
  openUnlockedTab();
  startRun();
  test_.fileEventQueues.exists = [](const std::string&) { return false; };
  tick();
  EXPECT_TRUE(view_.runClientButton.enabled());
  EXPECT_THAT(test_.log.lines, IsEmpty());
}

TEST_F(ConfigurationTabActions, AWatcherThatCannotBeMadeIsTriedAgainAtTheNextTick) {
  openUnlockedTab();
  startRun();
  for (const Step step : {Step::Open, Step::CreateQueue, Step::Register, Step::Wrap, Step::AddToRunLoop}) {
    test_.fileEventQueues.fail(step);
    test_.log.lines.clear();
    tick();
    EXPECT_TRUE(view_.runClientButton.enabled());
    EXPECT_THAT(test_.log.lines, SizeIs(1));
    test_.fileEventQueues.succeed(step);
  }
  tick();
  EXPECT_FALSE(view_.runClientButton.enabled());
  endRun();
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, AMarkerThatIsAFolderCountsAsARunToo) {
  openUnlockedTab();
  test_.root.makeFolder("Library/Corvane/ClientData/LocalInfo/corvane_error_logger.pid");
  tick();
  EXPECT_FALSE(view_.runClientButton.enabled());
  endRun();
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, ARunThatEndsInALockedPaneLeavesTheRunButtonDisabledUntilTheLockOpens) {
  openUnlockedTab();
  startRun();
  tick();
  pane_.setUnlocked(false);
  endRun();
  EXPECT_FALSE(view_.runClientButton.enabled());
  pane_.setUnlocked(true);
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, OpeningTheLockDuringARunLeavesTheRunButtonDisabled) {
  openTab();
  startRun();
  tick();
  pane_.setUnlocked(true);
  EXPECT_FALSE(view_.runClientButton.enabled());
  endRun();
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, OpeningTheLockAnewEnablesTheButtonsOfScriptsThatNeverRan) {
  openUnlockedTab();
  view_.runClientButton.click();
  view_.updateClientNowButton.click();
  pane_.setUnlocked(false);
  pane_.setUnlocked(true);
  EXPECT_TRUE(view_.runClientButton.enabled());
  EXPECT_TRUE(view_.updateClientNowButton.enabled());
}

TEST_F(ConfigurationTabActions, UninstallAsksInASheetOnThePaneAndStartsNothing) {
  openUnlockedTab();
  view_.uninstallButton.click();
  ASSERT_THAT(test_.dialogs.sheets, SizeIs(1));
  const auto& [alert, window, ended] = test_.dialogs.sheets[0];
  EXPECT_EQ(window, SheetWindow::PaneWindow);
  EXPECT_EQ(alert.style, AlertStyle::Critical);
  EXPECT_EQ(alert.iconPath, "/bundle/Resources/Corvane.icns");
  EXPECT_EQ(alert.messageText, "Please confirm removal.");
  EXPECT_EQ(alert.informativeText,
            "This will permenantly remove the client software and report its removal.");
  ASSERT_THAT(alert.buttons, SizeIs(2));
  EXPECT_EQ(alert.buttons[0].title, "Uninstall");
  EXPECT_EQ(alert.buttons[0].keyEquivalent, "");
  EXPECT_EQ(alert.buttons[1].title, "Cancel");
  EXPECT_EQ(alert.buttons[1].keyEquivalent, "\r") << "Return cancels";
  EXPECT_TRUE(alert.buttons[1].cancels && !alert.buttons[0].cancels) << "Escape too";
  ASSERT_TRUE(alert.accessory.has_value());
  EXPECT_EQ(alert.accessory->title, "Allow client to report removal.");
  EXPECT_EQ(alert.accessory->width, 200);
  EXPECT_EQ(alert.accessory->height, 40);
  EXPECT_TRUE(alert.accessory->on);
  EXPECT_TRUE(alert.accessory->refusesFirstResponder);
  EXPECT_THAT(pane_.helperCalls, IsEmpty());
}

TEST_F(ConfigurationTabActions, AConfirmedRemovalWithAReportHasFourArguments) {
  openUnlockedTab();
  view_.uninstallButton.click();
  test_.dialogs.endSheet(1000, true);
  expectOneRun("RunClient", {"--log-parent", "prefpane-remove", "--remove"});
}

TEST_F(ConfigurationTabActions, AConfirmedRemovalWithoutAReportIsQuiet) {
  openUnlockedTab();
  view_.uninstallButton.click();
  test_.dialogs.endSheet(1000, false);
  expectOneRun("RunClient", {"--log-parent", "prefpane-remove", "--remove", "--quiet"});
}

TEST_F(ConfigurationTabActions, AnyOtherEndOfTheSheetRemovesNothing) {
  openUnlockedTab();
  for (const int returnCode : {1001, 1002, 0, -1, 999}) {
    for (const bool report : {true, false}) {
      view_.uninstallButton.click();
      test_.dialogs.endSheet(returnCode, report);
    }
  }
  EXPECT_THAT(pane_.helperCalls, IsEmpty());
}

TEST_F(ConfigurationTabActions, MissingScriptsAreTheHelpersBusinessNotTheTabs) {
  ASSERT_FALSE(test_.files.exists(test_.paths.runClient));
  openUnlockedTab();
  view_.runClientButton.click();
  view_.updateClientNowButton.click();
  view_.uninstallButton.click();
  test_.dialogs.endSheet(1000, true);
  test_.runLoop.advance(10);
  EXPECT_THAT(pane_.helperCalls, SizeIs(3));
  EXPECT_FALSE(view_.runClientButton.enabled());
  EXPECT_THAT(test_.log.lines, IsEmpty());
}

TEST_F(ConfigurationTabActions, ATabThatGoesEndsItsTimerItsWatcherAndItsActions) {
  openUnlockedTab();
  startRun();
  tick();
  const auto late = test_.fileEventQueues.callbackFor(test_.paths.errorLoggerPid);
  view_.uninstallButton.click();
  tab_.reset();
  EXPECT_EQ(test_.runLoop.pendingTimers(), 0U);
  EXPECT_EQ(test_.fileEventQueues.openQueues(), 0U);
  late();
  test_.dialogs.endSheet(1000, true);
  view_.updateClientNowButton.click();
  EXPECT_THAT(pane_.helperCalls, IsEmpty());
  EXPECT_FALSE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabActions, OneTimerLooksForTheMarkerEverySecondAsLongAsTheTabExists) {
  openTab();
  EXPECT_EQ(test_.runLoop.pendingTimers(), 1U);
  test_.runLoop.advance(1000);
  EXPECT_EQ(test_.runLoop.pendingTimers(), 1U);
  startRun();
  tick();
  EXPECT_EQ(test_.fileEventQueues.openQueues(), 1U) << "in a locked pane too";
  EXPECT_EQ(test_.runLoop.pendingTimers(), 1U) << "not even a run ends it";
}

}  // namespace
}  // namespace corvane
