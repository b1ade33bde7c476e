#include "options/VolumeCatalogue.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "options/JournalKeys.h"
#include "options/VolumeMerge.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kUnreadableList =
    "The volume settings in %@ are not a readable list and count as empty";

}  // namespace

void VolumeCatalogue::rebuild() {
  journal_.refresh();
  volumes_.setSavedList(readSavedList());
  VolumeMerge merge(volumes_, journal_);
  const Dictionary devices = journal_.devices();
  for (const auto& [identifier, descriptions] : devices.entries()) {
    const Dictionary description = DiskJournal::currentDescription(descriptions);
    if (!filters_.isOffered(description)) continue;
    merge.takeIn(*description.string(journal_key::kVolumeName),
                 *description.string(journal_key::kVolumePath));
  }
  volumes_.sortByName(platform_.texts);
}

void VolumeCatalogue::write() const { pane_.setPlistFileValues(paths_.volumesSettings, volumes_.contents()); }

Array VolumeCatalogue::readSavedList() {
  Array saved = platform_.propertyLists.read(paths_.volumesSettings).asArray();
  isSavedListUnreadable_ = !saved && platform_.files.exists(paths_.volumesSettings);
  if (isSavedListUnreadable_) {
    platform_.log.write(formatText(kUnreadableList, {paths_.volumesSettings}));
  }
  return saved;
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
  const Array mounted = journal_.mountedDevices();
  if (mounted.empty()) return false;
  // The first device of each identity is the volume; name and path together are one device, so another path
  // is another device than the volume's own.
  std::unordered_map<std::string_view, std::string_view> namesakes;  // from the path to the identifier
  const Dictionary devices = journal_.devices();
  for (const auto& [identifier, descriptions] : devices.entries()) {
    const Dictionary description = DiskJournal::currentDescription(descriptions);
    const std::string* otherName = description.string(journal_key::kVolumeName);
    if (otherName == nullptr || *otherName != name) continue;
    const std::string* otherPath = description.string(journal_key::kVolumePath);
    if (otherPath != nullptr && *otherPath != path) namesakes.try_emplace(*otherPath, identifier);
  }
  if (namesakes.empty()) return false;
  std::unordered_set<std::string_view> identifiers;
  for (const auto& [otherPath, identifier] : namesakes) identifiers.insert(identifier);
  return std::ranges::any_of(mounted.elements(), [&](const PropertyList& device) {
    const std::string* identifier = device.asString();
    return identifier != nullptr && !identifier->empty() && identifiers.contains(*identifier);
  });
}

}  // namespace corvane
