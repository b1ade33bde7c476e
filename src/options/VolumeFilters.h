// Which mounted volumes are offered at all: system volumes and unusual file systems only when the user asks
// for them, the root volume never.
#pragma once

#include <cstdint>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

class VolumeFilters {
 public:
  [[nodiscard]] bool showAllVolumeTypes() const { return showAllVolumeTypes_; }
  void setShowAllVolumeTypes(bool showAll) { showAllVolumeTypes_ = showAll; }

  /// True for the root volume only, whatever the name says: network volumes are not told apart, and that is
  /// intended.
  [[nodiscard]] static bool isRootOrNetworkVolume(std::string_view path);
  /// Whether volumes with this file system are shown.
  [[nodiscard]] bool showVolumeType(std::string_view kind) const;
  /// False for the mount points of system volumes, unless all are shown. The size, in bytes, is cut to 32
  /// bits, so that a large medium may read as small or negative; this is intended.
  [[nodiscard]] bool isNormalVolumeFromMountPathWithSize(std::string_view path, std::int32_t size) const;

  /// All of these rules on a device's description, which must have name, path and kind.
  [[nodiscard]] bool isOffered(const Dictionary& description) const;

 private:
  bool showAllVolumeTypes_ = false;
};

}  // namespace corvane
