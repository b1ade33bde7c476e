// Every control of the pane with its name, which is also what a shell's widget for it is called.
#pragma once

#include <string>
#include <vector>

#include "assembly/PaneAssembly.h"

namespace corvane::test {

struct NamedControl {
  std::string name;
  Control* control;
};

/// The text that the control itself shows; not what is typed into it.
inline std::string shownText(const Control& control) {
  if (const auto* button = dynamic_cast<const Button*>(&control)) return button->title();
  const auto* field = dynamic_cast<const TextField*>(&control);
  return field != nullptr && !field->editable() ? field->stringValue() : std::string();
}

/// What assistive technology says of the control.
inline std::string spokenName(const Control& control) {
  const std::string name = control.accessibleName();
  return name.empty() ? shownText(control) : name;
}

#define CORVANE_NAMED(control) \
  NamedControl { #control, &(control) }

// Each binding names all members of its view, so that a control which is added does not compile here until it
// is listed.
inline std::vector<NamedControl> namedControls(PaneView& view) {
  auto& [mainWindow, authView, statusField, tabView, quorlenIconButton, greetingButton, urlButton,
         clientVersionButton] = view;
  return {CORVANE_NAMED(mainWindow), CORVANE_NAMED(authView),           CORVANE_NAMED(statusField),
          CORVANE_NAMED(tabView),    CORVANE_NAMED(quorlenIconButton),  CORVANE_NAMED(greetingButton),
          CORVANE_NAMED(urlButton),  CORVANE_NAMED(clientVersionButton)};
}

inline std::vector<NamedControl> namedControls(ConfigurationTabView& view) {
  auto& [lastRunClientLabel, lastRunClientField, runClientButton, lastRunUpdaterLabel, lastRunUpdaterField,
         updateClientNowButton, runIntervalLabel, runIntervalTextField, runIntervalUnit, clientGroupLabel,
         clientGroupTextField, uninstallButton, removeClientField] = view;
  return {CORVANE_NAMED(lastRunClientLabel),   CORVANE_NAMED(lastRunClientField),
          CORVANE_NAMED(runClientButton),      CORVANE_NAMED(lastRunUpdaterLabel),
          CORVANE_NAMED(lastRunUpdaterField),  CORVANE_NAMED(updateClientNowButton),
          CORVANE_NAMED(runIntervalLabel),     CORVANE_NAMED(runIntervalTextField),
          CORVANE_NAMED(runIntervalUnit),      CORVANE_NAMED(clientGroupLabel),
          CORVANE_NAMED(clientGroupTextField), CORVANE_NAMED(uninstallButton),
          CORVANE_NAMED(removeClientField)};
}

inline std::vector<NamedControl> namedControls(OptionsTabView& view) {
  auto& [window, defaultTextField, volumesScrollView, volumesTable, showAllVolumeTypesButton, purgeButton,
         volumeOptionsBox, volumeTextField, volumeOptionMountPathButton, volumeOptionPathButton,
         warnAfterTextField, monitorPresenceCheckbox, volumeOptionWarnAfterButton,
         monitorPresenceThresholdTextField, volumeOptionMinutesButton, minutesTextField, warnAtTextField,
         monitorUsageCheckbox, volumeOptionWarnAtButton, monitorUsageThresholdTextField,
         volumeOptionPercentageButton, percentageTextField, bootVolumeLabel, bootVolumeWarningCheckbox,
         bootVolumeFullTextField, bootVolumeWarningTrailingButton, timeMachineLabel,
         timeMachineWarningCheckbox, timeMachineInactiveTextField, timeMachineWarningTrailingButton,
         advancedButton, automountLabel, automountCheckbox, timeMachineAdvancedWindow, manualRunLabel,
         manuallyTriggerTextField, manualRunDaysLabel, timeOfDayLabel, timeOfDayTextField, amPmButton,
         timeMachineRemovalWarning, sheetCancelButton, sheetOkButton] = view;
  static_cast<void>(window);  // the pane's own, named with the pane's controls
  return {CORVANE_NAMED(defaultTextField),
          CORVANE_NAMED(volumesScrollView),
          CORVANE_NAMED(volumesTable),
          CORVANE_NAMED(showAllVolumeTypesButton),
          CORVANE_NAMED(purgeButton),
          CORVANE_NAMED(volumeOptionsBox),
          CORVANE_NAMED(volumeTextField),
          CORVANE_NAMED(volumeOptionMountPathButton),
          CORVANE_NAMED(volumeOptionPathButton),
          CORVANE_NAMED(warnAfterTextField),
          CORVANE_NAMED(monitorPresenceCheckbox),
          CORVANE_NAMED(volumeOptionWarnAfterButton),
          CORVANE_NAMED(monitorPresenceThresholdTextField),
          CORVANE_NAMED(volumeOptionMinutesButton),
          CORVANE_NAMED(minutesTextField),
          CORVANE_NAMED(warnAtTextField),
          CORVANE_NAMED(monitorUsageCheckbox),
          CORVANE_NAMED(volumeOptionWarnAtButton),
          CORVANE_NAMED(monitorUsageThresholdTextField),
          CORVANE_NAMED(volumeOptionPercentageButton),
          CORVANE_NAMED(percentageTextField),
          CORVANE_NAMED(bootVolumeLabel),
          CORVANE_NAMED(bootVolumeWarningCheckbox),
          CORVANE_NAMED(bootVolumeFullTextField),
          CORVANE_NAMED(bootVolumeWarningTrailingButton),
          CORVANE_NAMED(timeMachineLabel),
          CORVANE_NAMED(timeMachineWarningCheckbox),
          CORVANE_NAMED(timeMachineInactiveTextField),
          CORVANE_NAMED(timeMachineWarningTrailingButton),
          CORVANE_NAMED(advancedButton),
          CORVANE_NAMED(automountLabel),
          CORVANE_NAMED(automountCheckbox),
          CORVANE_NAMED(timeMachineAdvancedWindow),
          CORVANE_NAMED(manualRunLabel),
          CORVANE_NAMED(manuallyTriggerTextField),
          CORVANE_NAMED(manualRunDaysLabel),
          CORVANE_NAMED(timeOfDayLabel),
          CORVANE_NAMED(timeOfDayTextField),
          CORVANE_NAMED(amPmButton),
          CORVANE_NAMED(timeMachineRemovalWarning),
          CORVANE_NAMED(sheetCancelButton),
          CORVANE_NAMED(sheetOkButton)};
}

inline std::vector<NamedControl> namedControls(PluginsTabView& view) {
  auto& [pluginsLabel, pluginsTable] = view;
  return {CORVANE_NAMED(pluginsLabel), CORVANE_NAMED(pluginsTable)};
}

#undef CORVANE_NAMED

inline std::vector<NamedControl> namedControls(PaneAssembly& assembly) {
  std::vector<NamedControl> all;
  for (const auto& controls :
       {namedControls(assembly.view()), namedControls(assembly.configurationView()),
        namedControls(assembly.optionsView()), namedControls(assembly.pluginsView())}) {
    all.insert(all.end(), controls.begin(), controls.end());
  }
  return all;
}

}  // namespace corvane::test
