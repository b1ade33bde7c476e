#include "options/DiskJournal.h"

#include <algorithm>

#include "options/JournalKeys.h"

namespace corvane {
namespace {

bool isText(const std::string* text, std::string_view expected) {
  return text != nullptr && *text == expected;
}

}  // namespace

Dictionary DiskJournal::devices() const {
  return diskJournald_.store().value(journal_key::kDevices).asDictionary();
}

Array DiskJournal::mountedDevices() const {
  return diskJournald_.store().value(journal_key::kMountedDevices).asArray();
}

Dictionary DiskJournal::currentDescription(const PropertyList& descriptions) {
  return descriptions.asArray().last().asDictionary();
}

std::string_view DiskJournal::volumeIdForNamePath(std::string_view name, std::string_view path) const {
  const Dictionary all = devices();  // the store holds it too, so that the identifier outlives this handle
  for (const auto& [identifier, descriptions] : all.entries()) {
    const Dictionary description = currentDescription(descriptions);
    if (isText(description.string(journal_key::kVolumeName), name) &&
        isText(description.string(journal_key::kVolumePath), path)) {
      return identifier;
    }
  }
  return {};
}

bool DiskJournal::isVolumePresent(std::string_view identifier) const {
  if (identifier.empty()) return false;
  const Array mounted = mountedDevices();
  return std::ranges::any_of(mounted.elements(), [identifier](const PropertyList& device) {
    return isText(device.asString(), identifier);
  });
}

bool DiskJournal::isVolumePresentPath(std::string_view name, std::string_view path) const {
  return isVolumePresent(volumeIdForNamePath(name, path));
}

}  // namespace corvane
