// The controls of the Options tab. Titles, labels, tooltips, placeholders and accessible names are set here,
// once, for every shell; a shell's interface file holds layout only. The controller sets states, a shell
// binds each object by its name.
#pragma once

#include "controls/Button.h"
#include "controls/Control.h"
#include "controls/PopUpButton.h"
#include "controls/ScrollView.h"
#include "controls/TableView.h"
#include "controls/TextField.h"
#include "controls/Window.h"

namespace corvane {

struct OptionsTabView {
  /// The two titles of `showAllVolumeTypesButton`.
  static constexpr const char* kShowSystemVolumes = "Show System Volumes";
  static constexpr const char* kHideSystemVolumes = "Hide System Volumes";

  /// `window` is the one in which the tab stands; the sheet opens on it. It must outlive the view.
  explicit OptionsTabView(Window& window);

  Window& window;

  // The volume table, and the line above it with a hint or an error.
  TextField defaultTextField{TextField::Role::Label};
  ScrollView volumesScrollView;
  TableView volumesTable;  // a column's identifier is the key of a volume entry
  Button showAllVolumeTypesButton;
  Button purgeButton;

  // The box beside the table's names: the settings of the selected volume.
  Control volumeOptionsBox;
  TextField volumeTextField;
  Button volumeOptionMountPathButton;
  Button volumeOptionPathButton{ButtonKind::Label};
  TextField warnAfterTextField;
  Button monitorPresenceCheckbox{ButtonKind::CheckBox};
  Button volumeOptionWarnAfterButton;
  TextField monitorPresenceThresholdTextField{TextField::Role::Entry};
  Button volumeOptionMinutesButton;
  TextField minutesTextField;
  TextField warnAtTextField;
  Button monitorUsageCheckbox{ButtonKind::CheckBox};
  Button volumeOptionWarnAtButton;
  TextField monitorUsageThresholdTextField{TextField::Role::Entry};
  Button volumeOptionPercentageButton;
  TextField percentageTextField;

  // The startup-disk row, the Time Machine row and the automount row.
  TextField bootVolumeLabel;
  Button bootVolumeWarningCheckbox;
  TextField bootVolumeFullTextField{TextField::Role::Entry};
  Button bootVolumeWarningTrailingButton;
  TextField timeMachineLabel;
  Button timeMachineWarningCheckbox;
  TextField timeMachineInactiveTextField{TextField::Role::Entry};
  Button timeMachineWarningTrailingButton;
  Button advancedButton;
  TextField automountLabel;
  Button automountCheckbox;

  // The advanced sheet of Time Machine.
  Window timeMachineAdvancedWindow;
  TextField manualRunLabel;
  TextField manuallyTriggerTextField{TextField::Role::Entry};
  TextField manualRunDaysLabel;
  TextField timeOfDayLabel;
  TextField timeOfDayTextField{TextField::Role::Entry};
  PopUpButton amPmButton;
  Button timeMachineRemovalWarning;
  Button sheetCancelButton;
  Button sheetOkButton;

 private:
  void setFrames();
  void setAccessibleNames();
  void setToolTips();
};

}  // namespace corvane
