#include <set>

#include "options/OptionsTabFixture.h"
#include "options/OptionsTabView.h"
#include "support/NamedControls.h"

namespace corvane::test {
namespace {

class OptionsTabViewTest : public OptionsTabTest {
 protected:
  /// What the user acts on.
  [[nodiscard]] std::vector<const Control*> actingControls() const {
    return {&view_.volumesTable,
            &view_.showAllVolumeTypesButton,
            &view_.purgeButton,
            &view_.monitorPresenceCheckbox,
            &view_.monitorPresenceThresholdTextField,
            &view_.monitorUsageCheckbox,
            &view_.monitorUsageThresholdTextField,
            &view_.bootVolumeWarningCheckbox,
            &view_.bootVolumeFullTextField,
            &view_.bootVolumeWarningTrailingButton,
            &view_.timeMachineWarningCheckbox,
            &view_.timeMachineInactiveTextField,
            &view_.timeMachineWarningTrailingButton,
            &view_.advancedButton,
            &view_.automountCheckbox,
            &view_.timeMachineAdvancedWindow,
            &view_.manuallyTriggerTextField,
            &view_.timeOfDayTextField,
            &view_.amPmButton,
            &view_.timeMachineRemovalWarning,
            &view_.sheetCancelButton,
            &view_.sheetOkButton};
  }
};

TEST_F(OptionsTabViewTest, TheRowsReadAsSentences) {
  const auto sentence = [](const Button& checkBox, const char* value, const Button& label) {
    return checkBox.title() + " " + value + " " + label.title();
  };
  EXPECT_EQ(sentence(view_.timeMachineWarningCheckbox, "30", view_.timeMachineWarningTrailingButton),
            "Warn when a backup is older than 30 days");
  EXPECT_EQ(sentence(view_.bootVolumeWarningCheckbox, "90", view_.bootVolumeWarningTrailingButton),
            "Warn when the startup disk is 90 percent full");
  EXPECT_EQ(view_.warnAfterTextField.stringValue(), "Absence:");
  EXPECT_EQ(sentence(view_.volumeOptionWarnAfterButton, "5", view_.volumeOptionMinutesButton),
            "Warn after 5 minutes");
  EXPECT_EQ(view_.warnAtTextField.stringValue(), "Usage:");
  EXPECT_EQ(sentence(view_.volumeOptionWarnAtButton, "90", view_.volumeOptionPercentageButton),
            "Warn at 90 percent full");
}

TEST_F(OptionsTabViewTest, EveryActingControlHasAnAccessibleNameOfItsOwn) {
  std::set<std::string> names;
  for (const Control* control : actingControls()) {
    EXPECT_FALSE(spokenName(*control).empty());
    EXPECT_TRUE(names.insert(spokenName(*control)).second) << spokenName(*control);
  }
}

TEST_F(OptionsTabViewTest, PlainLabelsSpeakByTheirTexts) {
  for (const TextField* label :
       {&view_.warnAfterTextField, &view_.warnAtTextField, &view_.minutesTextField,
        &view_.percentageTextField, &view_.volumeTextField, &view_.bootVolumeLabel, &view_.timeMachineLabel,
        &view_.automountLabel, &view_.manualRunLabel, &view_.manualRunDaysLabel, &view_.timeOfDayLabel}) {
    EXPECT_FALSE(label->stringValue().empty());
    EXPECT_FALSE(label->editable());
    EXPECT_EQ(label->accessibleName(), "");
  }
}

TEST_F(OptionsTabViewTest, TheMenuHoldsTheTwoHalvesOfTheDay) {
  EXPECT_EQ(view_.amPmButton.items(), (std::vector<std::string>{"AM", "PM"}));
}

}  // namespace
}  // namespace corvane::test
