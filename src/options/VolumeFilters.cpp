#include "options/VolumeFilters.h"

#include <algorithm>
#include <array>

#include "options/JournalKeys.h"
#include "pane/PathTable.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

constexpr std::array<std::string_view, 6> kOrdinaryKinds{"acfs", "apfs", "exfat", "hfs", "msdos", "zfs"};
/// One byte under 1 GiB: a recovery volume up to this size is the system's own.
constexpr std::int32_t kLargestSystemRecovery = 1073741823;

}  // namespace

bool VolumeFilters::isRootOrNetworkVolume(std::string_view path) { return path == system_volume::kRoot; }

bool VolumeFilters::showVolumeType(std::string_view kind) const {
  return showAllVolumeTypes_ || std::ranges::find(kOrdinaryKinds, kind) != kOrdinaryKinds.end();
}

bool VolumeFilters::isNormalVolumeFromMountPathWithSize(std::string_view path, std::int32_t size) const {
  if (showAllVolumeTypes_) return true;
  if (path == system_volume::kVm || path == system_volume::kPreboot) return false;
  if (path.starts_with(system_volume::kSystemVolumesPrefix)) return false;
  return path != system_volume::kRecovery || size > kLargestSystemRecovery;
}

bool VolumeFilters::isOffered(const Dictionary& description) const {
  const std::string* name = description.string(journal_key::kVolumeName);
  const std::string* path = description.string(journal_key::kVolumePath);
  const std::string* kind = description.string(journal_key::kVolumeKind);
  if (name == nullptr || path == nullptr || kind == nullptr) return false;
  return !isRootOrNetworkVolume(*path) && showVolumeType(*kind) &&
         isNormalVolumeFromMountPathWithSize(*path, intValue(description.value(journal_key::kMediaSize)));
}

}  // namespace corvane
