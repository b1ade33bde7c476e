// A dictionary whose keys can be observed: the live contents of a settings store. The store observes the keys
// of its file, bindings observe the keys of their controls.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
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
  explicit ObservableDictionary(Dictionary contents) : contents_(std::move(contents)) {}
  ObservableDictionary(const ObservableDictionary&) = delete;
  ObservableDictionary& operator=(const ObservableDictionary&) = delete;

  /// The whole contents, for reading and for writing to a file.
  [[nodiscard]] const Dictionary& contents() const { return contents_; }
  [[nodiscard]] PropertyList value(std::string_view key) const { return contents_.value(key); }
  [[nodiscard]] bool contains(std::string_view key) const { return contents_.contains(key); }
  [[nodiscard]] bool empty() const { return contents_.empty(); }

  /// Sets the value (nothing removes the key) and tells every observer of the key.
  void set(const std::string& key, PropertyList value);
  /// The same without telling anybody: for an observer that completes a change while it is being reported.
  void setQuietly(const std::string& key, PropertyList value) { contents_.set(key, std::move(value)); }

  /// One registration; removing one that does not exist does nothing.
  void addObserver(KeyObserver& observer, const std::string& key) { observers_[key].push_back(&observer); }
  void removeObserver(KeyObserver& observer, std::string_view key);
  [[nodiscard]] bool isObservedBy(const KeyObserver& observer, std::string_view key) const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const noexcept { return std::hash<std::string_view>{}(key); }
  };
  Dictionary contents_;
  std::unordered_map<std::string, std::vector<KeyObserver*>, Hash, std::equal_to<>> observers_;
};

}  // namespace corvane
