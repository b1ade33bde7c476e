#include <gmock/gmock.h>

#include "PaneFixture.h"
#include "pane/CorvanePref.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class CorvanePrefTest : public PaneFixture {
 protected:
  /// Puts root commands and sheets among the calls of the tabs, with the lock's state at that moment.
  void recordCommandsAndSheets() {
    platform_.authorization.onCommand = [this](const RootCommand& command) {
      const std::string& shellText = command.arguments.at(1);
      calls_.push_back(lockState() + shellText.substr(0, shellText.find(' ')));
    };
    platform_.dialogs.onSheet = [this](const AlertDescription& alert) {
      calls_.push_back(lockState() + alert.messageText);
    };
  }
  [[nodiscard]] std::string lockState() const { return pane_->unlocked() ? "unlocked: " : "locked: "; }
};

class CountingObserver final : public UnlockedObserver {
 public:
  void unlockedDidChange() override { ++changes; }
  int changes = 0;
};

void expectOkAlert(const AlertDescription& alert, const std::string& message,
                   const std::string& informative) {
  EXPECT_EQ(alert.messageText, message);
  EXPECT_EQ(alert.informativeText, informative);
  EXPECT_EQ(alert.style, AlertStyle::Warning);
  ASSERT_EQ(alert.buttons.size(), 1U);
  EXPECT_EQ(alert.buttons[0].title, "OK");
}

const char* const kRemovedText =
    "The Monitoring Client has been removed. Please choose another pane or quit System Preferences.";
const char* const kUnreadableText =
    "The client settings could not be read. Please click the lock to authorize and attempt to fix the "
    "settings.";

TEST_F(CorvanePrefTest, AwakeningWatchesFolderAndSettingsAndRefreshesTheTabsInOrder) {
  createPane().awakeFromNib();
  EXPECT_THAT(platform_.fileEventQueues.armedPaths(),
              UnorderedElementsAre(platform_.paths.installFolder, platform_.paths.clientSettings));
  EXPECT_EQ(calls_, allRefreshed_);
  EXPECT_FALSE(pane_->uninstalled());
  EXPECT_FALSE(pane_->clientSettingsReadError());
}

TEST_F(CorvanePrefTest, AwakeningASecondTimeOnlyRefreshes) {
  createPane().awakeFromNib();
  calls_.clear();
  pane_->awakeFromNib();
  EXPECT_EQ(platform_.fileEventQueues.armedPaths().size(), 2U);
  EXPECT_EQ(calls_, allRefreshed_);
}

TEST_F(CorvanePrefTest, ASecondPaneOnTheTreeSaysSoOnce) {
  platform_.files.isTaken = true;
  load();
  EXPECT_THAT(platform_.log.lines, ElementsAre("Another pane is open on " + platform_.paths.installFolder +
                                               "; where both change a file, what was written last counts"));
}

TEST_F(CorvanePrefTest, ThatAnotherPaneIsOpenIsSaidBesideTheLockUntilTheLockIsOpenedWithoutIt) {
  const char* said =
      "Another pane is open on /Library/Corvane; where both change a file, what was written last counts";
  platform_.files.isTaken = true;
  load();
  EXPECT_EQ(view_.statusField.stringValue(), said);
  openLock();
  EXPECT_EQ(view_.statusField.stringValue(), said);
  view_.authView.click();
  platform_.files.isTaken = false;  // it has gone
  EXPECT_EQ(view_.statusField.stringValue(), said);
  openLock();
  EXPECT_EQ(view_.statusField.stringValue(), "");
}

TEST_F(CorvanePrefTest, WithoutTheInstallFolderThePaneIsUninstalledFromTheStart) {
  platform_.remove(platform_.paths.installFolder);
  createPane().awakeFromNib();
  EXPECT_TRUE(pane_->uninstalled());
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(platform_.fileEventQueues.armedPaths(), IsEmpty());
}

TEST_F(CorvanePrefTest, AwakeningAgainAfterTheFolderHasComeClearsTheRemoval) {
  platform_.remove(platform_.paths.installFolder);
  createPane().awakeFromNib();
  ASSERT_TRUE(pane_->uninstalled());
  platform_.layOutFolders();
  pane_->awakeFromNib();
  EXPECT_FALSE(pane_->uninstalled());
}

TEST_F(CorvanePrefTest, WithoutTheSettingsFileTheReadErrorIsSetAndNothingIsRefreshed) {
  platform_.remove(platform_.paths.clientSettings);
  createPane().awakeFromNib();
  EXPECT_TRUE(pane_->clientSettingsReadError());
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(CorvanePrefTest, AwakeningAgainAfterTheSettingsFileHasComeClearsTheReadErrorAndRefreshes) {
  platform_.remove(platform_.paths.clientSettings);
  createPane().awakeFromNib();
  ASSERT_TRUE(pane_->clientSettingsReadError());
  writeSettings(Dictionary::make({{"Client_Version", PropertyList::string("5.1")}}));
  pane_->awakeFromNib();
  EXPECT_FALSE(pane_->clientSettingsReadError());
  EXPECT_EQ(calls_, allRefreshed_);
}

TEST_F(CorvanePrefTest, ASettingsFileThatWasNeverThereIsNotToldToTheGuard) {
  platform_.remove(platform_.paths.clientSettings);
  load();
  view_.tabView.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view_.tabView.indexOfSelectedItem(), 1);
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
}

TEST_F(CorvanePrefTest, SettingsThatCannotBeWatchedSetTheReadErrorAndTheGuardRefusesSwitches) {
  platform_.fileEventQueues.failOpening(platform_.paths.clientSettings, "Permission denied");
  createPane().awakeFromNib();
  EXPECT_TRUE(pane_->clientSettingsReadError());
  EXPECT_THAT(calls_, IsEmpty());
  view_.tabView.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view_.tabView.indexOfSelectedItem(), 0);
}

TEST_F(CorvanePrefTest, AFolderThatCannotBeWatchedDoesNotStopTheLoading) {
  platform_.fileEventQueues.failOpening(platform_.paths.installFolder, "Permission denied");
  createPane().awakeFromNib();
  EXPECT_FALSE(pane_->uninstalled());
  EXPECT_EQ(calls_, allRefreshed_);
}

TEST_F(CorvanePrefTest, TheMainViewStartsTheStreamArmsTheLockAndDrawsTheHeader) {
  int shownLocks = 0;
  view_.authView.onChange = [&] { ++shownLocks; };
  view_.tabView.selectTabViewItemAtIndex(1);
  load();
  EXPECT_EQ(shownLocks, 1);
  ASSERT_EQ(platform_.directoryEvents.streams.size(), 1U);
  EXPECT_THAT(platform_.directoryEvents.streams[0]->calls, ElementsAre("schedule", "start"));
  EXPECT_EQ(view_.tabView.indexOfSelectedItem(), 0);
  EXPECT_EQ(view_.clientVersionButton.title(), "Version 5.1");
  openLock();
  EXPECT_THAT(platform_.authorization.requestedRights, ElementsAre("system.privilege.admin"));
  EXPECT_THAT(platform_.dialogs.modalAlerts, IsEmpty());
}

TEST_F(CorvanePrefTest, AMissingInstallFolderIsLoggedAndToldInAModalAlertAndLoadingGoesOn) {
  platform_.remove(platform_.paths.installFolder);
  load();
  EXPECT_EQ(platform_.log.lines.at(0), "Could not open " + platform_.paths.installFolder);
  ASSERT_EQ(platform_.dialogs.modalAlerts.size(), 1U);
  expectOkAlert(platform_.dialogs.modalAlerts[0], "Monitoring Client Error",
                "The monitoring client may have been partially uninstalled");
  EXPECT_EQ(platform_.directoryEvents.streams.size(), 1U);
  EXPECT_EQ(view_.clientVersionButton.title(), "Error");
}

TEST_F(CorvanePrefTest, OpeningTheLockAsksForErrorsThenDoesTheHousekeepingThenRefreshes) {
  load();
  calls_.clear();
  recordCommandsAndSheets();
  openLock();
  EXPECT_TRUE(pane_->unlocked());
  EXPECT_EQ(calls_, (TabCalls{"configuration.errorLoadingPlists", "options.errorLoadingPlists",
                              "unlocked: /bin/chmod", "unlocked: /usr/bin/plutil", "configuration.refresh",
                              "options.refresh", "plugins.refresh"}));
  EXPECT_EQ(platform_.authorization.toolsStarted(), (std::vector<std::string>{"/bin/sh", "/bin/sh"}));
}

TEST_F(CorvanePrefTest, AStoreThatFailedToLoadIsToldOnUnlockingAndTheTabsAreRefreshedAfterThat) {
  load();
  calls_.clear();
  configuration_.error = true;
  recordCommandsAndSheets();
  openLock();
  EXPECT_EQ(calls_, (TabCalls{"configuration.errorLoadingPlists", "unlocked: /bin/chmod",
                              "unlocked: /usr/bin/plutil", "unlocked: Error Reading Preferences",
                              "configuration.refresh", "options.refresh", "plugins.refresh"}))
      << "the Options tab is asked only when the Configuration tab reports no error";
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  expectOkAlert(platform_.dialogs.sheets[0].alert, "Error Reading Preferences",
                "Some preferences could not be read. Please restart System Preferences to retry, or contact "
                "support.\n(ReasonCode 415)");
  EXPECT_EQ(platform_.dialogs.sheets[0].window, SheetWindow::ApplicationMainWindow);
}

TEST_F(CorvanePrefTest, AnErrorOfTheOptionsTabIsToldToo) {
  load();
  options_.error = true;
  openLock();
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  EXPECT_EQ(platform_.dialogs.sheets[0].alert.messageText, "Error Reading Preferences");
}

TEST_F(CorvanePrefTest, ClosingTheLockReloadsNothing) {
  load();
  openLock();
  calls_.clear();
  view_.authView.click();
  EXPECT_FALSE(pane_->unlocked());
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
}

TEST_F(CorvanePrefTest, ClosingTheLockWithUnreadableSettingsShowsThePermissionsAlert) {
  platform_.remove(platform_.paths.clientSettings);
  load();
  openLock();
  view_.authView.click();
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  expectOkAlert(platform_.dialogs.sheets[0].alert, "Error Reading Settings", kUnreadableText);
  EXPECT_EQ(platform_.dialogs.sheets[0].window, SheetWindow::ApplicationMainWindow);
}

TEST_F(CorvanePrefTest, ThePermissionsAlertIsNotShownWithoutTheInstallFolder) {
  platform_.remove(platform_.paths.clientSettings);
  load();
  openLock();
  platform_.remove(platform_.paths.installFolder);
  view_.authView.click();
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
}

TEST_F(CorvanePrefTest, ADeniedOrCancelledLockStaysClosedAndShowsNothing) {
  for (const auto outcome :
       {AuthorizationOutcome::Denied, AuthorizationOutcome::Cancelled, AuthorizationOutcome::Unavailable}) {
    load();
    platform_.authorization.outcome = outcome;
    openLock();
    EXPECT_FALSE(pane_->unlocked());
    EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Closed);
    EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
  }
}

TEST_F(CorvanePrefTest, RemovingTheInstallFolderLocksThePaneForGood) {
  load();
  std::vector<Reload> told;
  pane_->onReload = [&](Reload what) {
    EXPECT_FALSE(pane_->unlocked());
    told.push_back(what);
  };
  openLock();
  platform_.remove(platform_.paths.installFolder);
  platform_.fileEventQueues.fire(platform_.paths.installFolder);
  EXPECT_TRUE(pane_->uninstalled());
  EXPECT_FALSE(pane_->unlocked());
  EXPECT_EQ(platform_.authorization.granted, nullptr) << "a locked pane holds no rights";
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  expectOkAlert(platform_.dialogs.sheets[0].alert, "Monitoring Client Removed", kRemovedText);
  EXPECT_EQ(platform_.dialogs.sheets[0].window, SheetWindow::PaneWindow);
  EXPECT_EQ(platform_.fileEventQueues.openQueues(), 1U) << "only the settings file is watched still";
  EXPECT_THAT(told, ElementsAre(Reload::Removed));

  openLock();
  EXPECT_FALSE(pane_->unlocked());
  EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Closed);
  ASSERT_EQ(platform_.dialogs.sheets.size(), 2U);
  EXPECT_EQ(platform_.dialogs.sheets[1].alert.messageText, "Monitoring Client Removed");

  view_.tabView.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view_.tabView.indexOfSelectedItem(), 0) << "the guard was told";
}

TEST_F(CorvanePrefTest, APaneThatIsLockedByTheRemovalOrTheLossOfItsSettingsIsLockedBeforeItSaysSo) {
  load();
  openLock();
  calls_.clear();
  recordCommandsAndSheets();
  platform_.fileEventQueues.fire(platform_.paths.clientSettings);
  platform_.runLoop.advance(5);
  openLock();
  calls_.push_back("the folder goes");
  platform_.fileEventQueues.fire(platform_.paths.installFolder);
  EXPECT_THAT(calls_, ElementsAre("locked: Error Reading Settings", "configuration.errorLoadingPlists",
                                  "options.errorLoadingPlists", "unlocked: /bin/chmod",
                                  "unlocked: /usr/bin/plutil", "configuration.refresh", "options.refresh",
                                  "plugins.refresh", "the folder goes", "locked: Monitoring Client Removed"));
}

TEST_F(CorvanePrefTest, TheFolderComingBackDoesNotUnlockThePane) {
  load();
  platform_.fileEventQueues.fire(platform_.paths.installFolder);
  openLock();
  EXPECT_FALSE(pane_->unlocked());
}

TEST_F(CorvanePrefTest, LosingTheSettingsFileLocksThePaneFiveSecondsLater) {
  load();
  openLock();
  platform_.remove(platform_.paths.clientSettings);
  platform_.fileEventQueues.fire(platform_.paths.clientSettings);
  EXPECT_TRUE(pane_->clientSettingsReadError());
  EXPECT_EQ(platform_.fileEventQueues.openQueues(), 2U) << "the watcher is kept";
  platform_.runLoop.advance(4.9);
  EXPECT_TRUE(pane_->unlocked());
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
  platform_.runLoop.advance(0.2);
  EXPECT_FALSE(pane_->unlocked());
  EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Closed);
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  EXPECT_EQ(platform_.dialogs.sheets[0].alert.messageText, "Error Reading Settings");
  platform_.runLoop.advance(60);
  EXPECT_EQ(platform_.dialogs.sheets.size(), 1U) << "the timer fires once";
}

TEST_F(CorvanePrefTest, LosingTheSettingsFileIsToldToTheGuardAtOnce) {
  load();
  platform_.fileEventQueues.fire(platform_.paths.clientSettings);
  view_.tabView.selectTabViewItemAtIndex(1);
  EXPECT_EQ(view_.tabView.indexOfSelectedItem(), 0);
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  EXPECT_EQ(platform_.dialogs.sheets[0].alert.messageText, "Error Reading Settings");
}

TEST_F(CorvanePrefTest, APaneThatGoesBeforeTheFiveSecondsAreOverIsNotCalledAnyMore) {
  load();
  platform_.fileEventQueues.fire(platform_.paths.clientSettings);
  pane_.reset();
  platform_.runLoop.advance(10);
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
}

TEST_F(CorvanePrefTest, AHelperThatDiesLocksThePane) {
  load();
  openLock();
  ASSERT_NE(platform_.authorization.granted, nullptr);
  platform_.authorization.granted->tellLost();
  EXPECT_FALSE(pane_->unlocked());
}

TEST_F(CorvanePrefTest, ObserversOfTheLockAreToldAtOnceAndOfEveryChangeAsOftenAsTheyWereAdded) {
  load();
  CountingObserver observer;
  pane_->addUnlockedObserver(observer);
  EXPECT_EQ(observer.changes, 1);
  pane_->addUnlockedObserver(observer);
  EXPECT_EQ(observer.changes, 2);
  openLock();
  EXPECT_EQ(observer.changes, 4);
}

TEST_F(CorvanePrefTest, WhatATabWritesReachesTheFileThroughRoot) {
  load();
  openLock();
  platform_.authorization.commands.clear();
  pane_->setPlistFileValues(platform_.paths.clientSettings,
                            Dictionary::make({{"A", PropertyList::integer(1)}}));
  EXPECT_EQ(platform_.authorization.toolsStarted(), (std::vector<std::string>{"/bin/cp", "/bin/rm"}));
  EXPECT_EQ(platform_.readPlist(platform_.paths.clientSettings),
            Dictionary::make({{"A", PropertyList::integer(1)}}));
}

TEST_F(CorvanePrefTest, AFailedWriteIsShownUntilTheFileIsWritten) {
  load();
  openLock();
  EXPECT_TRUE(view_.statusField.hidden());
  platform_.propertyLists.whyWritesFail = "Read-only file system";
  pane_->setPlistFileValues(platform_.paths.clientSettings, Dictionary::make());
  EXPECT_EQ(view_.statusField.stringValue(), "ClientSettings.plist was not saved: Read-only file system (" +
                                                 platform_.root.path() + "/private/tmp)");
  EXPECT_FALSE(view_.statusField.hidden());
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
  platform_.propertyLists.whyWritesFail.clear();
  pane_->setPlistFileValues(platform_.paths.clientSettings, Dictionary::make());
  EXPECT_TRUE(view_.statusField.hidden());
}

TEST_F(CorvanePrefTest, AScriptThatCannotBeStartedIsShownUntilItIsStarted) {
  load();
  openLock();
  const auto run = [this] {
    pane_->executeQLHelperArguments("/bin/bash", {platform_.paths.runClient, "--force"});
  };
  platform_.authorization.statusOfTool["/bundle/MacOS/qlhelper"] = launch_status::kDenied;
  platform_.authorization.reasonOfTool["/bundle/MacOS/qlhelper"] =
      platform_.paths.runClient + ": others than root can change the program";
  run();
  EXPECT_EQ(view_.statusField.stringValue(),
            "RunClient was not started: others than root can change the program");
  platform_.authorization.statusOfTool.clear();
  platform_.authorization.reasonOfTool.clear();
  run();
  EXPECT_TRUE(view_.statusField.hidden());
}

TEST_F(CorvanePrefTest, RightsThatAreGrantedAfterThePaneHasLockedItselfOpenIt) {
  platform_.authorization.answersAtOnce = false;
  load();
  platform_.fileEventQueues.fire(platform_.paths.clientSettings);
  openLock();
  platform_.runLoop.advance(5);
  EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Asking);
  platform_.authorization.answer(AuthorizationOutcome::Granted);
  EXPECT_TRUE(pane_->unlocked());
  EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Open);
}

TEST_F(CorvanePrefTest, RightsThatAreGrantedAfterTheRemovalAreGivenBack) {
  platform_.authorization.answersAtOnce = false;
  load();
  openLock();
  platform_.remove(platform_.paths.installFolder);
  platform_.fileEventQueues.fire(platform_.paths.installFolder);
  platform_.authorization.answer(AuthorizationOutcome::Granted);
  EXPECT_FALSE(pane_->unlocked());
  EXPECT_EQ(platform_.authorization.granted, nullptr);
  EXPECT_EQ(view_.authView.state(), AuthorizationView::State::Closed);
  EXPECT_EQ(platform_.dialogs.sheets.size(), 2U);
}

TEST_F(CorvanePrefTest, AtItsEndThePaneStopsTheStreamAndItsWatchers) {
  load();
  const auto stream = platform_.directoryEvents.streams[0];
  pane_.reset();
  EXPECT_THAT(stream->calls, ElementsAre("schedule", "start", "stop", "unschedule", "release"));
  EXPECT_EQ(platform_.fileEventQueues.openQueues(), 0U);
  openLock();
  EXPECT_THAT(platform_.authorization.commands, IsEmpty()) << "nobody is told any more";
}

}  // namespace
}  // namespace corvane::test
