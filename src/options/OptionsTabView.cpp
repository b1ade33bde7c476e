#include "options/OptionsTabView.h"

#include "options/VolumeKeys.h"

namespace corvane {

OptionsTabView::OptionsTabView(Window& paneWindow)
    : window(paneWindow),
      volumesTable({TableColumn{volume_key::kName, "Volume", 230}}),
      showAllVolumeTypesButton(ButtonKind::Push, kShowSystemVolumes),
      purgeButton(ButtonKind::Push, "Remove from List"),
      volumeTextField(TextField::Role::Label, "Alerts for the selected volume"),
      volumeOptionMountPathButton(ButtonKind::Label, "Mount path:"),
      warnAfterTextField(TextField::Role::Label, "Absence:"),
      volumeOptionWarnAfterButton(ButtonKind::Label, "Warn after"),
      volumeOptionMinutesButton(ButtonKind::Label, "minutes"),
      minutesTextField(TextField::Role::Label, "1 to 60 minutes"),
      warnAtTextField(TextField::Role::Label, "Usage:"),
      volumeOptionWarnAtButton(ButtonKind::Label, "Warn at"),
      volumeOptionPercentageButton(ButtonKind::Label, "percent full"),
      percentageTextField(TextField::Role::Label, "1 to 99 percent"),
      bootVolumeLabel(TextField::Role::Label, "Startup disk:"),
      bootVolumeWarningCheckbox(ButtonKind::CheckBox, "Warn when the startup disk is"),
      bootVolumeWarningTrailingButton(ButtonKind::Label, "percent full"),
      timeMachineLabel(TextField::Role::Label, "Time Machine:"),
      timeMachineWarningCheckbox(ButtonKind::CheckBox, "Warn when a backup is older than"),
      timeMachineWarningTrailingButton(ButtonKind::Label, "days"),
      advancedButton(ButtonKind::Push, "Advanced…"),
      automountLabel(TextField::Role::Label, "Disks:"),
      automountCheckbox(ButtonKind::CheckBox, "Mount disks even when no user is logged in"),
      timeMachineAdvancedWindow("Time Machine Options"),
      manualRunLabel(TextField::Role::Label, "Start a backup after"),
      manualRunDaysLabel(TextField::Role::Label, "days without one"),
      timeOfDayLabel(TextField::Role::Label, "Time of day:"),
      amPmButton({"AM", "PM"}),
      timeMachineRemovalWarning(ButtonKind::CheckBox, "Also warn when the backup disk is removed"),
      sheetCancelButton(ButtonKind::Push, "Cancel"),
      sheetOkButton(ButtonKind::Push, "OK") {
  setFrames();
  setAccessibleNames();
  setToolTips();
}

// The places from which the layout rules of the tab start; a shell lays out the rest.
void OptionsTabView::setFrames() {
  volumesScrollView.setFrame({17, 150, 600, 180});
  volumesTable.setHeaderHeight(17);
  bootVolumeWarningCheckbox.setFrame({130, 84, 230, 18});
  bootVolumeFullTextField.setFrame({365, 82, 40, 22});
  bootVolumeWarningTrailingButton.setFrame({410, 84, 100, 18});
  timeMachineWarningCheckbox.setFrame({130, 54, 230, 18});
  timeMachineInactiveTextField.setFrame({365, 52, 40, 22});
  timeMachineWarningTrailingButton.setFrame({410, 54, 60, 18});
}

// What shows a text of its own speaks by it, unless the text is only a part of a sentence.
void OptionsTabView::setAccessibleNames() {
  volumesScrollView.setAccessibleName("List of volumes");
  volumesTable.setAccessibleName("Volumes");
  volumeOptionsBox.setAccessibleName(volumeTextField.stringValue());
  monitorPresenceCheckbox.setAccessibleName("Absence: Warn after some minutes");
  monitorPresenceThresholdTextField.setAccessibleName("Absence: Warn after so many minutes");
  monitorUsageCheckbox.setAccessibleName("Usage: Warn at some percent full");
  monitorUsageThresholdTextField.setAccessibleName("Usage: Warn at so many percent full");

  bootVolumeWarningCheckbox.setAccessibleName("Warn when the startup disk is nearly full");
  bootVolumeFullTextField.setAccessibleName("Startup disk: so many percent full");
  timeMachineWarningCheckbox.setAccessibleName("Warn when a backup is older than some days");
  timeMachineInactiveTextField.setAccessibleName("Time Machine: older than so many days");
  advancedButton.setAccessibleName("Advanced… Time Machine options");

  timeMachineAdvancedWindow.setAccessibleName(timeMachineAdvancedWindow.title());
  manuallyTriggerTextField.setAccessibleName("Start a backup after so many days without one");
  timeOfDayTextField.setAccessibleName("Time of day: hour");
  amPmButton.setAccessibleName("Time of day: AM or PM");
}

void OptionsTabView::setToolTips() {
  showAllVolumeTypesButton.setToolTip(
      "System volumes and other file systems are left out of the list at first.");
  purgeButton.setToolTip("Forgets the settings of a volume that is not mounted.");
  automountCheckbox.setToolTip("A setting of the system, not of the monitoring client.");
  monitorPresenceThresholdTextField.setToolTip("A number of minutes, 1 to 60");
  for (TextField* percent : {&monitorUsageThresholdTextField, &bootVolumeFullTextField})
    percent->setToolTip(percentageTextField.stringValue());
  timeMachineInactiveTextField.setRangeText("1 to 99 days");  // its tool tip is its row's
  manuallyTriggerTextField.setToolTip("0 to 99 days");
  timeOfDayTextField.setToolTip("An hour, 1 to 12");
}

}  // namespace corvane
