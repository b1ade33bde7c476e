// The box beside the volume table: shows the settings of the selected volume, and writes the whole list at
// once after every edit.
#pragma once

#include "options/JournalDaemon.h"
#include "options/OptionsTabView.h"
#include "options/PaneConnection.h"
#include "options/VolumeCatalogue.h"

namespace corvane {

class VolumeSettingsEditor {
 public:
  /// All must outlive the editor.
  VolumeSettingsEditor(OptionsTabView& view, VolumeCatalogue& catalogue, const JournalDaemon& daemon,
                       const PaneConnection& pane)
      : view_(view), catalogue_(catalogue), daemon_(daemon), pane_(pane) {}

  /// Shows, hides, enables and fills the controls by the selection and the lock.
  void refreshVolumeControls();
  void toggleMonitorPresenceCheckbox(const Button& sender);
  void toggleMonitorUsageCheckbox(const Button& sender);
  /// Every keystroke in one of the threshold fields. The list is written also when the value was refused.
  void controlTextDidChange(TextField& field);
  /// Lays the box over the table's area to the right of the name column, below the header.
  void positionVolumeOptions();

 private:
  [[nodiscard]] Dictionary selectedEntry() const;
  void showEntry(const Dictionary& entry);
  void showThresholds(const Dictionary& entry);
  [[nodiscard]] bool isShownAlready(const Dictionary& entry) const;
  void setMonitored(const char* key, const Button& sender);
  void setThreshold(const char* key, std::int32_t value, TextField& field);
  void hideBoxControls(bool hidden);

  OptionsTabView& view_;
  VolumeCatalogue& catalogue_;
  const JournalDaemon& daemon_;
  const PaneConnection& pane_;
  Dictionary shown_;                // the entry whose settings were shown last
  bool shownIsTheOnlyOne_ = false;  // with its name and path, when it was shown
};

}  // namespace corvane
