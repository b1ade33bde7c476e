#include <limits>

#include "options/OptionsTabFixture.h"
#include "options/TimeMachineSheet.h"

namespace corvane::test {
namespace {

class TimeMachineSheetTest : public OptionsTabTest {
 protected:
  void writeTimeMachine(std::initializer_list<Dictionary::Entry> entries) {
    platform_.writePlist(paths_.timeMachineSettings, Dictionary::make(entries));
  }
  [[nodiscard]] Dictionary lastWrite() {
    if (pane_.writes.empty()) {
      ADD_FAILURE() << "nothing was written";
      return {};
    }
    EXPECT_EQ(pane_.writes.back().path, paths_.timeMachineSettings);
    return pane_.writes.back().values.asDictionary();
  }
  /// A field takes what is typed, as when the user replaces its text.
  static void enter(TextField& field, const std::string& typed) {
    EXPECT_TRUE(field.typeText(typed));
    field.endEditing();
  }
};

TEST_F(TimeMachineSheetTest, ShowsTheStoredHourAsAClockOfTwelveHours) {
  struct Case {
    PropertyList stored;
    const char* hour;
    int half;
  };
  std::vector<Case> cases = {
      {text("0"), "12", 0},
      {text("1"), "1", 0},
      {text("2"), "2", 0},
      {text("3"), "3", 0},
      {text("4"), "4", 0},
      {text("5"), "5", 0},
      {text("6"), "6", 0},
      {text("7"), "7", 0},
      {text("8"), "8", 0},
      {text("9"), "9", 0},
      {text("10"), "10", 0},
      {text("11"), "11", 0},
      {text("12"), "12", 1},
      {text("13"), "1", 1},
      {text("14"), "2", 1},
      {text("15"), "3", 1},
      {text("16"), "4", 1},
      {text("17"), "5", 1},
      {text("18"), "6", 1},
      {text("19"), "7", 1},
      {text("20"), "8", 1},
      {text("21"), "9", 1},
      {text("22"), "10", 1},
      {text("23"), "11", 1},
      {text("24"), "12", 1},
      {text("25"), "13", 1},
      {text("-1"), "-13", 1},
      {number(13), "1", 1},
      {number(0), "12", 0},
      {number(-12), "-24", 1},
      {number(std::numeric_limits<std::int32_t>::min()), "2147483636", 1},
      {number(std::numeric_limits<std::int32_t>::max()), "2147483635", 1},
      {text("noon"), "12", 0},
      {text(""), "12", 0},
      {list({}), "12", 0},
      {PropertyList(), "12", 0},
      {flag(true), "1", 0},
      {PropertyList::real(15.9), "3", 1},
  };
  openUnlockedTab();
  for (const Case& c : cases) {
    SCOPED_TRACE(c.hour);
    Dictionary file = Dictionary::make({{"Days_Until_Manual_Run", number(3)}});
    file.set("Manual_Run_Hour", c.stored);
    platform_.writePlist(paths_.timeMachineSettings, file);
    if (!c.stored) openUnlockedTab();  // a store keeps what its file has lost
    tab_->refreshTimeMachine();
    EXPECT_EQ(view_.timeOfDayTextField.stringValue(), c.hour);
    EXPECT_EQ(view_.amPmButton.indexOfSelectedItem(), c.half);
  }
}

TEST_F(TimeMachineSheetTest, StoresTheEnteredHourAsAText) {
  openUnlockedTab();
  for (int hour = 1; hour <= 12; ++hour) {
    for (int half = 0; half <= 1; ++half) {
      view_.advancedButton.click();
      enter(view_.timeOfDayTextField, std::to_string(hour));
      view_.amPmButton.choose(half);
      view_.sheetOkButton.click();
      const int expected = hour % 12 + 12 * half;
      EXPECT_EQ(lastWrite().value("Manual_Run_Hour"), text(std::to_string(expected))) << hour << " " << half;
    }
  }
}

TEST_F(TimeMachineSheetTest, StoredHoursComeBackTheSameUnlessTheyAreNoHours) {
  std::vector<std::pair<int, std::string>> cases = {{24, "12"}, {-1, "-1"}, {30, "30"}};
  for (int hour = 0; hour < 24; ++hour) cases.emplace_back(hour, std::to_string(hour));
  openUnlockedTab();
  for (const auto& [stored, saved] : cases) {
    writeTimeMachine({{"Manual_Run_Hour", text(std::to_string(stored))}});
    view_.advancedButton.click();
    view_.sheetOkButton.click();
    EXPECT_EQ(lastWrite().value("Manual_Run_Hour"), text(saved));
  }
}

TEST_F(TimeMachineSheetTest, AnHourWithoutAChosenHalfIsStoredAsItStandsButTwelveIsNoon) {
  openUnlockedTab();
  for (const auto& [entered, stored] : {std::pair{"7", "7"}, std::pair{"12", "12"}}) {
    view_.advancedButton.click();
    enter(view_.timeOfDayTextField, entered);
    view_.amPmButton.selectItemAtIndex(-1);
    view_.sheetOkButton.click();
    EXPECT_EQ(lastWrite().value("Manual_Run_Hour"), text(stored));
  }
}

TEST_F(TimeMachineSheetTest, ShowsDaysAndTheWarningOnRemoval) {
  struct Case {
    PropertyList days, removal;
    const char* shownDays;
    ButtonState shownRemoval;
  };
  const Case cases[] = {
      {number(3), flag(true), "3", ButtonState::On},      {number(0), flag(false), "0", ButtonState::Off},
      {text("14"), text("1"), "14", ButtonState::On},     {number(150), number(5), "150", ButtonState::On},
      {number(-2), number(-1), "-2", ButtonState::Mixed}, {list({}), text("yes"), "0", ButtonState::Off},
  };
  openUnlockedTab();
  for (const Case& c : cases) {
    writeTimeMachine({{"Days_Until_Manual_Run", c.days}, {"Enable_On_Removal", c.removal}});
    tab_->refreshTimeMachine();
    EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), c.shownDays);
    EXPECT_EQ(view_.timeMachineRemovalWarning.state(), c.shownRemoval);
  }
}

TEST_F(TimeMachineSheetTest, AMissingFileShowsMidnightNoDaysAndNoWarning) {
  openUnlockedTab();
  view_.advancedButton.click();
  EXPECT_EQ(view_.timeOfDayTextField.stringValue(), "12");
  EXPECT_EQ(view_.amPmButton.indexOfSelectedItem(), 0);
  EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), "0");
  EXPECT_EQ(view_.timeMachineRemovalWarning.state(), ButtonState::Off);
}

TEST_F(TimeMachineSheetTest, OpensOnTheTabsWindowWithTheValuesOfTheFile) {
  openUnlockedTab();
  writeTimeMachine({{"Manual_Run_Hour", text("13")}, {"Days_Until_Manual_Run", number(9)}});
  view_.advancedButton.click();
  EXPECT_EQ(window_.attachedSheet(), &view_.timeMachineAdvancedWindow);
  EXPECT_EQ(view_.timeOfDayTextField.stringValue(), "1");
  EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), "9");
}

TEST_F(TimeMachineSheetTest, AcceptingWritesTextIntegerAndBooleanKeepsTheRestAndCloses) {
  writeTimeMachine({{"Plugin_Enabled", flag(true)}, {"Unknown", list({text("kept")})}});
  openUnlockedTab();
  view_.advancedButton.click();
  enter(view_.timeOfDayTextField, "7");
  view_.amPmButton.choose(1);
  enter(view_.manuallyTriggerTextField, "21");
  view_.timeMachineRemovalWarning.click();
  view_.sheetOkButton.click();
  EXPECT_EQ(lastWrite(), Dictionary::make({{"Plugin_Enabled", flag(true)},
                                           {"Unknown", list({text("kept")})},
                                           {"Manual_Run_Hour", text("19")},
                                           {"Days_Until_Manual_Run", number(21)},
                                           {"Enable_On_Removal", flag(true)}}));
  EXPECT_EQ(pane_.writes.size(), 1U);  // none of the keys was in the file before
  EXPECT_EQ(window_.attachedSheet(), nullptr);
  EXPECT_FALSE(view_.timeMachineAdvancedWindow.isSheet());
}

TEST_F(TimeMachineSheetTest, AcceptingWritesOnceForEachKeyOfTheFileAndOnceMore) {
  writeTimeMachine({{"Manual_Run_Hour", text("3")},
                    {"Days_Until_Manual_Run", number(1)},
                    {"Enable_On_Removal", flag(false)}});
  openUnlockedTab();
  view_.advancedButton.click();
  view_.sheetOkButton.click();
  EXPECT_EQ(pane_.writes.size(), 4U);
}

TEST_F(TimeMachineSheetTest, AMixedWarningOnRemovalIsStoredAsOn) {
  writeTimeMachine({{"Enable_On_Removal", number(-1)}});
  openUnlockedTab();
  view_.advancedButton.click();
  view_.sheetOkButton.click();
  EXPECT_EQ(lastWrite().value("Enable_On_Removal"), flag(true));
}

TEST_F(TimeMachineSheetTest, CancellingWritesNothingAndTheNextOpeningShowsTheFile) {
  writeTimeMachine({{"Manual_Run_Hour", text("3")},
                    {"Days_Until_Manual_Run", number(1)},
                    {"Enable_On_Removal", flag(false)}});
  openUnlockedTab();
  view_.advancedButton.click();
  enter(view_.timeOfDayTextField, "11");
  view_.amPmButton.choose(1);
  EXPECT_TRUE(view_.manuallyTriggerTextField.typeText("55"));  // and not left
  view_.timeMachineRemovalWarning.click();
  view_.sheetCancelButton.click();
  EXPECT_EQ(window_.attachedSheet(), nullptr);
  EXPECT_TRUE(pane_.writes.empty());

  view_.advancedButton.click();
  EXPECT_EQ(view_.timeOfDayTextField.stringValue(), "3");
  EXPECT_EQ(view_.amPmButton.indexOfSelectedItem(), 0);
  EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), "1");
  EXPECT_EQ(view_.timeMachineRemovalWarning.state(), ButtonState::Off);
}

TEST_F(TimeMachineSheetTest, AFieldThatWasClearedBeforeCancellingShowsTheFileAgain) {
  writeTimeMachine({{"Manual_Run_Hour", text("5")}, {"Days_Until_Manual_Run", number(8)}});
  openUnlockedTab();
  view_.advancedButton.click();
  view_.timeOfDayTextField.typeText("");
  view_.manuallyTriggerTextField.typeText("");
  view_.sheetCancelButton.click();
  view_.advancedButton.click();
  EXPECT_EQ(view_.timeOfDayTextField.stringValue(), "5");
  EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), "8");
}

TEST_F(TimeMachineSheetTest, AFileThatChangesUnderTheOpenSheetFillsAllOfItAlsoWhatIsBeingTyped) {
  for (const char* typed : {"7", ""}) {
    writeTimeMachine({{"Manual_Run_Hour", text("20")}, {"Days_Until_Manual_Run", number(3)}});
    openUnlockedTab();
    view_.advancedButton.click();
    EXPECT_TRUE(view_.timeOfDayTextField.typeText(typed));
    EXPECT_TRUE(view_.manuallyTriggerTextField.typeText(typed));
    writeTimeMachine({{"Manual_Run_Hour", text("9")}, {"Days_Until_Manual_Run", number(4)}});
    tab_->refreshTimeMachine();
    EXPECT_EQ(view_.timeOfDayTextField.stringValue(), "9");
    EXPECT_EQ(view_.amPmButton.indexOfSelectedItem(), 0);
    EXPECT_EQ(view_.manuallyTriggerTextField.stringValue(), "4");
    view_.sheetOkButton.click();
    EXPECT_EQ(lastWrite().value("Manual_Run_Hour"), text("9"));
    EXPECT_EQ(lastWrite().value("Days_Until_Manual_Run"), number(4));
  }
}

TEST_F(TimeMachineSheetTest, AnUnreadableFileIsNotOverwrittenAndTheSheetCloses) {
  platform_.writeText(paths_.timeMachineSettings, "broken");
  openUnlockedTab();
  view_.advancedButton.click();
  view_.sheetOkButton.click();
  EXPECT_TRUE(pane_.writes.empty());
  EXPECT_EQ(window_.attachedSheet(), nullptr);
}

TEST_F(TimeMachineSheetTest, ClosingTheLockWhileTheSheetIsOpenLeavesOnlyCancelling) {
  openUnlockedTab();
  view_.advancedButton.click();
  pane_.setUnlocked(false);
  view_.sheetOkButton.click();
  EXPECT_TRUE(pane_.writes.empty());
  EXPECT_EQ(window_.attachedSheet(), &view_.timeMachineAdvancedWindow);
  view_.sheetCancelButton.click();
  EXPECT_EQ(window_.attachedSheet(), nullptr);
}

TEST_F(TimeMachineSheetTest, WhatMayBeTypedIntoTheFields) {
  openUnlockedTab();
  view_.advancedButton.click();
  for (const char* typed : {"1", "9", "12", ""})
    EXPECT_TRUE(view_.timeOfDayTextField.typeText(typed)) << typed;
  for (const char* typed : {"0", "13", "1.", "a", "-1"})
    EXPECT_FALSE(view_.timeOfDayTextField.typeText(typed)) << typed;
  for (const char* typed : {"0", "99", ""})
    EXPECT_TRUE(view_.manuallyTriggerTextField.typeText(typed)) << typed;
  for (const char* typed : {"100", "-1", "x"})
    EXPECT_FALSE(view_.manuallyTriggerTextField.typeText(typed)) << typed;
}

}  // namespace
}  // namespace corvane::test
