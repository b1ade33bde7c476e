#include "options/VolumeList.h"

#include <algorithm>
#include <string>

#include "options/VolumeKeys.h"
#include "values/Text.h"

namespace corvane {
namespace {

std::string_view text(const Dictionary& entry, const char* key) {
  const std::string* value = entry.string(key);
  return value != nullptr ? std::string_view(*value) : std::string_view();
}

}  // namespace

std::string_view volumeName(const Dictionary& entry) { return text(entry, volume_key::kName); }
std::string_view volumePath(const Dictionary& entry) { return text(entry, volume_key::kPath); }

bool hasName(const Dictionary& entry, std::string_view name) {
  const std::string* own = entry.string(volume_key::kName);
  return own != nullptr && *own == name;
}

void VolumeList::setSavedList(const Array& saved) {
  entries_.clear();
  otherElements_.clear();
  for (std::size_t index = 0; index < saved.size(); ++index) {
    const PropertyList& element = saved.elements()[index];
    if (const Dictionary entry = element.asDictionary()) {
      entries_.push_back(entry.shallowCopy());  // equal entries of a binary file may be one object
    } else {
      otherElements_.emplace_back(index, element);
    }
  }
}

Array VolumeList::contents() const {
  std::vector<PropertyList> elements;
  elements.reserve(entries_.size() + otherElements_.size());
  auto other = otherElements_.begin();
  for (const Dictionary& entry : entries_) {
    for (; other != otherElements_.end() && other->first <= elements.size(); ++other) {
      elements.push_back(other->second);
    }
    elements.push_back(entry);
  }
  // The list may have become shorter than where these stood.
  for (; other != otherElements_.end(); ++other) elements.push_back(other->second);
  return Array::fromElements(std::move(elements));
}

Dictionary VolumeList::entryAtRow(int row) const {
  return row >= 0 && static_cast<std::size_t>(row) < entries_.size() ? entries_[static_cast<std::size_t>(row)]
                                                                     : Dictionary();
}

std::optional<int> VolumeList::rowOf(std::string_view name, std::string_view path) const {
  const auto found = std::ranges::find_if(entries_, [&](const Dictionary& entry) {
    return volumeName(entry) == name && volumePath(entry) == path;
  });
  if (found == entries_.end()) return std::nullopt;
  return static_cast<int>(found - entries_.begin());
}

void VolumeList::appendNewVolume(std::string_view name, std::string_view path) {
  entries_.push_back(Dictionary::make({
      {volume_key::kName, PropertyList::string(std::string(name))},
      {volume_key::kPath, PropertyList::string(std::string(path))},
      {volume_key::kMonitorPresence, PropertyList::boolean(false)},
      {volume_key::kPresenceThreshold, PropertyList::integer(volume_key::kNewPresenceThreshold)},
      {volume_key::kMonitorUsage, PropertyList::boolean(false)},
      {volume_key::kUsageThreshold, PropertyList::integer(volume_key::kNewUsageThreshold)},
  }));
}

void VolumeList::removeRow(int row) {
  if (row < 0 || static_cast<std::size_t>(row) >= entries_.size()) return;
  entries_.erase(entries_.begin() + row);
}

void VolumeList::sortByName(TextComparison& texts) {
  std::ranges::stable_sort(entries_, [&](const Dictionary& left, const Dictionary& right) {
    return texts.caseInsensitiveCompare(volumeName(left), volumeName(right)) < 0;
  });
}

}  // namespace corvane
