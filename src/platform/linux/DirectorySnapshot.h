// The state of all folders at and below some roots at one moment, small enough to compare with a later one:
// what a directory stream looks at when the system has no watches left.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane {

class DirectorySnapshot {
 public:
  DirectorySnapshot() = default;
  /// Takes the state now. Roots are spelled as for a stream; links below them are not entered.
  explicit DirectorySnapshot(const std::vector<std::string>& roots);
  /// The folders in which something is other now than it was before, those that have come with something in
  /// them, and the roots that have come or gone; sorted.
  [[nodiscard]] std::vector<std::string> changesSince(const DirectorySnapshot& before) const;

 private:
  void take(const std::string& root);

  std::vector<std::string> roots_;
  /// With a fingerprint of the entries; 0 for an empty folder.
  std::unordered_map<std::string, std::uint64_t> folders_;
};

}  // namespace corvane
