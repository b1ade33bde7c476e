// The volume table's acts: rebuilding the list with the selection kept, removing an entry, and the switch
// that shows system volumes.
#pragma once

#include "options/JournalDaemon.h"
#include "options/OptionsTabView.h"
#include "options/PaneConnection.h"
#include "options/VolumeCatalogue.h"

namespace corvane {

class VolumeTable {
 public:
  /// All must outlive this.
  VolumeTable(OptionsTabView& view, VolumeCatalogue& catalogue, const JournalDaemon& daemon,
              const PaneConnection& pane)
      : view_(view), catalogue_(catalogue), daemon_(daemon), pane_(pane) {}

  /// Rebuilds the list, reloads the table and selects the same volume again, else the first one. While the
  /// journal's daemon is down the old list stays and the hint line says what to report.
  void refreshVolumes();
  /// Removes the selected entry from the list and the file.
  void purgeVolume();
  /// Shows or hides system volumes. Every new tab starts with them hidden.
  void toggleShowAllVolumeTypes();

 private:
  OptionsTabView& view_;
  VolumeCatalogue& catalogue_;
  const JournalDaemon& daemon_;
  const PaneConnection& pane_;
};

}  // namespace corvane
