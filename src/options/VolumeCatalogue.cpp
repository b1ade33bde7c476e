#include "options/VolumeCatalogue.h"

#include <algorithm>
#include <string>

#include "options/JournalKeys.h"
#include "options/VolumeKeys.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kUnreadableList =
    "The volume settings in %@ are not a readable list and count as empty";

}  // namespace

void VolumeCatalogue::rebuild() {
  journal_.refresh();
  volumes_.setSavedList(readSavedList());
  const Dictionary devices = journal_.devices();
  for (const auto& [identifier, descriptions] : devices.entries()) {
    const Dictionary description = DiskJournal::currentDescription(descriptions);
    if (!filters_.isOffered(description)) continue;
    mergeOfferedVolume(*description.string(journal_key::kVolumeName),
                       *description.string(journal_key::kVolumePath));
  }
  volumes_.sortByName(platform_.texts);
}

void VolumeCatalogue::write() const { pane_.setPlistFileValues(paths_.volumesSettings, volumes_.contents()); }

Array VolumeCatalogue::readSavedList() const {
  Array saved = platform_.propertyLists.read(paths_.volumesSettings).asArray();
  if (!saved && platform_.files.exists(paths_.volumesSettings)) {
    platform_.log.write(formatText(kUnreadableList, {paths_.volumesSettings}));
  }
  return saved;
}

void VolumeCatalogue::mergeOfferedVolume(std::string_view name, std::string_view path) {
  bool matched = false;
  for (const Dictionary& entry : volumes_.entries()) {
    const std::string* savedName = entry.string(volume_key::kName);
    if (savedName == nullptr) continue;
    if (*savedName == name && volumePath(entry) == path) matched = true;
    // An entry may have been saved under the mount point as its name, before the volume's name was known. It
    // now gets the name.
    if (*savedName == path) {
      Dictionary renamed = entry;
      renamed.set(volume_key::kName, PropertyList::string(std::string(name)));
      renamed.set(volume_key::kPath, PropertyList::string(std::string(path)));
      matched = true;
    }
  }
  if (!matched && journal_.isVolumePresentPath(name, path)) volumes_.appendNewVolume(name, path);
}

bool VolumeCatalogue::isVolumeDuplicatePath(std::string_view name, std::string_view path) const {
  return isNameOfOtherEntry(name, path) || isNameOfOtherMountedDevice(name, path);
}

bool VolumeCatalogue::isNameOfOtherEntry(std::string_view name, std::string_view path) const {
  return std::ranges::any_of(volumes_.entries(), [&](const Dictionary& entry) {
    return hasName(entry, name) && volumePath(entry) != path;
  });
}

bool VolumeCatalogue::isNameOfOtherMountedDevice(std::string_view name, std::string_view path) const {
  if (journal_.mountedDevices().empty()) return false;
  const Dictionary devices = journal_.devices();
  return std::ranges::any_of(devices.entries(), [&](const auto& device) {
    // The name is compared first: it is the cheapest of the conditions and rules out nearly every device.
    const Dictionary description = DiskJournal::currentDescription(device.second);
    const std::string* otherName = description.string(journal_key::kVolumeName);
    if (otherName == nullptr || *otherName != name) return false;
    // Name and path together are one device, so another path is another device than the volume's own.
    const std::string* otherPath = description.string(journal_key::kVolumePath);
    if (otherPath == nullptr || *otherPath == path) return false;
    return journal_.isVolumePresentPath(*otherName, *otherPath);
  });
}

}  // namespace corvane
