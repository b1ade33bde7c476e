#include "pane/ObservableDictionary.h"

#include <algorithm>

namespace corvane {

void ObservableDictionary::set(const std::string& key, PropertyList value) {
  contents_.set(key, value);
  const auto found = observers_.find(key);
  if (found == observers_.end()) return;
  if (found->second.size() == 1) {
    found->second.front()->observeValueForKey(key, value);
    return;
  }
  // An observer may add or remove registrations while it is told, so each is looked up again before its turn.
  const std::vector<KeyObserver*> registered = found->second;
  for (KeyObserver* observer : registered) {
    if (isObservedBy(*observer, key)) observer->observeValueForKey(key, value);
  }
}

void ObservableDictionary::removeObserver(KeyObserver& observer, std::string_view key) {
  const auto found = observers_.find(key);
  if (found == observers_.end()) return;
  const auto position = std::find(found->second.begin(), found->second.end(), &observer);
  if (position != found->second.end()) found->second.erase(position);
}

bool ObservableDictionary::isObservedBy(const KeyObserver& observer, std::string_view key) const {
  const auto found = observers_.find(key);
  return found != observers_.end() &&
         std::find(found->second.begin(), found->second.end(), &observer) != found->second.end();
}

}  // namespace corvane
