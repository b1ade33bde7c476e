// The settings store: the contents of one property-list file as a live dictionary, edited key by key and
// written whole through its delegate after every change. The pane keeps two stores, the Options tab four, the
// Configuration tab one.
//
// A store whose file can't be read has no values (`validValues` is false). It is never repaired: its owner,
// a `SettingsFile`, makes a new one over the same file.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "pane/ObservableDictionary.h"
#include "pane/PaneServices.h"
#include "platform/Files.h"
#include "platform/PropertyListFiles.h"

namespace corvane {

class QLDefaultsController final : private KeyObserver {
 public:
  /// Reads the file at the absolute path.
  QLDefaultsController(std::string file, Files& files, PropertyListFiles& propertyLists);
  ~QLDefaultsController() override = default;

  /// The live contents; null while the store is invalid. A change of an observed key commits.
  [[nodiscard]] ObservableDictionary* values() { return values_.get(); }
  [[nodiscard]] const ObservableDictionary* values() const { return values_.get(); }
  /// The value under the key; nothing when it is absent or the store is invalid.
  [[nodiscard]] PropertyList value(std::string_view key) const;
  /// The edit of a bound control (nothing removes the key): one notification and one commit, also for a key
  /// that the file did not hold so far.
  void setValueForKey(const std::string& key, PropertyList value);

  /// Reads the file again. Adds and replaces values, never removes one, never commits.
  void refreshValues();
  /// Hands the whole dictionary to the delegate.
  void commitChanges();
  [[nodiscard]] bool validValues() const { return values_ != nullptr; }
  /// Whether the file existed at creation or at the last refresh.
  [[nodiscard]] bool fileExists() const { return fileExists_; }
  void setFileExists(bool exists) { fileExists_ = exists; }
  /// Who writes the file; must outlive the store. Null: changes are not written.
  void setDelegate(PlistWriter* delegate) { delegate_ = delegate; }

  /// "values.%@" with the key.
  [[nodiscard]] static std::string keyPath(std::string_view key);
  /// The change of one key path that the store observes.
  void observeValueForKeyPath(const std::string& keyPath);

 private:
  void observeValueForKey(const std::string& key, const PropertyList& newValue) override;

  std::string file_;
  Files& files_;
  PropertyListFiles& propertyLists_;
  std::unique_ptr<ObservableDictionary> values_;
  bool fileExists_ = false;
  PlistWriter* delegate_ = nullptr;
};

}  // namespace corvane
