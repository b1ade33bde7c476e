#include "options/OptionsTabFixture.h"
#include "options/WarningRows.h"

namespace corvane::test {
namespace {

class WarningRowsTest : public OptionsTabTest {};

TEST_F(WarningRowsTest, ATrailingLabelSwitchesTheCheckOfItsRow) {
  struct Row {
    Button& label;
    Button& checkBox;
    const std::string& file;
  };
  for (const Row& row : {Row{view_.timeMachineWarningTrailingButton, view_.timeMachineWarningCheckbox,
                             paths_.timeMachineSettings},
                         Row{view_.bootVolumeWarningTrailingButton, view_.bootVolumeWarningCheckbox,
                             paths_.rootCapacitySettings}}) {
    for (const bool on : {true, false}) {
      SCOPED_TRACE(row.file + (on ? ", on" : ", off"));
      const Dictionary file = Dictionary::make({{"Plugin_Enabled", flag(on)}, {"Unknown", text("kept")}});
      platform_.writePlist(row.file, file);
      openUnlockedTab();
      pane_.writes.clear();
      row.label.click();
      ASSERT_EQ(pane_.writes.size(), 1U);
      EXPECT_EQ(pane_.writes[0].path, row.file);
      EXPECT_EQ(pane_.writes[0].values,
                Dictionary::make({{"Plugin_Enabled", flag(!on)}, {"Unknown", text("kept")}}));
      EXPECT_EQ(row.checkBox.state(), on ? ButtonState::Off : ButtonState::On);
    }
  }
}

TEST_F(WarningRowsTest, ATrailingLabelWritesAKeyThatTheFileLackedToo) {
  openUnlockedTab();
  view_.bootVolumeWarningTrailingButton.click();
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"Plugin_Enabled", flag(true)}}));
  EXPECT_EQ(view_.bootVolumeWarningCheckbox.state(), ButtonState::On);
}

TEST_F(WarningRowsTest, AMixedCheckBoxIsSwitchedOnByItsLabel) {
  openUnlockedTab();
  view_.timeMachineWarningCheckbox.setState(ButtonState::Mixed);
  view_.timeMachineWarningTrailingButton.click();
  EXPECT_EQ(pane_.writes.back().values, Dictionary::make({{"Plugin_Enabled", flag(true)}}));
}

TEST_F(WarningRowsTest, OtherSendersSwitchNothing) {
  openUnlockedTab();
  for (Button* sender :
       {&view_.timeMachineWarningCheckbox, &view_.purgeButton, &view_.volumeOptionMinutesButton}) {
    tab_->warningRows().toggleCheckboxButtonPairing(*sender);
  }
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(WarningRowsTest, TheFieldFollowsTheTitleAndTheLabelFollowsTheField) {
  struct Case {
    double titleWidth;
    double fieldX;  // 100 + whole part of (title + 18) + 5
  };
  for (const Case& c : {Case{200, 323}, Case{200.99, 323}, Case{201, 324}, Case{0, 123}, Case{0.5, 123}}) {
    SCOPED_TRACE(c.titleWidth);
    for (Button* checkBox : {&view_.bootVolumeWarningCheckbox, &view_.timeMachineWarningCheckbox}) {
      platform_.workspace.widths[checkBox->title()] = c.titleWidth;
      checkBox->setFrame({100, 10, 30, 18});
    }
    for (TextField* field : {&view_.bootVolumeFullTextField, &view_.timeMachineInactiveTextField}) {
      field->setFrame({1, 8, 40, 22});
    }
    for (Button* label : {&view_.bootVolumeWarningTrailingButton, &view_.timeMachineWarningTrailingButton}) {
      label->setFrame({2, 11, 90, 19});
    }
    openTab();
    for (TextField* field : {&view_.bootVolumeFullTextField, &view_.timeMachineInactiveTextField}) {
      EXPECT_EQ(field->frame(), (Rect{c.fieldX, 8, 40, 22}));
    }
    for (Button* label : {&view_.bootVolumeWarningTrailingButton, &view_.timeMachineWarningTrailingButton}) {
      EXPECT_EQ(label->frame(), (Rect{c.fieldX + 45, 11, 90, 19}));
    }
  }
}

TEST_F(WarningRowsTest, TitlesAreMeasuredInTheSystemFontStartupDiskFirst) {
  openTab();
  const Font font{.family = Font::Family::System, .size = 13};
  EXPECT_EQ(platform_.workspace.measured,
            (std::vector<std::pair<std::string, Font>>{{"Warn when the startup disk is", font},
                                                       {"Warn when a backup is older than", font}}));
}

TEST_F(WarningRowsTest, TheTooltipOfTheTimeMachineRowTellsThatItsFileIsAbsent) {
  constexpr const char* disabled = "Time Machine reporting has been disabled. Contact support for details.";
  const std::vector<Control*> row = {&view_.timeMachineWarningCheckbox, &view_.timeMachineInactiveTextField,
                                     &view_.timeMachineWarningTrailingButton, &view_.advancedButton};
  openTab();
  EXPECT_EQ(tab_->warningRows().timeMachineToolTip(), disabled);
  for (const Control* control : row) EXPECT_EQ(control->toolTip(), disabled);
  platform_.writePlist(paths_.timeMachineSettings, Dictionary::make());
  tab_->refreshTimeMachine();
  EXPECT_EQ(tab_->warningRows().timeMachineToolTip(), "");
  for (const Control* control : row) EXPECT_EQ(control->toolTip(), "");
  platform_.remove(paths_.timeMachineSettings);
  tab_->refreshTimeMachine();
  for (const Control* control : row) EXPECT_EQ(control->toolTip(), disabled);
}

TEST_F(WarningRowsTest, AFileThatCannotBeReadExistsAllTheSame) {
  platform_.writeText(paths_.timeMachineSettings, "broken");
  openTab();
  EXPECT_EQ(tab_->warningRows().timeMachineToolTip(), "");
}

TEST_F(WarningRowsTest, TheRowsTakeEditsOnlyWhileTheLockIsOpen) {
  openTab();
  const std::vector<Control*> controls = {&view_.bootVolumeWarningCheckbox,
                                          &view_.bootVolumeFullTextField,
                                          &view_.bootVolumeWarningTrailingButton,
                                          &view_.timeMachineWarningCheckbox,
                                          &view_.timeMachineInactiveTextField,
                                          &view_.timeMachineWarningTrailingButton,
                                          &view_.advancedButton,
                                          &view_.automountCheckbox};
  for (const bool unlocked : {false, true, false}) {
    pane_.setUnlocked(unlocked);
    for (std::size_t i = 0; i < controls.size(); ++i) EXPECT_EQ(controls[i]->enabled(), unlocked) << i;
  }
  view_.automountCheckbox.click();
  view_.timeMachineWarningTrailingButton.click();
  view_.advancedButton.click();
  EXPECT_TRUE(pane_.writes.empty());
  EXPECT_EQ(window_.attachedSheet(), nullptr);
}

}  // namespace
}  // namespace corvane::test
