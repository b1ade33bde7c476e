#include "pane/ObservableDictionary.h"

#include <algorithm>

namespace corvane {

void ObservableDictionary::set(const std::string& key, PropertyList value) {
  if (!contents_.contains(key) && !removed_.contains(key)) unobserved_.insert(key);
  setAndTell(key, std::move(value));
}

void ObservableDictionary::setObserved(const std::string& key, PropertyList value) {
  unobserved_.erase(key);
  setAndTell(key, std::move(value));
}

// By value: the caller's may lie in what is replaced here.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void ObservableDictionary::setAndTell(const std::string& key, PropertyList value) {
  if (!value) removed_.insert(key);
  contents_.set(key, value);
  if (!unobserved_.contains(key)) owner_.observeValueForKey(key, value);
  tellObservers(key, value);
}

void ObservableDictionary::replaceFrom(const Dictionary& fresh) {
  std::vector<std::pair<std::string, PropertyList>> former;  // of the keys that somebody else observes
  for (const auto& [key, observers] : observers_) {
    if (fresh.contains(key)) former.emplace_back(key, contents_.value(key));
  }
  contents_.setAll(fresh);
  std::erase_if(unobserved_, [&fresh](const std::string& key) { return fresh.contains(key); });
  for (const auto& [key, value] : former) {
    const PropertyList now = contents_.value(key);
    if (!now.isSameObject(value)) tellObservers(key, now);
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

void ObservableDictionary::tellObservers(const std::string& key, const PropertyList& newValue) {
  const auto found = observers_.find(key);
  if (found == observers_.end()) return;
  // An observer may add or remove registrations while it is told, so each is looked up again before its turn.
  const std::vector<KeyObserver*> registered = found->second;
  for (KeyObserver* observer : registered) {
    if (isObservedBy(*observer, key)) observer->observeValueForKey(key, newValue);
  }
}

}  // namespace corvane
