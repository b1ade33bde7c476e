// Builds the list of volumes for which alerts can be set, from the saved list and the disk journal, and tells
// duplicates. The volume table rebuilds it, labels and the settings editor ask it, edits write it.
#pragma once

#include <string_view>

#include "options/DiskJournal.h"
#include "options/PaneConnection.h"
#include "options/VolumeFilters.h"
#include "options/VolumeList.h"
#include "pane/PathTable.h"
#include "platform/Platform.h"

namespace corvane {

class VolumeCatalogue {
 public:
  /// All references must outlive the catalogue.
  VolumeCatalogue(Platform& platform, const PathTable& paths, DiskJournal& journal,
                  const PaneConnection& pane)
      : platform_(platform), paths_(paths), journal_(journal), pane_(pane) {}

  /// Reads the journal and the saved list again, adds the volumes that are mounted and offered, and sorts.
  /// New and renamed entries reach the file with the next edit of any entry.
  void rebuild();
  /// Writes the whole list, through the pane.
  void write() const;
  [[nodiscard]] VolumeList& volumes() { return volumes_; }
  [[nodiscard]] const VolumeList& volumes() const { return volumes_; }
  [[nodiscard]] VolumeFilters& filters() { return filters_; }
  [[nodiscard]] const DiskJournal& journal() const { return journal_; }

  /// Whether another entry has the name with another path, or another mounted device carries the name.
  [[nodiscard]] bool isVolumeDuplicatePath(std::string_view name, std::string_view path) const;
  /// The saved list is there and no readable list: it counts as empty, and the log says so.
  [[nodiscard]] bool isSavedListUnreadable() const { return isSavedListUnreadable_; }

 private:
  [[nodiscard]] Array readSavedList();
  [[nodiscard]] bool isNameOfOtherEntry(std::string_view name, std::string_view path) const;
  [[nodiscard]] bool isNameOfOtherMountedDevice(std::string_view name, std::string_view path) const;

  Platform& platform_;
  const PathTable& paths_;
  DiskJournal& journal_;
  const PaneConnection& pane_;
  VolumeFilters filters_;
  VolumeList volumes_;
  bool isSavedListUnreadable_ = false;
};

}  // namespace corvane
