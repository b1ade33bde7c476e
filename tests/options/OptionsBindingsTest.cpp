// The controls of the tab that are bound to a key of a settings file.
#include "options/OptionsTabFixture.h"

namespace corvane::test {
namespace {

class OptionsBindingsTest : public OptionsTabTest {
 protected:
  struct Bound {
    const char* key;
    const std::string& file;
    Button* checkBox = nullptr;
    TextField* field = nullptr;
  };
  std::vector<Bound> everyBinding() {
    return {{"Plugin_Enabled", paths_.timeMachineSettings, &view_.timeMachineWarningCheckbox, nullptr},
            {"Days_Until_Warning", paths_.timeMachineSettings, nullptr, &view_.timeMachineInactiveTextField},
            {"Plugin_Enabled", paths_.rootCapacitySettings, &view_.bootVolumeWarningCheckbox, nullptr},
            {"Capacity_Threshold", paths_.rootCapacitySettings, nullptr, &view_.bootVolumeFullTextField},
            {"AutomountDisksWithoutUserLogin", paths_.autoDiskMount, &view_.automountCheckbox, nullptr}};
  }
  /// Shows the value of a check box as a boolean, of a field as its text.
  static std::string shown(const Bound& bound) {
    if (bound.field != nullptr) return bound.field->stringValue();
    return bound.checkBox->state() == ButtonState::On ? "on" : "off";
  }
  static void edit(const Bound& bound) {
    if (bound.checkBox != nullptr) bound.checkBox->click();
    if (bound.field != nullptr) {
      EXPECT_TRUE(bound.field->typeText("42"));
      bound.field->endEditing();
    }
  }
  static PropertyList stored(const Bound& bound) { return bound.field != nullptr ? number(30) : flag(false); }
  static PropertyList edited(const Bound& bound) { return bound.field != nullptr ? number(42) : flag(true); }
};

TEST_F(OptionsBindingsTest, EveryEditIsOneWriteOfTheWholeFile) {
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    Dictionary file =
        Dictionary::make({{"Unknown", list({text("kept"), number(1)})}, {"Other_Key", flag(true)}});
    file.set(bound.key, stored(bound));
    platform_.writePlist(bound.file, file);
    openUnlockedTab();
    pane_.writes.clear();
    edit(bound);
    file.set(bound.key, edited(bound));
    ASSERT_EQ(pane_.writes.size(), 1U);
    EXPECT_EQ(pane_.writes[0].path, bound.file);
    EXPECT_EQ(pane_.writes[0].values, file);
  }
}

TEST_F(OptionsBindingsTest, EveryEditOfAKeyThatTheFileLacksIsOneWriteToo) {
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    platform_.remove(bound.file);
    openUnlockedTab();
    pane_.writes.clear();
    edit(bound);
    ASSERT_EQ(pane_.writes.size(), 1U);
    EXPECT_EQ(pane_.writes[0].path, bound.file);
    EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{bound.key, edited(bound)}}));
    platform_.remove(bound.file);
  }
}

TEST_F(OptionsBindingsTest, EveryControlFollowsItsFileWithoutWriting) {
  openUnlockedTab();
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    platform_.writePlist(bound.file, Dictionary::make({{bound.key, edited(bound)}}));
    tab_->refresh();
    EXPECT_EQ(shown(bound), bound.field != nullptr ? "42" : "on");
    platform_.writePlist(bound.file, Dictionary::make({{bound.key, stored(bound)}}));
    tab_->refresh();
    EXPECT_EQ(shown(bound), bound.field != nullptr ? "30" : "off");
  }
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(OptionsBindingsTest, AValueOfTheWrongTypeShowsAsAbsentAndSurvives) {
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    const Dictionary file = Dictionary::make({{bound.key, text("1")}});
    platform_.writePlist(bound.file, file);
    openUnlockedTab();
    EXPECT_EQ(shown(bound), bound.field != nullptr ? "" : "off");
    EXPECT_EQ(platform_.readPlist(bound.file), file);
  }
}

TEST_F(OptionsBindingsTest, AThresholdOutOfRangeIsShownAndStaysUntilItIsEdited) {
  for (const Bound& bound : everyBinding()) {
    if (bound.field == nullptr) continue;
    SCOPED_TRACE(bound.key);
    platform_.writePlist(bound.file, Dictionary::make({{bound.key, number(250)}}));
    openUnlockedTab();
    EXPECT_EQ(shown(bound), "250");
    bound.field->endEditing();
    EXPECT_FALSE(bound.field->typeText("2500"));
    EXPECT_FALSE(bound.field->typeText("0"));
    EXPECT_FALSE(bound.field->typeText("100"));
    bound.field->endEditing();
    EXPECT_TRUE(pane_.writes.empty());
  }
}

TEST_F(OptionsBindingsTest, AClearedThresholdBecomesTheDefaultWhenTheFieldIsLeft) {
  platform_.writePlist(paths_.rootCapacitySettings, Dictionary::make({{"Capacity_Threshold", number(90)}}));
  openUnlockedTab();
  EXPECT_TRUE(view_.bootVolumeFullTextField.typeText(""));
  view_.bootVolumeFullTextField.endEditing();
  EXPECT_EQ(view_.bootVolumeFullTextField.stringValue(), "1");
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"Capacity_Threshold", number(1)}}));
}

TEST_F(OptionsBindingsTest, ClearingOneOfThreeFieldsMakesTheOthersShowTheDefaultUntilSomethingIsTyped) {
  platform_.writePlist(paths_.rootCapacitySettings, Dictionary::make({{"Capacity_Threshold", number(90)}}));
  platform_.writePlist(paths_.timeMachineSettings, Dictionary::make({{"Days_Until_Warning", number(30)}}));
  writeSavedList({entry("Data", "/Volumes/Data")});
  openUnlockedTab();
  const auto shownInAll = [&] {
    return std::vector{view_.bootVolumeFullTextField.stringValue(),
                       view_.timeMachineInactiveTextField.stringValue(),
                       view_.monitorUsageThresholdTextField.stringValue(),
                       view_.monitorPresenceThresholdTextField.stringValue()};
  };
  EXPECT_EQ(shownInAll(), (std::vector<std::string>{"90", "30", "90", "5"}));
  view_.bootVolumeFullTextField.typeText("");
  EXPECT_EQ(shownInAll(), (std::vector<std::string>{"", "1", "1", "5"}));
  view_.bootVolumeFullTextField.typeText("8");
  EXPECT_EQ(shownInAll(), (std::vector<std::string>{"8", "30", "90", "5"}));
}

TEST_F(OptionsBindingsTest, AnEditThatCanNotBeStoredIsNotShownEither) {
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    platform_.writeText(bound.file, "broken");
    openUnlockedTab();
    const std::string before = shown(bound);
    edit(bound);
    EXPECT_EQ(shown(bound), before);
    EXPECT_TRUE(pane_.writes.empty());
    platform_.remove(bound.file);
  }
}

TEST_F(OptionsBindingsTest, ControlsAreTiedToTheStoreThatReplacesAnUnreadableOne) {
  for (const Bound& bound : everyBinding()) {
    SCOPED_TRACE(bound.file + " " + bound.key);
    platform_.writeText(bound.file, "broken");
    openUnlockedTab();
    pane_.writes.clear();
    EXPECT_TRUE(tab_->errorLoadingPlists());
    edit(bound);
    EXPECT_TRUE(pane_.writes.empty());
    platform_.writePlist(bound.file, Dictionary::make({{bound.key, stored(bound)}}));
    tab_->refresh();
    EXPECT_FALSE(tab_->errorLoadingPlists());
    EXPECT_EQ(shown(bound), bound.field != nullptr ? "30" : "off");
    edit(bound);
    ASSERT_EQ(pane_.writes.size(), 1U);
    EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{bound.key, edited(bound)}}));
  }
}

}  // namespace
}  // namespace corvane::test
