// The rows below the volume table: startup disk, Time Machine, automount. Each shows keys of a settings file
// through bindings; the trailing label of a row acts as part of its check box.
//
// The rows and the button that opens the sheet take edits only while the lock is open.
#pragma once

#include <string>

#include "options/OptionsTabView.h"
#include "options/PaneConnection.h"
#include "pane/SettingsFile.h"
#include "platform/Workspace.h"

namespace corvane {

class WarningRows {
 public:
  /// All must outlive the rows.
  WarningRows(OptionsTabView& view, Workspace& workspace, SettingsFile& timeMachine, SettingsFile& diskFree,
              SettingsFile& automountDisk, const PaneConnection& pane);

  /// Ties the controls to their keys.
  void bindControls();
  /// Puts each row's field behind its check box and the trailing label behind the field.
  void layOut();
  /// The field follows the check box's title and the label the field, with gaps of 5 points.
  void adjustSpacingInputTextFieldTrailingTextField(const Button& checkBox, TextField& field, Button& label);
  /// A click on a trailing label: switches the check of its row. Other senders do nothing.
  void toggleCheckboxButtonPairing(const Button& sender);

  /// Says that Time Machine reporting is disabled while its settings file is absent; otherwise empty.
  [[nodiscard]] std::string timeMachineToolTip() const;
  void showTimeMachineToolTip();
  void showLockState();

 private:
  OptionsTabView& view_;
  Workspace& workspace_;
  SettingsFile& timeMachine_;
  SettingsFile& diskFree_;
  SettingsFile& automountDisk_;
  const PaneConnection& pane_;
};

}  // namespace corvane
