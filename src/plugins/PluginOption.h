// One option of a plug-in, read from its dictionary with the types of the format: a value of another type
// counts as absent. A view that shares the catalogue's dictionary; made wherever a row is looked at.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "plugins/SettingTypes.h"
#include "values/PropertyList.h"

namespace corvane {

class PluginOption {
 public:
  /// No option.
  PluginOption() = default;
  explicit PluginOption(Dictionary dictionary) : dictionary_(std::move(dictionary)) {}
  explicit operator bool() const { return static_cast<bool>(dictionary_); }
  [[nodiscard]] const Dictionary& dictionary() const { return dictionary_; }

  // Texts are empty when absent. A title of another type is the text that stands for its value.
  [[nodiscard]] std::string title() const;
  [[nodiscard]] const std::string& hint() const;
  [[nodiscard]] const std::string& type() const;
  [[nodiscard]] bool isOfType(std::string_view wanted) const { return type() == wanted; }
  [[nodiscard]] const SettingType& settingType() const { return setting_type::named(type()); }
  [[nodiscard]] const std::string& storageKey() const;
  /// The path of the storage file on the client, as it stands in the definition.
  [[nodiscard]] const std::string& storagePath() const;
  /// The parameter of the type; nothing when absent.
  [[nodiscard]] PropertyList value() const;

  // The objects that stand as rows below the option; nothing when absent. Without a storage key that is a
  // text nothing is read or stored for the option.
  [[nodiscard]] PropertyList storageKeyObject() const;
  [[nodiscard]] PropertyList detailsUrl() const;

  // What the catalogue has attached; nothing when the storage file holds none.
  [[nodiscard]] Dictionary checkboxes() const;
  void setCheckboxes(const Dictionary& checkboxes);
  [[nodiscard]] Array fileFolderArray() const;
  void setFileFolderArray(const Array& list);
  /// The elements of the list that are shown: the texts.
  [[nodiscard]] Array fileFolderRows() const;

 private:
  Dictionary dictionary_;
};

}  // namespace corvane
