// The folders at and below the roots of a directory stream, each with its watch: turns events of watches into
// the directories to report and keeps up with folders that come, go and move. Makes no system call and knows
// no time.
//
// After any hint that a folder has changed its place, what stands at the path is compared with what was
// known: the order in which events and looks at the present state mix does not matter then.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/linux/FolderWatches.h"
#include "platform/linux/InotifyEvents.h"

namespace corvane {

class WatchedTree {
 public:
  using Report = std::function<void(const std::string& directory)>;

  /// Roots are absolute paths without a trailing slash. Folders are reported as spelled below their root.
  WatchedTree(FolderWatches& watches, std::vector<std::string> roots, Report report);

  /// Watches what is there now; reports nothing.
  void build();
  /// Compares the roots with what was known of them; reports those that came, went or became other folders.
  void reconcileRoots();
  /// One event other than an overflow.
  void handle(const InotifyEvent& event);

  /// The system had no watch left for some folder: from now on changes are missed.
  [[nodiscard]] bool isExhausted() const { return exhausted_; }
  [[nodiscard]] std::size_t size() const { return folders_.size(); }

 private:
  using Folders = std::map<std::string, int>;  // folder to watch; what is below a folder follows it directly

  enum class Reporting { NonEmptyFolders, Nothing };

  std::optional<int> reconcile(const std::string& folder, Reporting reporting);
  [[nodiscard]] std::vector<std::string> scanOne(const std::string& folder, int watch, Reporting reporting);
  void insert(const std::string& folder, int watch);
  void dropTree(const std::string& folder);
  Folders::iterator drop(Folders::iterator folder);
  void watchHasEnded(int watch, bool unmounted);
  [[nodiscard]] std::vector<std::string> foldersOf(int watch) const;

  FolderWatches& watches_;
  std::map<std::string, std::optional<int>> roots_;  // with the watch that was last seen there
  Report report_;
  Folders folders_;
  std::unordered_multimap<int, const std::string*> foldersOfWatches_;  // keys of folders_
  bool exhausted_ = false;
};

}  // namespace corvane
