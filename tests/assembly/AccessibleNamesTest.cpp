#include <algorithm>
#include <map>
#include <string>

#include "AssemblyFixture.h"
#include "support/NamedControls.h"
#include "values/Text.h"

namespace corvane::test {
namespace {

class AccessibleNamesTest : public AssemblyFixture {
 protected:
  PaneAssembly& loadWithHeader() {
    platform_.writePlist(
        paths_.clientSettings,
        Dictionary::make({{"Client_Version", text("4.2")}, {"Support_Address", text("help.example.com")}}));
    return load();
  }
};

bool isLink(const Button& button) {
  const auto& runs = button.attributedTitle().runs;
  return std::any_of(runs.begin(), runs.end(), [](const auto& run) { return run.attributes.underlined; });
}

/// A text, also one that hands a click on to the check box beside it, which is what is spoken of.
bool isPlainLabel(const Control& control) {
  const auto* field = dynamic_cast<const TextField*>(&control);
  const auto* button = dynamic_cast<const Button*>(&control);
  return (field != nullptr && !field->editable()) ||
         (button != nullptr && button->kind() == ButtonKind::Label &&
          (!button->action || (!shownText(control).empty() && !isLink(*button))));
}

TEST_F(AccessibleNamesTest, EveryControlThatIsNoPlainLabelIsSpokenOfByANameOfItsOwn) {
  std::map<std::string, int> uses;
  for (const auto& [name, control] : namedControls(loadWithHeader())) {
    if (isPlainLabel(*control)) continue;
    EXPECT_FALSE(spokenName(*control).empty()) << name;
    ++uses[spokenName(*control)];
  }
  for (const auto& [name, count] : uses) EXPECT_EQ(count, 1) << name;
  EXPECT_GT(uses.size(), 20U);
}

TEST_F(AccessibleNamesTest, WhatAControlShowsIsWhatItIsCalledOrAPartOfIt) {
  int named = 0;
  for (const auto& [name, control] : namedControls(loadWithHeader())) {
    EXPECT_NE(spokenName(*control).find(shownText(*control)), std::string::npos) << name;
    if (isPlainLabel(*control)) {
      EXPECT_EQ(control->accessibleName(), "") << name << ": the text speaks";
    }
    if (!shownText(*control).empty() && !control->accessibleName().empty()) ++named;
  }
  EXPECT_GE(named, 3) << "texts that are understood only with others";
}

TEST_F(AccessibleNamesTest, AFieldIsCalledByTheWordsThatStandBesideIt) {
  PaneAssembly& pane = loadWithHeader();
  OptionsTabView& options = pane.optionsView();
  ConfigurationTabView& configuration = pane.configurationView();
  const auto bare = [](std::string words) {
    if (!words.empty() && words.back() == ':') words.pop_back();
    return words;
  };
  struct Case {
    const Control& control;
    std::vector<std::string> beside;
  };
  const std::vector<Case> cases = {
      {configuration.runIntervalTextField, {configuration.runIntervalLabel.stringValue(), "hours"}},
      {configuration.clientGroupTextField, {configuration.clientGroupLabel.stringValue()}},
      {options.monitorPresenceCheckbox,
       {options.warnAfterTextField.stringValue(), options.volumeOptionWarnAfterButton.title()}},
      {options.monitorPresenceThresholdTextField,
       {options.warnAfterTextField.stringValue(), options.volumeOptionWarnAfterButton.title(),
        options.volumeOptionMinutesButton.title()}},
      {options.monitorUsageCheckbox,
       {options.warnAtTextField.stringValue(), options.volumeOptionWarnAtButton.title()}},
      {options.monitorUsageThresholdTextField,
       {options.warnAtTextField.stringValue(), options.volumeOptionWarnAtButton.title(),
        options.volumeOptionPercentageButton.title()}},
      {options.bootVolumeFullTextField,
       {options.bootVolumeLabel.stringValue(), options.bootVolumeWarningTrailingButton.title()}},
      {options.timeMachineInactiveTextField,
       {options.timeMachineLabel.stringValue(), options.timeMachineWarningTrailingButton.title()}},
      {options.manuallyTriggerTextField,
       {options.manualRunLabel.stringValue(), options.manualRunDaysLabel.stringValue()}},
      {options.timeOfDayTextField, {options.timeOfDayLabel.stringValue()}},
      {options.amPmButton, {options.timeOfDayLabel.stringValue(), "AM", "PM"}},
  };
  for (const Case& each : cases) {
    for (const std::string& words : each.beside)
      EXPECT_NE(spokenName(each.control).find(bare(words)), std::string::npos)
          << spokenName(each.control) << " without " << words;
  }
}

TEST_F(AccessibleNamesTest, TheButtonOfTheSystemVolumesIsCalledWhatAPressDoesNow) {
  Button& button = loadUnlocked().optionsView().showAllVolumeTypesButton;
  EXPECT_EQ(spokenName(button), "Show System Volumes");
  button.click();
  EXPECT_EQ(spokenName(button), "Hide System Volumes");
}

}  // namespace
}  // namespace corvane::test
