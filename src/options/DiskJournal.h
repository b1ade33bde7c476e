// The disk journal as the volume list asks it: which device a volume is, and whether it is mounted now. A
// volume is known by its name and its mount point together. Every question walks the journal's devices anew;
// no index of them is kept, so an answer can never be older than the store's contents.
#pragma once

#include <string_view>

#include "pane/SettingsFile.h"
#include "values/PropertyList.h"

namespace corvane {

class DiskJournal {
 public:
  /// The store must outlive the journal.
  explicit DiskJournal(SettingsFile& diskJournald) : diskJournald_(diskJournald) {}

  /// Reads the journal again.
  void refresh() { diskJournald_.refresh(); }

  /// Device identifier to array of descriptions; empty when the journal has none.
  [[nodiscard]] Dictionary devices() const;
  /// The identifiers of the devices that are mounted now.
  [[nodiscard]] Array mountedDevices() const;
  /// What the journal says last of a device: the last element of its array, if that is a dictionary.
  [[nodiscard]] static Dictionary currentDescription(const PropertyList& descriptions);

  /// The identifier of the first device whose current description has exactly this name and mount point;
  /// empty when there is none. Valid while the journal is not refreshed.
  [[nodiscard]] std::string_view volumeIdForNamePath(std::string_view name, std::string_view path) const;
  /// Whether the device is mounted now; the empty identifier is not.
  [[nodiscard]] bool isVolumePresent(std::string_view identifier) const;
  [[nodiscard]] bool isVolumePresentPath(std::string_view name, std::string_view path) const;

 private:
  SettingsFile& diskJournald_;
};

}  // namespace corvane
