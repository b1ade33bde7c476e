// The ways from "/" to the roots of a directory stream, with a watch on every folder that they pass, links
// followed: tells when a root may have come, gone or become another folder, although nothing of it need exist
// now. Makes no system call.
#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/FolderWatches.h"
#include "platform/linux/InotifyEvents.h"

namespace corvane {

class WatchedAncestors {
 public:
  WatchedAncestors(FolderWatches& watches, std::vector<std::string> roots)
      : watches_(watches), roots_(std::move(roots)) {}

  /// Follows the ways as they are now.
  void follow();
  /// Whether the event, other than an overflow, is about a step of some way; then it is time to follow them
  /// again.
  [[nodiscard]] bool concerns(const InotifyEvent& event) const;
  /// The system had no watch left for some folder.
  [[nodiscard]] bool isExhausted() const { return exhausted_; }

 private:
  /// From the watch of a folder to the names that matter in it.
  using Steps = std::unordered_map<int, std::set<std::string>>;

  void followOne(const std::string& root, Steps& steps);

  FolderWatches& watches_;
  std::vector<std::string> roots_;
  Steps steps_;
  bool exhausted_ = false;
};

}  // namespace corvane
