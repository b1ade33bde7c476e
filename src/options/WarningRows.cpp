#include "options/WarningRows.h"

#include <cmath>
#include <initializer_list>

#include "options/WarningKeys.h"
#include "pane/ClientKeys.h"

namespace corvane {
namespace {

constexpr const char* kReportingDisabled =
    "Time Machine reporting has been disabled. Contact support for details.";

/// In points: the check box itself, and the gap between two controls of a row.
constexpr double kCheckBoxWidth = 18;
constexpr double kGap = 5;

}  // namespace

WarningRows::WarningRows(OptionsTabView& view, Workspace& workspace, SettingsFile& timeMachine,
                         SettingsFile& diskFree, SettingsFile& automountDisk, const PaneConnection& pane)
    : view_(view),
      workspace_(workspace),
      timeMachine_(timeMachine),
      diskFree_(diskFree),
      automountDisk_(automountDisk),
      pane_(pane) {}

void WarningRows::bindControls() {
  constexpr auto integer = SettingsBinding::Kind::Integer;
  timeMachine_.bind(view_.timeMachineWarningCheckbox, client_key::kPluginEnabled);
  timeMachine_.bind(view_.timeMachineInactiveTextField, time_machine_key::kDaysUntilWarning, integer);
  diskFree_.bind(view_.bootVolumeWarningCheckbox, client_key::kPluginEnabled);
  diskFree_.bind(view_.bootVolumeFullTextField, root_capacity_key::kCapacityThreshold, integer);
  automountDisk_.bind(view_.automountCheckbox, client_key::kAutomountDisks);
}

void WarningRows::layOut() {
  adjustSpacingInputTextFieldTrailingTextField(view_.bootVolumeWarningCheckbox, view_.bootVolumeFullTextField,
                                               view_.bootVolumeWarningTrailingButton);
  adjustSpacingInputTextFieldTrailingTextField(view_.timeMachineWarningCheckbox,
                                               view_.timeMachineInactiveTextField,
                                               view_.timeMachineWarningTrailingButton);
}

void WarningRows::adjustSpacingInputTextFieldTrailingTextField(const Button& checkBox, TextField& field,
                                                               Button& label) {
  const Font font{.family = Font::Family::System, .size = kSystemFontSize};
  const double width = std::trunc(workspace_.textWidth(checkBox.title(), font) + kCheckBoxWidth);
  Rect fieldFrame = field.frame();
  fieldFrame.x = checkBox.frame().x + width + kGap;
  field.setFrame(fieldFrame);
  Rect labelFrame = label.frame();
  labelFrame.x = fieldFrame.x + fieldFrame.width + kGap;
  label.setFrame(labelFrame);
}

void WarningRows::toggleCheckboxButtonPairing(const Button& sender) {
  const bool isTimeMachine = &sender == &view_.timeMachineWarningTrailingButton;
  if (!isTimeMachine && &sender != &view_.bootVolumeWarningTrailingButton) return;
  const Button& checkBox = isTimeMachine ? view_.timeMachineWarningCheckbox : view_.bootVolumeWarningCheckbox;
  SettingsFile& store = isTimeMachine ? timeMachine_ : diskFree_;
  // The store writes the file because of the change; the check box is bound to the key and follows.
  store.store().setValueForKey(client_key::kPluginEnabled,
                               PropertyList::boolean(checkBox.state() != ButtonState::On));
}

std::string WarningRows::timeMachineToolTip() const {
  return timeMachine_.store().fileExists() ? std::string() : kReportingDisabled;
}

void WarningRows::showTimeMachineToolTip() {
  for (Control* control :
       std::initializer_list<Control*>{&view_.timeMachineWarningCheckbox, &view_.timeMachineInactiveTextField,
                                       &view_.timeMachineWarningTrailingButton, &view_.advancedButton}) {
    control->setToolTip(timeMachineToolTip());
  }
}

void WarningRows::showLockState() {
  for (Control* control : std::initializer_list<Control*>{
           &view_.bootVolumeWarningCheckbox, &view_.bootVolumeFullTextField,
           &view_.bootVolumeWarningTrailingButton, &view_.timeMachineWarningCheckbox,
           &view_.timeMachineInactiveTextField, &view_.timeMachineWarningTrailingButton,
           &view_.advancedButton, &view_.automountCheckbox, &view_.sheetOkButton}) {
    control->setEnabled(pane_.unlocked());
  }
}

}  // namespace corvane
