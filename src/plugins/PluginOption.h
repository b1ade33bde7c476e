// One option of a plug-in, read from its dictionary with the types of the format: a value of another type
// counts as absent. A view that shares the catalogue's dictionary; made wherever a row is looked at.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "values/PropertyList.h"

namespace corvane {

class PluginOption {
 public:
  /// No option.
  PluginOption() = default;
  explicit PluginOption(Dictionary dictionary) : dictionary_(std::move(dictionary)) {}
  explicit operator bool() const { return static_cast<bool>(dictionary_); }
  [[nodiscard]] const Dictionary& dictionary() const { return dictionary_; }

  // Texts are empty when absent.
  [[nodiscard]] const std::string& title() const;
  [[nodiscard]] const std::string& hint() const;
  [[nodiscard]] const std::string& type() const;
  [[nodiscard]] bool isOfType(std::string_view wanted) const { return type() == wanted; }
  [[nodiscard]] bool isFileOrFolderList() const;
  [[nodiscard]] const std::string& storageKey() const;
  /// The path of the storage file on the client, without doubled slashes, "." and ".." parts, so that every
  /// rule about how a path begins speaks of the file that is really meant.
  [[nodiscard]] std::string storagePath() const;
  /// The parameter of the type; nothing when absent.
  [[nodiscard]] PropertyList value() const;

  // The objects that stand as rows below the option; nothing when absent.
  [[nodiscard]] PropertyList storageKeyObject() const;
  [[nodiscard]] PropertyList detailsUrl() const;

  // What the catalogue has attached; nothing when the storage file holds none.
  [[nodiscard]] Dictionary checkboxes() const;
  void setCheckboxes(const Dictionary& checkboxes);
  [[nodiscard]] Array fileFolderArray() const;
  void setFileFolderArray(const Array& list);

 private:
  Dictionary dictionary_;
};

/// The value as a list of texts; nothing for any other value, also for an array that holds something else.
[[nodiscard]] Array textList(const PropertyList& value);

}  // namespace corvane
