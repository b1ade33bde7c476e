// One rebuild of the volume list: takes the offered volumes into the saved entries. It looks everything up in
// tables that are made for this rebuild and end with it; no index is kept from one rebuild to the next.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "options/DiskJournal.h"
#include "options/VolumeList.h"

namespace corvane {

class VolumeMerge {
 public:
  /// Both must outlive the merge, and the journal must not be refreshed meanwhile.
  VolumeMerge(VolumeList& volumes, const DiskJournal& journal);

  /// Entries that were saved under the mount point as their name get the volume's name; a mounted volume that
  /// has no entry gets a new one.
  void takeIn(std::string_view name, std::string_view path);

 private:
  using Identity = std::pair<std::string, std::string>;  // name and path

  void enter(std::size_t row);
  bool renameEntriesNamed(const std::string& former, const std::string& name, const std::string& path);

  VolumeList& volumes_;
  std::set<Identity> mounted_;
  std::unordered_map<std::string, std::vector<std::size_t>> rowsOfNames_;
  std::multiset<Identity> identities_;  // of the entries that have a name
};

}  // namespace corvane
