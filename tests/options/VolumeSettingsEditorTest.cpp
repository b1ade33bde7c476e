#include "options/OptionsTabFixture.h"
#include "options/VolumeSettingsEditor.h"

namespace corvane::test {
namespace {

class VolumeSettingsEditorTest : public OptionsTabTest {
 protected:
  /// One mounted volume, selected.
  void openWithOneVolume(bool unlocked = true) {
    writeSavedList({entry("Data", "/Volumes/Data")});
    writeJournal({{"disk1", described("Data", "/Volumes/Data")}});
    closeTab();
    pane_.setUnlocked(unlocked);
    openTab();
  }
  [[nodiscard]] std::vector<Control*> boxControls() {
    return {&view_.monitorPresenceCheckbox,
            &view_.monitorUsageCheckbox,
            &view_.monitorUsageThresholdTextField,
            &view_.monitorPresenceThresholdTextField,
            &view_.warnAfterTextField,
            &view_.warnAtTextField,
            &view_.minutesTextField,
            &view_.percentageTextField,
            &view_.volumeTextField,
            &view_.volumeOptionPathButton,
            &view_.volumeOptionWarnAfterButton,
            &view_.volumeOptionWarnAtButton,
            &view_.volumeOptionMinutesButton,
            &view_.volumeOptionPercentageButton,
            &view_.volumeOptionMountPathButton};
  }
  [[nodiscard]] std::vector<Control*> editControls() {
    return {&view_.volumeOptionWarnAfterButton,    &view_.volumeOptionWarnAtButton,
            &view_.volumeOptionMinutesButton,      &view_.volumeOptionPercentageButton,
            &view_.volumeOptionMountPathButton,    &view_.volumeOptionPathButton,
            &view_.monitorUsageCheckbox,           &view_.monitorPresenceCheckbox,
            &view_.monitorUsageThresholdTextField, &view_.monitorPresenceThresholdTextField};
  }
  void expectBoxHidden(bool hidden) {
    for (std::size_t i = 0; i < boxControls().size(); ++i) EXPECT_EQ(boxControls()[i]->hidden(), hidden) << i;
  }
  void expectEditable(bool editable) {
    for (std::size_t i = 0; i < editControls().size(); ++i)
      EXPECT_EQ(editControls()[i]->enabled(), editable) << i;
  }
};

TEST_F(VolumeSettingsEditorTest, ShowsTheSettingsOfTheSelectedVolume) {
  writeSavedList({Dictionary::make({{"VolumeName", text("A")},
                                    {"VolumePath", text("/Volumes/A")},
                                    {"MonitorPresence", flag(true)},
                                    {"PresenceThreshold", number(12)},
                                    {"MonitorUsage", flag(false)},
                                    {"UsageThreshold", number(34)}}),
                  Dictionary::make({{"VolumeName", text("B")},
                                    {"VolumePath", text("/Volumes/B")},
                                    {"MonitorPresence", flag(false)},
                                    {"PresenceThreshold", number(56)},
                                    {"MonitorUsage", flag(true)},
                                    {"UsageThreshold", number(78)}})});
  openUnlockedTab();
  EXPECT_EQ(view_.monitorPresenceCheckbox.state(), ButtonState::On);
  EXPECT_EQ(view_.monitorUsageCheckbox.state(), ButtonState::Off);
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "12");
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "34");
  EXPECT_EQ(view_.volumeOptionPathButton.title(), "/Volumes/A");
  expectBoxHidden(false);
  EXPECT_TRUE(view_.defaultTextField.hidden());

  view_.volumesTable.clickRow(1);
  EXPECT_EQ(view_.monitorPresenceCheckbox.state(), ButtonState::Off);
  EXPECT_EQ(view_.monitorUsageCheckbox.state(), ButtonState::On);
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "56");
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "78");
  EXPECT_EQ(view_.volumeOptionPathButton.title(), "/Volumes/B");
  EXPECT_EQ(view_.volumeOptionPathButton.toolTip(), "/Volumes/B");
}

TEST_F(VolumeSettingsEditorTest, ShowsWhatItCanOfAnEntryWithMissingOrWrongValues) {
  struct Case {
    PropertyList monitorPresence, monitorUsage, presenceThreshold, usageThreshold;
    ButtonState presence, usage;
    const char *minutes, *percent;
  };
  constexpr auto on = ButtonState::On;
  constexpr auto off = ButtonState::Off;
  const Case cases[] = {
      {{}, {}, {}, {}, off, off, "", ""},
      {number(1), number(1), number(0), number(1), on, on, "0", "1"},
      {text("YES"), text("1"), text("7"), text(" 80 "), on, on, "7", "80"},
      {text("NO"), text("YES"), text("x"), text(""), off, off, "0", "0"},  // usage is read as an integer
      {flag(true), number(-1), number(150), number(-3), on, ButtonState::Mixed, "150", "-3"},
      {list({}), list({}), list({}), Dictionary::make(), off, off, "", ""},
      {number(256), number(256), number(99999999999), number(100), on, on, "1215752191", "100"},
      {flag(false), flag(true), PropertyList::real(7.9), PropertyList::real(-0.5), off, on, "7", "0"},
  };
  for (const Case& c : cases) {
    Dictionary volume = Dictionary::make({{"VolumeName", text("A")}, {"VolumePath", text("/A")}});
    volume.set("MonitorPresence", c.monitorPresence);
    volume.set("MonitorUsage", c.monitorUsage);
    volume.set("PresenceThreshold", c.presenceThreshold);
    volume.set("UsageThreshold", c.usageThreshold);
    writeSavedList({volume});
    openUnlockedTab();
    SCOPED_TRACE(std::string(c.minutes) + "/" + c.percent);
    EXPECT_EQ(view_.monitorPresenceCheckbox.state(), c.presence);
    EXPECT_EQ(view_.monitorUsageCheckbox.state(), c.usage);
    EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), c.minutes);
    EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), c.percent);
    closeTab();
  }
}

TEST_F(VolumeSettingsEditorTest, AnEntryWithoutAPathLeavesThePathAsItWas) {
  writeSavedList({entry("A", "/Volumes/A"), Dictionary::make({{"VolumeName", text("B")}})});
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  EXPECT_EQ(view_.volumeOptionPathButton.title(), "/Volumes/A");
}

TEST_F(VolumeSettingsEditorTest, WithoutASelectionTheBoxIsHiddenAndTheHintIsShown) {
  writeSavedList({entry("Away", "/Volumes/Away")});
  openUnlockedTab();
  ASSERT_TRUE(view_.purgeButton.enabled());
  view_.volumesTable.deselectAll();
  expectBoxHidden(true);
  EXPECT_FALSE(view_.defaultTextField.hidden());
  EXPECT_EQ(view_.defaultTextField.stringValue(),
            "Select a volume to configure alerts based on presence and/or free space.");
  EXPECT_FALSE(view_.purgeButton.enabled());
  EXPECT_TRUE(view_.showAllVolumeTypesButton.enabled());
}

TEST_F(VolumeSettingsEditorTest, WithTheLockClosedTheControlsAreVisibleButDisabled) {
  openWithOneVolume(false);
  expectBoxHidden(false);
  expectEditable(false);
  EXPECT_FALSE(view_.purgeButton.enabled());
  EXPECT_FALSE(view_.showAllVolumeTypesButton.enabled());
  pane_.setUnlocked(true);
  expectEditable(true);
  EXPECT_TRUE(view_.showAllVolumeTypesButton.enabled());
  pane_.setUnlocked(false);
  expectEditable(false);
  EXPECT_FALSE(view_.showAllVolumeTypesButton.enabled());
}

TEST_F(VolumeSettingsEditorTest, ADuplicateShowsItsSettingsButCannotBeEdited) {
  writeSavedList({entry("Data", "/1"), entry("Data", "/2"), entry("Single", "/3")});
  openUnlockedTab();
  expectBoxHidden(false);
  expectEditable(false);
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "90");
  view_.monitorUsageCheckbox.click();
  EXPECT_FALSE(view_.monitorUsageThresholdTextField.typeText("50"));
  EXPECT_TRUE(pane_.writes.empty());
  view_.volumesTable.clickRow(2);
  expectEditable(true);
}

TEST_F(VolumeSettingsEditorTest, OnlyMissingVolumesCanBePurgedAndOnlyWhileUnlocked) {
  writeSavedList({entry("Away", "/Volumes/Away"), entry("Here", "/Volumes/Here")});
  writeJournal({{"disk1", described("Here", "/Volumes/Here")}});
  openUnlockedTab();
  EXPECT_TRUE(view_.purgeButton.enabled());
  expectEditable(true);
  view_.volumesTable.clickRow(1);
  EXPECT_FALSE(view_.purgeButton.enabled());
  view_.volumesTable.clickRow(0);
  pane_.setUnlocked(false);
  EXPECT_FALSE(view_.purgeButton.enabled());
}

TEST_F(VolumeSettingsEditorTest, ADuplicateThatIsMissingCanBePurged) {
  writeSavedList({entry("Data", "/1"), entry("Data", "/2")});
  openUnlockedTab();
  EXPECT_TRUE(view_.purgeButton.enabled());
}

TEST_F(VolumeSettingsEditorTest, ACheckBoxWritesTheWholeListWithTheBoolean) {
  Dictionary saved = entry("Data", "/Volumes/Data");
  saved.set("Unknown", text("kept"));
  writeSavedList({saved, text("stranger")});
  writeJournal(
      {{"disk1", described("Data", "/Volumes/Data")}, {"disk2", described("Never Saved", "/Volumes/N")}});
  openUnlockedTab();
  struct Case {
    Button& checkBox;
    const char* key;
  };
  for (const Case& c : {Case{view_.monitorPresenceCheckbox, "MonitorPresence"},
                        Case{view_.monitorUsageCheckbox, "MonitorUsage"}}) {
    for (const bool on : {true, false}) {
      SCOPED_TRACE(c.key);
      pane_.writes.clear();
      c.checkBox.click();
      saved.set(c.key, flag(on));
      ASSERT_EQ(pane_.writes.size(), 1U);
      EXPECT_EQ(lastWrittenList(), list({saved, text("stranger"), entry("Never Saved", "/Volumes/N")}));
    }
  }
}

TEST_F(VolumeSettingsEditorTest, AMixedCheckBoxCountsAsOn) {
  openWithOneVolume();
  view_.monitorUsageCheckbox.setState(ButtonState::Mixed);
  tab_->volumeSettingsEditor().toggleMonitorUsageCheckbox(view_.monitorUsageCheckbox);
  EXPECT_EQ(entryAt(0).value("MonitorUsage"), flag(true));
}

TEST_F(VolumeSettingsEditorTest, MonitoringAMissingVolumeChangesItsLabelAtOnce) {
  writeSavedList({entry("Away", "/Volumes/Away")});
  openUnlockedTab();
  int reloads = 0;
  view_.volumesTable.onReload = [&] { ++reloads; };
  EXPECT_EQ(label(0).runs.at(0).attributes.color, TextColor::DarkGray);
  view_.monitorPresenceCheckbox.click();
  EXPECT_EQ(label(0).runs.at(0).attributes.color, TextColor::Red);
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(view_.volumesTable.selectedRow(), 0);
}

TEST_F(VolumeSettingsEditorTest, CheckBoxesWithoutASelectionDoNothing) {
  openWithOneVolume();
  view_.volumesTable.deselectAll();
  tab_->volumeSettingsEditor().toggleMonitorPresenceCheckbox(view_.monitorPresenceCheckbox);
  tab_->volumeSettingsEditor().toggleMonitorUsageCheckbox(view_.monitorUsageCheckbox);
  EXPECT_TRUE(pane_.writes.empty());
}

// What may be typed is the formatters' matter, so the fields get the texts directly.
TEST_F(VolumeSettingsEditorTest, TheThresholdsThatAreStored) {
  struct Case {
    const char* typed;
    std::optional<int> minutes;  // what is stored, if anything
    std::optional<int> percent;
  };
  const Case cases[] = {
      {"0", 0, std::nullopt},
      {"1", 1, 1},
      {"60", 60, 60},
      {"61", 61, 61},
      {"99", 99, 99},
      {"100", std::nullopt, std::nullopt},
      {"-1", std::nullopt, std::nullopt},
      {"-2147483648", std::nullopt, std::nullopt},
      {"99999999999", std::nullopt, std::nullopt},
      {"", 0, std::nullopt},
      {"abc", 0, std::nullopt},
      {" 7 minutes", 7, 7},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    openWithOneVolume();
    pane_.writes.clear();
    TextField& minutes = view_.monitorPresenceThresholdTextField;
    TextField& percent = view_.monitorUsageThresholdTextField;
    minutes.setFormatter(nullptr);
    percent.setFormatter(nullptr);

    EXPECT_TRUE(minutes.typeText(c.typed));
    Dictionary expected = entry("Data", "/Volumes/Data");
    if (c.minutes) expected.set("PresenceThreshold", number(*c.minutes));
    ASSERT_EQ(pane_.writes.size(), 1U);
    EXPECT_EQ(lastWrittenList(), list({expected}));

    EXPECT_TRUE(percent.typeText(c.typed));
    if (c.percent) expected.set("UsageThreshold", number(*c.percent));
    ASSERT_EQ(pane_.writes.size(), 2U);
    EXPECT_EQ(lastWrittenList(), list({expected}));
    minutes.abortEditing();
    percent.abortEditing();
    closeTab();
  }
}

TEST_F(VolumeSettingsEditorTest, AClearedThresholdCountsAsZeroAlthoughItsFieldThenShowsTheDefault) {
  openWithOneVolume();
  for (TextField* field : {&view_.monitorPresenceThresholdTextField, &view_.monitorUsageThresholdTextField}) {
    pane_.writes.clear();
    ASSERT_TRUE(field->typeText(""));
    field->endEditing();
    EXPECT_EQ(pane_.writes.size(), 1U);
    EXPECT_EQ(field->stringValue(), "1");
  }
  Dictionary expected = entry("Data", "/Volumes/Data");
  expected.set("PresenceThreshold", number(0));
  EXPECT_EQ(lastWrittenList(), list({expected})) << "zero is no usage threshold";
}

TEST_F(VolumeSettingsEditorTest, EveryKeystrokeThatTheFormatterAdmitsIsOneWrite) {
  openWithOneVolume();
  TextField& minutes = view_.monitorPresenceThresholdTextField;
  EXPECT_TRUE(minutes.typeText("4"));
  EXPECT_TRUE(minutes.typeText("45"));
  EXPECT_FALSE(minutes.typeText("456"));
  EXPECT_FALSE(minutes.typeText("61"));
  EXPECT_FALSE(minutes.typeText("0"));
  ASSERT_EQ(pane_.writes.size(), 2U);
  EXPECT_EQ(pane_.writes[0].values.asArray().at(0).asDictionary().value("PresenceThreshold"), number(4));
  EXPECT_EQ(pane_.writes[1].values.asArray().at(0).asDictionary().value("PresenceThreshold"), number(45));
}

TEST_F(VolumeSettingsEditorTest, ATextChangeInAnyOtherFieldWritesTheUnchangedList) {
  openWithOneVolume();
  tab_->volumeSettingsEditor().controlTextDidChange(view_.timeOfDayTextField);
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(lastWrittenList(), list({entry("Data", "/Volumes/Data")}));
}

TEST_F(VolumeSettingsEditorTest, ARefusedThresholdDoesNotReloadTheTable) {
  openWithOneVolume();
  int reloads = 0;
  view_.volumesTable.onReload = [&] { ++reloads; };
  view_.monitorUsageThresholdTextField.setFormatter(nullptr);
  view_.monitorUsageThresholdTextField.typeText("0");
  EXPECT_EQ(reloads, 0);
  view_.monitorUsageThresholdTextField.typeText("50");
  EXPECT_EQ(reloads, 1);
}

TEST_F(VolumeSettingsEditorTest, AFailedWriteKeepsTheEditUntilTheNextRebuild) {
  openWithOneVolume();
  pane_.writesReachTheFile = false;
  view_.monitorUsageCheckbox.click();
  EXPECT_EQ(entryAt(0).value("MonitorUsage"), flag(true));
  tab_->refreshVolumes();
  EXPECT_EQ(entryAt(0).value("MonitorUsage"), flag(false));
}

TEST_F(VolumeSettingsEditorTest, ARebuildWhileTheUserTypesKeepsTheTypedText) {
  openWithOneVolume();
  view_.monitorPresenceThresholdTextField.typeText("1");
  tab_->refreshVolumes();  // the write of the first keystroke comes back as a change of the file
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "1");
  EXPECT_TRUE(view_.monitorPresenceThresholdTextField.typeText("15"));
  view_.monitorPresenceThresholdTextField.endEditing();
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "15");
  EXPECT_EQ(entryAt(0).value("PresenceThreshold"), number(15));

  // What is not stored is left alone as well.
  view_.monitorUsageThresholdTextField.typeText("");
  tab_->refreshVolumes();
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "");
  EXPECT_TRUE(view_.monitorUsageThresholdTextField.editing());
}

TEST_F(VolumeSettingsEditorTest, DroppingWhatIsBeingTypedShowsWhatIsStored) {
  openWithOneVolume();
  TextField& minutes = view_.monitorPresenceThresholdTextField;
  ASSERT_TRUE(minutes.typeText("1"));
  ASSERT_TRUE(minutes.typeText("15"));
  minutes.abortEditing();
  EXPECT_EQ(minutes.stringValue(), "15");
  EXPECT_EQ(entryAt(0).value("PresenceThreshold"), number(15));
}

TEST_F(VolumeSettingsEditorTest, AThresholdThatTheFileChangesIsShownInPlaceOfWhatIsBeingTyped) {
  openWithOneVolume();
  TextField& minutes = view_.monitorPresenceThresholdTextField;
  ASSERT_TRUE(minutes.typeText("1"));
  Dictionary changed = entry("Data", "/Volumes/Data");
  changed.set("PresenceThreshold", number(33));
  writeSavedList({changed});
  tab_->refreshVolumes();
  EXPECT_EQ(minutes.stringValue(), "33");
  EXPECT_FALSE(minutes.editing());
  minutes.endEditing();
  EXPECT_EQ(minutes.stringValue(), "33");
}

TEST_F(VolumeSettingsEditorTest, WhatIsBeingTypedForOneOfTwoEntriesOfAVolumeIsNotStoredForTheOther) {
  Dictionary second = entry("Data", "/Volumes/Data");
  second.set("UsageThreshold", number(34));
  writeSavedList({entry("Data", "/Volumes/Data"), second});
  openUnlockedTab();
  view_.volumesTable.clickRow(1);
  TextField& minutes = view_.monitorPresenceThresholdTextField;
  ASSERT_TRUE(minutes.typeText("1"));
  tab_->refreshVolumes();
  ASSERT_EQ(view_.volumesTable.selectedRow(), 0) << "the first one with the name and the path";
  EXPECT_EQ(minutes.stringValue(), "5");
  EXPECT_FALSE(minutes.editing());
  EXPECT_EQ(entryAt(0).value("PresenceThreshold"), number(5));
  EXPECT_EQ(entryAt(1).value("PresenceThreshold"), number(1));
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "90");
}

TEST_F(VolumeSettingsEditorTest, ASecondEntryOfTheVolumeThatIsBeingTypedForEndsTheTyping) {
  openWithOneVolume();
  TextField& percent = view_.monitorUsageThresholdTextField;
  ASSERT_TRUE(percent.typeText(""));
  writeSavedList({entry("Data", "/Volumes/Data"), entry("Data", "/Volumes/Data")});
  tab_->refreshVolumes();
  EXPECT_FALSE(percent.editing()) << "which of the two it was typed for is not known";
}

TEST_F(VolumeSettingsEditorTest, WhatIsBeingTypedForOneVolumeIsNotShownForAnother) {
  Dictionary other = entry("Other", "/Volumes/Other");
  other.set("PresenceThreshold", number(12));
  other.set("UsageThreshold", number(34));
  writeSavedList({entry("Data", "/Volumes/Data"), other});
  openUnlockedTab();
  ASSERT_TRUE(view_.monitorPresenceThresholdTextField.typeText("1"));
  ASSERT_TRUE(view_.monitorUsageThresholdTextField.typeText("3"));
  view_.volumesTable.clickRow(1);
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "12");
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "34");
  view_.volumesTable.clickRow(0);
  EXPECT_EQ(view_.monitorPresenceThresholdTextField.stringValue(), "1") << "it was stored as it was typed";
  EXPECT_EQ(view_.monitorUsageThresholdTextField.stringValue(), "3");
}

TEST_F(VolumeSettingsEditorTest, TheBoxCoversTheTableBesideTheNamesBelowTheHeader) {
  struct Case {
    Rect around;
    double column, header;
    Rect box;
  };
  const Case cases[] = {
      {{17, 150, 600, 180}, 230, 17, {251, 151, 365, 162}},
      {{0, 0, 300, 100}, 99.9, 20.7, {103, 1, 196, 79}},
      {{-5.5, 2.5, 50, 10}, 100, 17, {98.5, 3.5, -55, -8}},
  };
  for (const Case& c : cases) {
    view_.volumesScrollView.setFrame(c.around);
    view_.volumesTable.columns().at(0).width = c.column;
    view_.volumesTable.setHeaderHeight(c.header);
    openTab();
    EXPECT_EQ(view_.volumeOptionsBox.frame(), c.box);
    closeTab();
  }
}

TEST_F(VolumeSettingsEditorTest, TheBoxFollowsTheNameColumnWhereverItStands) {
  view_.volumesTable.columns().insert(view_.volumesTable.columns().begin(),
                                      TableColumn{"UsageThreshold", "", 50});
  openTab();
  EXPECT_EQ(view_.volumeOptionsBox.frame(), (Rect{251, 151, 365, 162}));
}

}  // namespace
}  // namespace corvane::test
