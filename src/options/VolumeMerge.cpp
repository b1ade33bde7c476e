#include "options/VolumeMerge.h"

#include <unordered_set>

#include "options/JournalKeys.h"
#include "options/VolumeKeys.h"

namespace corvane {
namespace {

/// The identities of the volumes that are mounted now. A volume is the first device that carries its name and
/// path.
std::set<std::pair<std::string, std::string>> mountedVolumes(const DiskJournal& journal) {
  const Array mounted = journal.mountedDevices();
  std::unordered_set<std::string_view> identifiers;
  for (const PropertyList& element : mounted.elements()) {
    const std::string* identifier = element.asString();
    if (identifier != nullptr && !identifier->empty()) identifiers.insert(*identifier);
  }
  std::set<std::pair<std::string, std::string>> all;
  std::set<std::pair<std::string, std::string>> present;
  const Dictionary devices = journal.devices();
  for (const auto& [identifier, descriptions] : devices.entries()) {
    const Dictionary description = DiskJournal::currentDescription(descriptions);
    const std::string* name = description.string(journal_key::kVolumeName);
    const std::string* path = description.string(journal_key::kVolumePath);
    if (name == nullptr || path == nullptr) continue;
    const bool isFirst = all.emplace(*name, *path).second;
    if (isFirst && identifiers.contains(identifier)) present.emplace(*name, *path);
  }
  return present;
}

}  // namespace

VolumeMerge::VolumeMerge(VolumeList& volumes, const DiskJournal& journal)
    : volumes_(volumes), mounted_(mountedVolumes(journal)) {
  for (std::size_t row = 0; row < volumes_.size(); ++row) enter(row);
}

void VolumeMerge::enter(std::size_t row) {
  const Dictionary& entry = volumes_.entries()[row];
  const std::string* name = entry.string(volume_key::kName);
  if (name == nullptr) return;
  rowsOfNames_[*name].push_back(row);
  identities_.emplace(*name, volumePath(entry));
}

void VolumeMerge::takeIn(std::string_view nameInJournal, std::string_view pathInJournal) {
  const std::string name(nameInJournal);
  const std::string path(pathInJournal);
  bool matched = identities_.contains({name, path});
  // An entry may have been saved under the mount point as its name, before the volume's name was known. It
  // now gets the name.
  if (renameEntriesNamed(path, name, path)) matched = true;
  if (matched || !mounted_.contains({name, path})) return;
  volumes_.appendNewVolume(name, path);
  enter(volumes_.size() - 1);
}

/// Whether there were any.
bool VolumeMerge::renameEntriesNamed(const std::string& former, const std::string& name,
                                     const std::string& path) {
  const auto found = rowsOfNames_.find(former);
  if (found == rowsOfNames_.end()) return false;
  const std::vector<std::size_t> rows = std::move(found->second);
  rowsOfNames_.erase(found);
  for (const std::size_t row : rows) {
    Dictionary entry = volumes_.entries()[row];
    identities_.erase(identities_.find({former, std::string(volumePath(entry))}));
    entry.set(volume_key::kName, PropertyList::string(name));
    entry.set(volume_key::kPath, PropertyList::string(path));
    enter(row);
  }
  return true;
}

}  // namespace corvane
