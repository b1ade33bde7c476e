// A dictionary whose keys can be observed: the live contents of a settings store. The store that owns it
// observes the keys of its file, bindings observe the keys of their controls.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/PropertyList.h"

namespace corvane {

class KeyObserver {
 public:
  virtual ~KeyObserver() = default;
  /// The value under the key was set or removed; `newValue` is nothing when it was removed.
  virtual void observeValueForKey(const std::string& key, const PropertyList& newValue) = 0;
};

class ObservableDictionary {
 public:
  /// The owner observes every key of these contents and outlives the dictionary.
  ObservableDictionary(Dictionary contents, KeyObserver& owner)
      : contents_(std::move(contents)), owner_(owner) {}
  ObservableDictionary(const ObservableDictionary&) = delete;
  ObservableDictionary& operator=(const ObservableDictionary&) = delete;

  /// The whole contents, for reading and for writing to a file.
  [[nodiscard]] const Dictionary& contents() const { return contents_; }
  [[nodiscard]] PropertyList value(std::string_view key) const { return contents_.value(key); }
  [[nodiscard]] bool contains(std::string_view key) const { return contents_.contains(key); }
  [[nodiscard]] bool empty() const { return contents_.empty(); }

  /// Sets the value (nothing removes the key) and tells the owner, if it observes the key, then every other
  /// observer of it. A key that comes in by this is not observed by the owner.
  void set(const std::string& key, PropertyList value);
  /// The same for a key that the owner observes from now on, also where it is new.
  void setObserved(const std::string& key, PropertyList value);
  /// Sets the value without telling anybody: for an observer that completes a change while it is being
  /// reported.
  void setQuietly(const std::string& key, PropertyList value) { contents_.set(key, std::move(value)); }
  /// Takes over every entry of the other dictionary, all of which the owner then observes; it is not told.
  /// The other observers hear of each value that became another object. Costs the sum of both sizes.
  void replaceFrom(const Dictionary& fresh);

  /// One registration; removing one that does not exist does nothing.
  void addObserver(KeyObserver& observer, const std::string& key) { observers_[key].push_back(&observer); }
  void removeObserver(KeyObserver& observer, std::string_view key);

 private:
  void setAndTell(const std::string& key, PropertyList value);
  [[nodiscard]] bool isObservedBy(const KeyObserver& observer, std::string_view key) const;
  void tellObservers(const std::string& key, const PropertyList& newValue);

  Dictionary contents_;
  KeyObserver& owner_;
  std::set<std::string, std::less<>> unobserved_;  // the few keys that the owner does not observe
  std::set<std::string, std::less<>> removed_;     // keys that are not new when they come back
  std::map<std::string, std::vector<KeyObserver*>, std::less<>> observers_;  // without the owner
};

}  // namespace corvane
