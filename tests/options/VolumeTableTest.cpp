#include "options/OptionsTabFixture.h"
#include "options/VolumeTable.h"

namespace corvane::test {
namespace {

constexpr const char* kReasonCode412 =
    "An error has been detected. Please contact support, mentioning \"ReasonCode 412\"";
constexpr const char* kSelect = "Select a volume to configure alerts based on presence and/or free space.";
constexpr const char* kMount =
    "Mount a volume to configure monitoring thresholds for presence and/or free space.";

class VolumeTableTest : public OptionsTabTest {
 protected:
  void mountThree() {
    writeJournal({{"disk1", described("Alpha", "/Volumes/Alpha")},
                  {"disk2", described("Beta", "/Volumes/Beta")},
                  {"disk3", described("Gamma", "/Volumes/Gamma")}});
  }
};

TEST_F(VolumeTableTest, TheHintAsksToSelectOrToMountAVolume) {
  openUnlockedTab();
  EXPECT_EQ(view_.defaultTextField.stringValue(), kMount);
  EXPECT_FALSE(view_.defaultTextField.hidden());
  EXPECT_EQ(view_.volumesTable.selectedRow(), -1);
  mountThree();
  tab_->refreshVolumes();
  EXPECT_EQ(view_.defaultTextField.stringValue(), kSelect);
}

TEST_F(VolumeTableTest, WithoutTheDaemonTheOldListStaysAndTheTableIsDisabled) {
  mountThree();
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  int reloads = 0;
  view_.volumesTable.onReload = [&] { ++reloads; };
  setDaemonRuns(false);
  writeJournal({});
  platform_.propertyLists.reads.clear();
  tab_->refreshVolumes();
  EXPECT_FALSE(view_.volumesTable.enabled());
  EXPECT_EQ(view_.defaultTextField.stringValue(), kReasonCode412);
  EXPECT_FALSE(view_.defaultTextField.hidden());
  EXPECT_EQ(view_.volumesTable.selectedRow(), -1);
  EXPECT_EQ(reloads, 0);
  EXPECT_EQ(labels(), (std::vector<std::string>{"Alpha", "Beta", "Gamma"}));
  EXPECT_TRUE(platform_.propertyLists.reads.empty());
}

TEST_F(VolumeTableTest, TheErrorStaysVisibleOverASelectionWhileTheDaemonIsDown) {
  mountThree();
  openUnlockedTab();
  setDaemonRuns(false);
  tab_->refresh();  // lands on the first row of the old list
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
  EXPECT_EQ(view_.defaultTextField.stringValue(), kReasonCode412);
  EXPECT_FALSE(view_.defaultTextField.hidden());
  setDaemonRuns(true);
  tab_->refreshVolumes();
  EXPECT_TRUE(view_.volumesTable.enabled());
  EXPECT_TRUE(view_.defaultTextField.hidden());
}

TEST_F(VolumeTableTest, TheTableIsEnabledExactlyWhileUnlockedAsOfTheLastRebuild) {
  mountThree();
  openTab();
  EXPECT_FALSE(view_.volumesTable.enabled());
  pane_.setUnlocked(true);
  EXPECT_FALSE(view_.volumesTable.enabled());
  tab_->refreshVolumes();
  EXPECT_TRUE(view_.volumesTable.enabled());
  pane_.setUnlocked(false);
  tab_->refreshVolumes();
  EXPECT_FALSE(view_.volumesTable.enabled());
}

TEST_F(VolumeTableTest, TheSelectedVolumeStaysSelectedWhenItsRowNumberChanges) {
  mountThree();
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  writeJournal({{"disk0", described("Aardvark", "/Volumes/Aardvark")},
                {"disk1", described("Alpha", "/Volumes/Alpha")},
                {"disk2", described("Beta", "/Volumes/Beta")}});
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 2);
  EXPECT_EQ(volumeName(entryAt(2)), "Beta");
}

TEST_F(VolumeTableTest, NameAndPathTogetherAreTheSelection) {
  writeSavedList({entry("Data", "/1"), entry("Data", "/2"), entry("Data", "/3")});
  openUnlockedTab();
  view_.volumesTable.clickRow(2);
  writeSavedList({entry("Data", "/2"), entry("Data", "/3"), entry("Data", "/1")});
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 1);
  writeSavedList({entry("Data", "/2"), entry("Data", "/1")});
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);  // the pair is gone
  writeSavedList({entry("Data", "/1"), entry("Other", "/1"), entry("Third", "/1")});
  tab_->refreshVolumes();
  view_.volumesTable.clickRow(1);
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 1);
}

TEST_F(VolumeTableTest, AVanishedSelectionFallsBackToTheFirstVolumeOrToNone) {
  mountThree();
  openUnlockedTab();
  view_.volumesTable.clickRow(2);
  writeJournal(
      {{"disk1", described("Alpha", "/Volumes/Alpha")}, {"disk2", described("Beta", "/Volumes/Beta")}});
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
  writeJournal({});
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), -1);
  EXPECT_TRUE(view_.monitorPresenceCheckbox.hidden());
}

TEST_F(VolumeTableTest, AnEntryWithoutANameIsNotSelectedAgain) {
  writeSavedList(
      {Dictionary::make({{"VolumePath", text("/n1")}}), Dictionary::make({{"VolumePath", text("/n2")}})});
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  tab_->refreshVolumes();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
}

TEST_F(VolumeTableTest, RebuildingWritesNothing) {
  writeSavedList({entry("/Volumes/Alpha", "")});
  mountThree();
  openUnlockedTab();
  tab_->refreshVolumes();
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(VolumeTableTest, AnInvalidJournalStoreIsReplacedAtTheNextRebuild) {
  platform_.writeText(paths_.diskJournal, "broken");
  openUnlockedTab();
  EXPECT_TRUE(tab_->errorLoadingPlists());
  EXPECT_EQ(view_.volumesTable.numberOfRows(), 0);
  mountThree();
  tab_->refreshVolumes();
  EXPECT_FALSE(tab_->errorLoadingPlists());
  EXPECT_EQ(view_.volumesTable.numberOfRows(), 3);
}

TEST_F(VolumeTableTest, PurgingRemovesTheSelectedEntryWritesTheListAndRebuildsIt) {
  writeSavedList({entry("Away", "/Volumes/Away"), text("stranger"), entry("Gone", "/Volumes/Gone")});
  writeJournal({{"disk1", described("Here", "/Volumes/Here")}});
  openUnlockedTab();
  ASSERT_EQ(labels(), (std::vector<std::string>{"Away (Missing)", "Gone (Missing)", "Here"}));
  view_.volumesTable.clickRow(0);
  view_.purgeButton.click();
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(lastWrittenList(),
            list({entry("Gone", "/Volumes/Gone"), text("stranger"), entry("Here", "/Volumes/Here")}));
  EXPECT_EQ(labels(), (std::vector<std::string>{"Gone (Missing)", "Here"}));
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
}

TEST_F(VolumeTableTest, PurgingSelectsTheVolumeThatFollows) {
  writeSavedList({entry("A", "/a"), entry("B", "/b"), entry("C", "/c")});
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  view_.purgeButton.click();
  EXPECT_EQ(view_.volumesTable.selectedRow(), 1);
  EXPECT_EQ(volumeName(entryAt(1)), "C");
}

TEST_F(VolumeTableTest, PurgingTheLastRowSelectsTheFirst) {
  writeSavedList({entry("A", "/a"), entry("B", "/b")});
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  view_.purgeButton.click();
  EXPECT_EQ(labels(), (std::vector<std::string>{"A (Missing)"}));
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
}

TEST_F(VolumeTableTest, PurgingWithoutASelectionDoesNothing) {
  writeSavedList({entry("A", "/a")});
  openUnlockedTab();
  view_.volumesTable.deselectAll();
  const std::size_t listings = processListings();
  tab_->volumeTable().purgeVolume();
  EXPECT_TRUE(pane_.writes.empty());
  EXPECT_EQ(processListings(), listings);
  EXPECT_EQ(view_.volumesTable.numberOfRows(), 1);
}

TEST_F(VolumeTableTest, APurgedVolumeThatIsMountedComesBackWithTheSettingsOfANewOne) {
  Dictionary changed = entry("Here", "/Volumes/Here");
  changed.set("UsageThreshold", number(10));
  writeSavedList({changed});
  writeJournal({{"disk1", described("Here", "/Volumes/Here")}});
  openUnlockedTab();
  tab_->volumeTable().purgeVolume();  // the button is disabled for it
  EXPECT_EQ(lastWrittenList(), list({}));
  EXPECT_EQ(entryAt(0), entry("Here", "/Volumes/Here"));
}

TEST_F(VolumeTableTest, SystemVolumesAreShownAndHiddenByTheirButton) {
  writeJournal({{"disk1", described("Data", "/Volumes/Data")},
                {"disk2", described("Macintosh HD", "/")},
                {"disk3", described("Update", "/System/Volumes/Update")},
                {"disk4", described("VM", "/private/var/vm")},
                {"disk5", described("Windows", "/Volumes/Windows", "ntfs")}});
  openUnlockedTab();
  EXPECT_EQ(view_.showAllVolumeTypesButton.title(), "Show System Volumes");
  EXPECT_EQ(labels(), (std::vector<std::string>{"Data"}));
  view_.showAllVolumeTypesButton.click();
  EXPECT_EQ(view_.showAllVolumeTypesButton.title(), "Hide System Volumes");
  EXPECT_EQ(labels(), (std::vector<std::string>{"Data", "Update", "VM", "Windows"}));
  view_.showAllVolumeTypesButton.click();
  EXPECT_EQ(view_.showAllVolumeTypesButton.title(), "Show System Volumes");
  EXPECT_EQ(labels(), (std::vector<std::string>{"Data"}));
}

TEST_F(VolumeTableTest, TheTooltipOfAVolumesNameIsItsPath) {
  mountThree();
  openUnlockedTab();
  const TableColumn name = view_.volumesTable.columns().at(0);
  const TableColumn other{"UsageThreshold", "", 50};
  EXPECT_EQ(name.identifier, "VolumeName");
  EXPECT_EQ(view_.volumesTable.toolTip(name, 1), "/Volumes/Beta");
  EXPECT_EQ(view_.volumesTable.toolTip(other, 1), "");
  EXPECT_EQ(view_.volumesTable.toolTip(name, 3), "");
}

TEST_F(VolumeTableTest, OtherColumnsShowTheEntrysValueUnderTheirIdentifier) {
  mountThree();
  openUnlockedTab();
  const auto value = [&](const char* key, int row) {
    return view_.volumesTable.objectValue(TableColumn{key, "", 50}, row);
  };
  EXPECT_EQ(std::get<PropertyList>(value("UsageThreshold", 0)), number(90));
  EXPECT_EQ(std::get<PropertyList>(value("VolumePath", 2)), text("/Volumes/Gamma"));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(value("Unknown", 0)));
  EXPECT_TRUE(std::holds_alternative<std::monostate>(value("UsageThreshold", 3)));
}

}  // namespace
}  // namespace corvane::test
