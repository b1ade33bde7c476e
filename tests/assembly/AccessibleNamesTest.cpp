#include <map>
#include <string_view>
#include <vector>

#include "AssemblyFixture.h"

namespace corvane::test {
namespace {

bool isPlainLabel(const Control& control) {
  if (const auto* field = dynamic_cast<const TextField*>(&control)) return !field->editable();
  const auto* button = dynamic_cast<const Button*>(&control);
  return button != nullptr && button->kind() == ButtonKind::Label && !button->action;
}

// Each binding names all members of its view, so that a control which is added does not compile here until it
// is listed.
std::vector<const Control*> controlsOf(const PaneView& view) {
  const auto& [mainWindow, authView, tabView, quorlenIconButton, greetingButton, urlButton,
               clientVersionButton] = view;
  return {&mainWindow, &authView,           &tabView, &quorlenIconButton, &greetingButton,
          &urlButton,  &clientVersionButton};
}

std::vector<const Control*> controlsOf(const ConfigurationTabView& view) {
  const auto& [lastRunClientLabel, lastRunClientField, runClientButton, lastRunUpdaterLabel,
               lastRunUpdaterField, updateClientNowButton, runIntervalLabel, runIntervalTextField,
               runIntervalUnit, clientGroupLabel, clientGroupTextField, uninstallButton, removeClientField] =
      view;
  return {&lastRunClientLabel,  &lastRunClientField,    &runClientButton,      &lastRunUpdaterLabel,
          &lastRunUpdaterField, &updateClientNowButton, &runIntervalLabel,     &runIntervalTextField,
          &runIntervalUnit,     &clientGroupLabel,      &clientGroupTextField, &uninstallButton,
          &removeClientField};
}

std::vector<const Control*> controlsOf(const OptionsTabView& view) {
  const auto& [window, defaultTextField, volumesScrollView, volumesTable, showAllVolumeTypesButton,
               purgeButton, volumeOptionsBox, volumeTextField, volumeOptionMountPathButton,
               volumeOptionPathButton, warnAfterTextField, monitorPresenceCheckbox,
               volumeOptionWarnAfterButton, monitorPresenceThresholdTextField, volumeOptionMinutesButton,
               minutesTextField, warnAtTextField, monitorUsageCheckbox, volumeOptionWarnAtButton,
               monitorUsageThresholdTextField, volumeOptionPercentageButton, percentageTextField,
               bootVolumeLabel, bootVolumeWarningCheckbox, bootVolumeFullTextField,
               bootVolumeWarningTrailingButton, timeMachineLabel, timeMachineWarningCheckbox,
               timeMachineInactiveTextField, timeMachineWarningTrailingButton, advancedButton, automountLabel,
               automountCheckbox, timeMachineAdvancedWindow, manualRunLabel, manuallyTriggerTextField,
               manualRunDaysLabel, timeOfDayLabel, timeOfDayTextField, amPmButton, timeMachineRemovalWarning,
               sheetCancelButton, sheetOkButton] = view;
  EXPECT_EQ(window.title(), "Monitoring Client") << "the pane's own, named with the pane's controls";
  return {&defaultTextField,
          &volumesScrollView,
          &volumesTable,
          &showAllVolumeTypesButton,
          &purgeButton,
          &volumeOptionsBox,
          &volumeTextField,
          &volumeOptionMountPathButton,
          &volumeOptionPathButton,
          &warnAfterTextField,
          &monitorPresenceCheckbox,
          &volumeOptionWarnAfterButton,
          &monitorPresenceThresholdTextField,
          &volumeOptionMinutesButton,
          &minutesTextField,
          &warnAtTextField,
          &monitorUsageCheckbox,
          &volumeOptionWarnAtButton,
          &monitorUsageThresholdTextField,
          &volumeOptionPercentageButton,
          &percentageTextField,
          &bootVolumeLabel,
          &bootVolumeWarningCheckbox,
          &bootVolumeFullTextField,
          &bootVolumeWarningTrailingButton,
          &timeMachineLabel,
          &timeMachineWarningCheckbox,
          &timeMachineInactiveTextField,
          &timeMachineWarningTrailingButton,
          &advancedButton,
          &automountLabel,
          &automountCheckbox,
          &timeMachineAdvancedWindow,
          &manualRunLabel,
          &manuallyTriggerTextField,
          &manualRunDaysLabel,
          &timeOfDayLabel,
          &timeOfDayTextField,
          &amPmButton,
          &timeMachineRemovalWarning,
          &sheetCancelButton,
          &sheetOkButton};
}

std::vector<const Control*> controlsOf(const PluginsTabView& view) {
  const auto& [pluginsLabel, pluginsTable] = view;
  return {&pluginsLabel, &pluginsTable};
}

class AccessibleNamesTest : public AssemblyFixture {
 protected:
  std::vector<const Control*> allControls() {
    load();
    std::vector<const Control*> all;
    for (const auto& controls :
         {controlsOf(assembly_->view()), controlsOf(assembly_->configurationView()),
          controlsOf(assembly_->optionsView()), controlsOf(assembly_->pluginsView())}) {
      all.insert(all.end(), controls.begin(), controls.end());
    }
    return all;
  }
};

TEST_F(AccessibleNamesTest, EveryControlThatIsNoPlainLabelHasANameOfItsOwn) {
  std::map<std::string_view, int> uses;
  int position = 0;
  for (const Control* control : allControls()) {
    ++position;
    if (isPlainLabel(*control)) continue;
    EXPECT_FALSE(control->accessibleName().empty()) << "control " << position << " of the views";
    ++uses[control->accessibleName()];
  }
  for (const auto& [name, count] : uses) EXPECT_EQ(count, 1) << name;
  EXPECT_GT(uses.size(), 20U);
}

}  // namespace
}  // namespace corvane::test
