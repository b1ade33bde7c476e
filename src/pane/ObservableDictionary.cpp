#include "pane/ObservableDictionary.h"

#include <algorithm>

namespace corvane {

void ObservableDictionary::set(const std::string& key, PropertyList value) {
  contents_.set(key, value);
  // An observer may add or remove registrations while it is told, so each is looked up again before its turn.
  const auto registered = observers_;
  for (const auto& [observedKey, observer] : registered) {
    if (observedKey == key && isObservedBy(*observer, key)) observer->observeValueForKey(key, value);
  }
}

void ObservableDictionary::removeObserver(KeyObserver& observer, const std::string& key) {
  const auto found = std::find(observers_.begin(), observers_.end(), std::pair(key, &observer));
  if (found != observers_.end()) observers_.erase(found);
}

bool ObservableDictionary::isObservedBy(const KeyObserver& observer, const std::string& key) const {
  return std::any_of(observers_.begin(), observers_.end(),
                     [&](const auto& entry) { return entry.second == &observer && entry.first == key; });
}

}  // namespace corvane
