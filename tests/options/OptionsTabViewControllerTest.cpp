#include "formatters/MyNumberFormatter.h"
#include "options/OptionsTabFixture.h"
#include "options/OptionsTabViewController.h"

namespace corvane::test {
namespace {

class OptionsTabViewControllerTest : public OptionsTabTest {
 protected:
  void mountTwo() {
    writeJournal(
        {{"disk1", described("Alpha", "/Volumes/Alpha")}, {"disk2", described("Beta", "/Volumes/Beta")}});
  }
};

TEST_F(OptionsTabViewControllerTest, CreationReadsTheFourFilesAndShowsNothing) {
  mountTwo();
  for (const std::string& file :
       {paths_.timeMachineSettings, paths_.rootCapacitySettings, paths_.autoDiskMount}) {
    platform_.writePlist(file, Dictionary::make({{"Plugin_Enabled", flag(true)}}));
  }
  platform_.propertyLists.reads.clear();
  tab_ = std::make_unique<OptionsTabViewController>(platform_.platform, paths_, view_);
  EXPECT_EQ(platform_.propertyLists.reads,
            (std::vector{paths_.timeMachineSettings, paths_.rootCapacitySettings, paths_.autoDiskMount,
                         paths_.diskJournal}));
  EXPECT_EQ(view_.volumesTable.numberOfRows(), 0);
  EXPECT_EQ(processListings(), 0U);
  EXPECT_FALSE(tab_->catalogue().filters().showAllVolumeTypes());
}

TEST_F(OptionsTabViewControllerTest, LoadingShowsTheFirstVolume) {
  mountTwo();
  openUnlockedTab();
  EXPECT_EQ(labels(), (std::vector<std::string>{"Alpha", "Beta"}));
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
  EXPECT_FALSE(view_.monitorPresenceCheckbox.hidden());
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(OptionsTabViewControllerTest, LoadingGivesTheFieldsTheirFormatters) {
  openTab();
  struct Case {
    TextField& field;
    int minimum, maximum, defaultValue;
  };
  for (const Case& c :
       {Case{view_.timeOfDayTextField, 1, 12, 1}, Case{view_.manuallyTriggerTextField, 0, 99, 0},
        Case{view_.monitorUsageThresholdTextField, 1, 99, 1},
        Case{view_.timeMachineInactiveTextField, 1, 99, 1}, Case{view_.bootVolumeFullTextField, 1, 99, 1},
        Case{view_.monitorPresenceThresholdTextField, 1, 60, 1}}) {
    SCOPED_TRACE(c.field.accessibleName());
    const auto* formatter = dynamic_cast<const MyNumberFormatter*>(c.field.formatter().get());
    ASSERT_NE(formatter, nullptr);
    EXPECT_EQ(formatter->minimum(), c.minimum);
    EXPECT_EQ(formatter->maximum(), c.maximum);
    EXPECT_EQ(formatter->defaultValue(), c.defaultValue);
  }
  EXPECT_EQ(view_.monitorUsageThresholdTextField.formatter(), view_.timeMachineInactiveTextField.formatter());
  EXPECT_EQ(view_.monitorUsageThresholdTextField.formatter(), view_.bootVolumeFullTextField.formatter());
  EXPECT_NE(view_.timeOfDayTextField.formatter(), view_.manuallyTriggerTextField.formatter());
}

TEST_F(OptionsTabViewControllerTest, LoadingTakesTheElasticityFromTheScrollView) {
  EXPECT_EQ(view_.volumesScrollView.horizontalScrollElasticity(), ScrollElasticity::Automatic);
  openTab();
  EXPECT_EQ(view_.volumesScrollView.horizontalScrollElasticity(), ScrollElasticity::None);
  EXPECT_EQ(view_.volumesScrollView.verticalScrollElasticity(), ScrollElasticity::None);
}

TEST_F(OptionsTabViewControllerTest, DestructionTakesTheSheetsFormattersAndItsHandsOffTheControls) {
  mountTwo();
  openUnlockedTab();
  closeTab();
  EXPECT_EQ(view_.timeOfDayTextField.formatter(), nullptr);
  EXPECT_EQ(view_.manuallyTriggerTextField.formatter(), nullptr);
  EXPECT_NE(view_.monitorUsageThresholdTextField.formatter(), nullptr);
  EXPECT_NE(view_.monitorPresenceThresholdTextField.formatter(), nullptr);
  for (Button* button : {&view_.purgeButton, &view_.showAllVolumeTypesButton, &view_.monitorPresenceCheckbox,
                         &view_.monitorUsageCheckbox, &view_.timeMachineWarningTrailingButton,
                         &view_.bootVolumeWarningTrailingButton, &view_.timeMachineWarningCheckbox,
                         &view_.bootVolumeWarningCheckbox, &view_.automountCheckbox, &view_.advancedButton,
                         &view_.sheetOkButton, &view_.sheetCancelButton}) {
    button->click();
  }
  view_.monitorUsageThresholdTextField.typeText("5");
  view_.volumesTable.clickRow(1);
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(OptionsTabViewControllerTest, ARefreshReadsTheFilesInOrder) {
  mountTwo();
  openTab();
  platform_.propertyLists.reads.clear();
  tab_->refresh();
  EXPECT_EQ(platform_.propertyLists.reads,
            (std::vector{paths_.autoDiskMount, paths_.rootCapacitySettings, paths_.timeMachineSettings,
                         paths_.diskJournal, paths_.volumesSettings}));
}

TEST_F(OptionsTabViewControllerTest, AFullRefreshAlwaysLandsOnTheFirstVolume) {
  mountTwo();
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 1);
  tab_->refresh();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
}

// Each refresh of the controls over a selection lists the processes once.
TEST_F(OptionsTabViewControllerTest, EveryRefreshAddsOneRefreshOfTheControlsPerChangeOfTheLock) {
  mountTwo();
  openTab();
  for (std::size_t refreshes = 1; refreshes <= 3; ++refreshes) {
    const std::size_t before = processListings();
    pane_.setUnlocked(refreshes % 2 == 1);
    EXPECT_EQ(processListings() - before, refreshes);
    tab_->refresh();
  }
}

// Before the list is rebuilt, by registering for the lock, for the rebuild itself, by the new selection.
TEST_F(OptionsTabViewControllerTest, AFullRefreshListsTheProcessesFourTimes) {
  mountTwo();
  openUnlockedTab();
  const std::size_t before = processListings();
  tab_->refresh();
  EXPECT_EQ(processListings() - before, 4U);
}

TEST_F(OptionsTabViewControllerTest, SelectingAVolumeRefreshesItsControlsOnce) {
  mountTwo();
  openUnlockedTab();
  const std::size_t before = processListings();
  view_.volumesTable.clickRow(1);
  EXPECT_EQ(processListings() - before, 1U);
  EXPECT_EQ(view_.volumeOptionPathButton.title(), "/Volumes/Beta");
}

TEST_F(OptionsTabViewControllerTest, AnyStoreThatCannotBeReadIsAnErrorUntilItIsReadAgain) {
  for (const std::string& file :
       {paths_.rootCapacitySettings, paths_.timeMachineSettings, paths_.autoDiskMount, paths_.diskJournal}) {
    SCOPED_TRACE(file);
    platform_.remove(file);
    openTab();
    EXPECT_FALSE(tab_->errorLoadingPlists());
    platform_.writeText(file, "broken");
    openTab();
    EXPECT_TRUE(tab_->errorLoadingPlists());
    tab_->refresh();
    EXPECT_TRUE(tab_->errorLoadingPlists());
    platform_.writePlist(file, list({}));  // a list is no dictionary
    tab_->refresh();
    EXPECT_TRUE(tab_->errorLoadingPlists());
    platform_.writePlist(file, Dictionary::make());
    tab_->refresh();
    EXPECT_FALSE(tab_->errorLoadingPlists());
    platform_.remove(file);
  }
}

TEST_F(OptionsTabViewControllerTest, AStoreThatWasReadOnceStaysValidWhenItsFileBreaks) {
  platform_.writePlist(paths_.rootCapacitySettings, Dictionary::make({{"Capacity_Threshold", number(70)}}));
  openTab();
  platform_.writeText(paths_.rootCapacitySettings, "broken");
  tab_->refreshDiskFree();
  EXPECT_FALSE(tab_->errorLoadingPlists());
  EXPECT_EQ(view_.bootVolumeFullTextField.stringValue(), "70");
}

TEST_F(OptionsTabViewControllerTest, AnUnreadableVolumeListIsNoErrorOfTheStores) {
  platform_.writeText(paths_.volumesSettings, "broken");
  openTab();
  EXPECT_FALSE(tab_->errorLoadingPlists());
}

TEST_F(OptionsTabViewControllerTest, TheStoresWriteThroughThePane) {
  mountTwo();
  openUnlockedTab();
  view_.automountCheckbox.click();
  view_.bootVolumeWarningCheckbox.click();
  view_.timeMachineWarningCheckbox.click();
  view_.monitorUsageCheckbox.click();
  std::vector<std::string> files;
  for (const FakePane::Write& write : pane_.writes) files.push_back(write.path);
  EXPECT_EQ(files, (std::vector{paths_.autoDiskMount, paths_.rootCapacitySettings, paths_.timeMachineSettings,
                                paths_.volumesSettings}));
}

TEST_F(OptionsTabViewControllerTest, TheSystemsAutomountSettingIsOffWithoutItsFile) {
  openUnlockedTab();
  EXPECT_EQ(view_.automountCheckbox.state(), ButtonState::Off);
  view_.automountCheckbox.click();
  EXPECT_EQ(platform_.readPlist(paths_.autoDiskMount),
            Dictionary::make({{"AutomountDisksWithoutUserLogin", flag(true)}}));
}

}  // namespace
}  // namespace corvane::test
