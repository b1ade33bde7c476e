// The volume entries in row order: what the saved list holds, edited in place and written back whole.
// Elements of the saved list that are not dictionaries are no rows, but stay where they stood when the list
// is written.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TextComparison.h"
#include "values/PropertyList.h"

namespace corvane {

/// Of an entry; empty when it has none. Valid until the entry's value is changed.
[[nodiscard]] std::string_view volumeName(const Dictionary& entry);
[[nodiscard]] std::string_view volumePath(const Dictionary& entry);
/// An entry without a name has no name, not even the empty one.
[[nodiscard]] bool hasName(const Dictionary& entry, std::string_view name);

class VolumeList {
 public:
  /// Takes the entries of a saved list; nothing gives an empty list.
  void setSavedList(const Array& saved);
  /// The list as it is written to the file.
  [[nodiscard]] Array contents() const;

  [[nodiscard]] std::size_t size() const { return entries_.size(); }
  [[nodiscard]] bool empty() const { return entries_.empty(); }
  /// Handles to the entries, through which they are edited in place.
  [[nodiscard]] const std::vector<Dictionary>& entries() const { return entries_; }
  /// The entry of a row; empty outside the list.
  [[nodiscard]] Dictionary entryAtRow(int row) const;
  /// The first row with exactly this name and path.
  [[nodiscard]] std::optional<int> rowOf(std::string_view name, std::string_view path) const;

  /// Adds an entry with the settings of a new volume.
  void appendNewVolume(std::string_view name, std::string_view path);
  void removeRow(int row);
  /// By name regardless of case; entries without a name come first, equal names keep their order.
  void sortByName(TextComparison& texts);

 private:
  std::vector<Dictionary> entries_;
  /// With the index at which each stood in the saved list, in ascending order.
  std::vector<std::pair<std::size_t, PropertyList>> otherElements_;
};

}  // namespace corvane
