#include <ostream>

#include "AssemblyFixture.h"

namespace corvane::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PaneAssemblyTest : public AssemblyFixture {};

TEST_F(PaneAssemblyTest, LoadingShowsTheClientInEveryTabWithTheLockClosed) {
  load();
  EXPECT_EQ(assembly_->view().clientVersionButton.title(), "Version 5.1");
  EXPECT_EQ(assembly_->configurationView().clientGroupTextField.stringValue(), "lab");
  EXPECT_EQ(assembly_->optionsView().timeOfDayTextField.stringValue(), "1");
  EXPECT_EQ(assembly_->optionsView().amPmButton.indexOfSelectedItem(), 1);
  EXPECT_EQ(assembly_->pluginsView().pluginsTable.childrenOfItem({}).size(), 1U);
  EXPECT_FALSE(assembly_->configurationView().clientGroupTextField.enabled());
  EXPECT_FALSE(assembly_->pluginsView().pluginsTable.enabled());
  EXPECT_THAT(platform_.authorization.commands, IsEmpty());
  EXPECT_THAT(platform_.log.lines, IsEmpty());
}

TEST_F(PaneAssemblyTest, LossesAreWatchedForBeforeChangesAreFollowed) {
  std::vector<std::pair<std::string, std::size_t>> watched;  // and how many streams there were
  platform_.fileEventQueues.exists = [&](const std::string& path) {
    watched.emplace_back(path, platform_.directoryEvents.streams.size());
    return platform_.files.exists(path);
  };
  load();
  EXPECT_EQ(platform_.directoryEvents.streams.size(), 1U);
  EXPECT_THAT(watched,
              ElementsAre(std::pair(paths_.installFolder, 0U), std::pair(paths_.clientSettings, 0U)));
}

TEST_F(PaneAssemblyTest, UnlockingRefreshesConfigurationOptionsAndPluginsInThisOrder) {
  load();
  const std::size_t before = platform_.propertyLists.reads.size();
  assembly_->view().authView.click();
  const std::vector<std::string> oneOfEachTab{paths_.updateStatus, paths_.autoDiskMount,
                                              paths_.plugins + "/check_x.plist"};
  EXPECT_EQ(readingOrder(before, oneOfEachTab), oneOfEachTab);
  EXPECT_TRUE(assembly_->configurationView().clientGroupTextField.enabled());
  EXPECT_TRUE(assembly_->pluginsView().pluginsTable.enabled());
}

TEST_F(PaneAssemblyTest, AnEditOfTheGroupReachesTheFileThroughTheStagingFolder) {
  loadUnlocked();
  platform_.authorization.commands.clear();
  TextField& group = assembly_->configurationView().clientGroupTextField;
  ASSERT_TRUE(group.typeText("office"));
  group.endEditing();
  EXPECT_EQ(platform_.authorization.toolsStarted(), (std::vector<std::string>{"/bin/cp", "/bin/rm"}));
  EXPECT_EQ(platform_.readPlist(paths_.clientSettings), Dictionary::make({{"Client_Version", text("5.1")},
                                                                          {"ClientGroup", text("office")},
                                                                          {"Unknown", text("kept")}}));
}

TEST_F(PaneAssemblyTest, SettingsThatChangeBehindThePaneAreShownWithoutBeingWritten) {
  load();
  platform_.directoryEvents.deliver({paths_.installFolder});
  writeSettings("office", "5.2");
  platform_.files.dates[paths_.clientSettings] = {Date{4e9}, {}};
  platform_.directoryEvents.deliver({paths_.installFolder});
  EXPECT_EQ(assembly_->view().clientVersionButton.title(), "Version 5.2");
  EXPECT_EQ(assembly_->configurationView().clientGroupTextField.stringValue(), "office");
  EXPECT_THAT(platform_.authorization.commands, IsEmpty());
}

TEST_F(PaneAssemblyTest, APluginThatIsInstalledBehindThePaneAppears) {
  load();
  platform_.writePlist(paths_.plugins + "/check_y.plist",
                       Dictionary::make({{"PluginOptions", Array::make({checkBoxOption()})}}));
  platform_.writePlist(paths_.pluginSupport + "/check_y_settings.plist",
                       Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)}}));
  platform_.directoryEvents.deliver({paths_.plugins});
  EXPECT_EQ(assembly_->pluginsView().pluginsTable.childrenOfItem({}).size(), 2U);
}

TEST_F(PaneAssemblyTest, RemovingTheInstallFolderLocksEveryTabForGood) {
  loadUnlocked();
  removeWatched(paths_.installFolder);
  EXPECT_FALSE(assembly_->pane().unlocked());
  EXPECT_FALSE(assembly_->configurationView().clientGroupTextField.enabled());
  EXPECT_FALSE(assembly_->optionsView().automountCheckbox.enabled());
  EXPECT_FALSE(assembly_->pluginsView().pluginsTable.enabled());
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  EXPECT_EQ(platform_.dialogs.sheets[0].alert.messageText, "Monitoring Client Removed");
  assembly_->view().authView.click();
  EXPECT_FALSE(assembly_->pane().unlocked());
  assembly_->view().tabView.selectTabViewItemAtIndex(1);
  EXPECT_EQ(assembly_->view().tabView.indexOfSelectedItem(), 0);
}

TEST_F(PaneAssemblyTest, AClientThatWasNeverInstalledLoadsEmptyAndCannotBeUnlocked) {
  platform_.remove(paths_.installFolder);
  load();
  EXPECT_EQ(platform_.dialogs.modalAlerts.size(), 1U);
  EXPECT_EQ(assembly_->view().clientVersionButton.title(), "Error");
  assembly_->view().authView.click();
  EXPECT_FALSE(assembly_->pane().unlocked());
  EXPECT_THAT(platform_.authorization.commands, IsEmpty());
}

TEST_F(PaneAssemblyTest, AnAlertWaitsForTheOpenSheetAndTheSheetForAnOpenAlert) {
  loadUnlocked();
  assembly_->options().advancedButtonAction();
  removeWatched(paths_.installFolder);
  EXPECT_THAT(platform_.dialogs.sheets, IsEmpty());
  assembly_->optionsView().sheetCancelButton.click();
  ASSERT_EQ(platform_.dialogs.sheets.size(), 1U);
  EXPECT_EQ(platform_.dialogs.sheets[0].alert.messageText, "Monitoring Client Removed");
  assembly_->options().advancedButtonAction();
  EXPECT_FALSE(assembly_->optionsView().timeMachineAdvancedWindow.isSheet());
  platform_.dialogs.endSheet(1000);
  EXPECT_TRUE(assembly_->optionsView().timeMachineAdvancedWindow.isSheet());
}

TEST_F(PaneAssemblyTest, ThePluginsTabOpensAfterTheCautionAlertWasAnswered) {
  load();
  TabView& tabs = assembly_->view().tabView;
  tabs.selectTabViewItemAtIndex(2);
  EXPECT_EQ(tabs.indexOfSelectedItem(), 0);
  platform_.dialogs.endSheet(1000);
  EXPECT_EQ(tabs.indexOfSelectedItem(), 2);
}

/// A moment of the pane's life at which it is let go; what comes afterwards must reach nobody.
struct Moment {
  const char* name;
  void (*reach)(PaneAssembly& pane, TestPlatform& platform);
};
void PrintTo(const Moment& moment, std::ostream* stream) { *stream << moment.name; }

class PaneAssemblyEnds : public AssemblyFixture, public ::testing::WithParamInterface<Moment> {};

TEST_P(PaneAssemblyEnds, AndNothingThatComesLaterReachesIt) {
  platform_.authorization.answersAtOnce = std::string(GetParam().name) != "WhileTheLockAsks";
  loadUnlocked();
  GetParam().reach(*assembly_, platform_);
  const auto lateBatch = platform_.directoryEvents.streams.back();
  const auto lateLoss = platform_.authorization.granted != nullptr ? platform_.authorization.granted->lost
                                                                   : std::function<void()>();
  const auto lateWatch = platform_.fileEventQueues.callbackFor(paths_.installFolder);
  assembly_.reset();

  EXPECT_EQ(platform_.fileEventQueues.openQueues(), 0U);
  EXPECT_EQ(platform_.fileEventQueues.openPaths(), 0U);
  EXPECT_EQ(platform_.runLoop.pendingTimers(), 0U);
  EXPECT_THAT(lateBatch->calls, ElementsAre("schedule", "start", "stop", "unschedule", "release"));
  EXPECT_EQ(platform_.authorization.granted, nullptr) << "the rights are given back";

  const std::size_t commands = platform_.authorization.commands.size();
  const std::size_t reads = platform_.propertyLists.reads.size();
  const std::size_t sheets = platform_.dialogs.sheets.size();
  if (lateLoss) lateLoss();
  if (lateWatch) lateWatch();
  platform_.authorization.answer(AuthorizationOutcome::Granted);
  platform_.runLoop.advance(60);
  while (platform_.dialogs.endedSheets < sheets) platform_.dialogs.endSheet(1000, true);
  EXPECT_EQ(platform_.authorization.commands.size(), commands);
  EXPECT_EQ(platform_.propertyLists.reads.size(), reads);
  EXPECT_EQ(platform_.dialogs.sheets.size(), sheets);
  EXPECT_EQ(platform_.authorization.granted, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Moments, PaneAssemblyEnds,
    ::testing::Values(Moment{"RightAfterItWasUnlocked", [](PaneAssembly&, TestPlatform&) {}},
                      Moment{"WhileTheLockAsks",
                             [](PaneAssembly& pane, TestPlatform&) {
                               EXPECT_EQ(pane.view().authView.state(), AuthorizationView::State::Asking);
                             }},
                      Moment{"WhileTheCautionAlertIsOpen",
                             [](PaneAssembly& pane, TestPlatform& platform) {
                               pane.view().tabView.selectTabViewItemAtIndex(2);
                               EXPECT_EQ(platform.dialogs.sheets.size(), 1U);
                             }},
                      Moment{"WhileTheRemovalIsBeingConfirmed",
                             [](PaneAssembly& pane, TestPlatform& platform) {
                               pane.configurationView().uninstallButton.click();
                               EXPECT_EQ(platform.dialogs.sheets.size(), 1U);
                             }},
                      Moment{"WhileTheTimeMachineSheetIsOpen",
                             [](PaneAssembly& pane, TestPlatform&) {
                               pane.options().advancedButtonAction();
                               EXPECT_NE(pane.view().mainWindow.attachedSheet(), nullptr);
                             }},
                      Moment{"WhileAGroupIsBeingTyped",
                             [](PaneAssembly& pane, TestPlatform&) {
                               EXPECT_TRUE(pane.configurationView().clientGroupTextField.typeText("half"));
                             }},
                      Moment{"WhileAClientRunIsWatched",
                             [](PaneAssembly&, TestPlatform& platform) {
                               platform.writeText(platform.paths.errorLoggerPid, "4711\n");
                               platform.runLoop.advance(1);
                               EXPECT_THAT(platform.fileEventQueues.armedPaths(),
                                           Contains(platform.paths.errorLoggerPid));
                             }},
                      Moment{"BeforeThePaneLocksItselfForLostSettings",
                             [](PaneAssembly& pane, TestPlatform& platform) {
                               platform.remove(platform.paths.clientSettings);
                               platform.fileEventQueues.fire(platform.paths.clientSettings);
                               EXPECT_TRUE(pane.pane().unlocked());
                             }},
                      Moment{"AfterTheClientWasRemoved",
                             [](PaneAssembly& pane, TestPlatform& platform) {
                               platform.remove(platform.paths.installFolder);
                               platform.fileEventQueues.fire(platform.paths.installFolder);
                               EXPECT_TRUE(pane.pane().uninstalled());
                             }}),
    [](const auto& moment) { return std::string(moment.param.name); });

TEST_F(PaneAssemblyTest, APaneThatIsNeverLoadedLeavesNothingBehind) {
  assembly_ = std::make_unique<PaneAssembly>(platform_.platform, platform_.root.path());
  assembly_.reset();
  EXPECT_EQ(platform_.runLoop.pendingTimers(), 0U);
  EXPECT_EQ(platform_.fileEventQueues.openQueues(), 0U);
  EXPECT_THAT(platform_.directoryEvents.streams, IsEmpty());
}

}  // namespace
}  // namespace corvane::test
