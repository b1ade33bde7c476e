#include "platform/linux/WatchedTree.h"

#include <utility>

#include <sys/inotify.h>

namespace corvane {

WatchedTree::WatchedTree(FolderWatches& watches, std::vector<std::string> roots, Report report)
    : watches_(watches), report_(std::move(report)) {
  for (auto& root : roots) roots_.emplace(std::move(root), std::nullopt);
}

void WatchedTree::build() {
  for (auto& [root, watch] : roots_) watch = reconcile(root, Reporting::Nothing);
}

void WatchedTree::reconcileRoots() {
  for (auto& [root, watch] : roots_) {
    const std::optional<int> now = reconcile(root, Reporting::NonEmptyFolders);
    if (now != watch) report_(root);
    watch = now;
  }
}

void WatchedTree::handle(const InotifyEvent& event) {
  if ((event.mask & IN_IGNORED) != 0) {
    watchHasEnded(event.watch, false);
  } else if ((event.mask & IN_UNMOUNT) != 0) {
    watchHasEnded(event.watch, true);
  } else if (!event.name.empty()) {
    for (const auto& folder : foldersOf(event.watch)) {
      report_(folder);
      // Links are not entered and need no look.
      if ((event.mask & IN_ISDIR) != 0) reconcile(entryPath(folder, event.name), Reporting::NonEmptyFolders);
    }
  }
}

/// Makes the watches at and below the path what they should be by what stands there now; answers with the
/// watch there.
std::optional<int> WatchedTree::reconcile(const std::string& folder, Reporting reporting) {
  // A root may be reached through a link, nothing else may.
  const auto linksAt = [this](const std::string& path) {
    return roots_.count(path) != 0 ? FolderWatches::Links::Follow : FolderWatches::Links::Refuse;
  };
  std::optional<int> top;
  std::vector<std::string> pending{folder};
  while (!pending.empty()) {
    const std::string path = std::move(pending.back());
    pending.pop_back();
    // Watched before it is read: what is made in between is found by the reading, what is made later by the
    // watch.
    const auto added = watches_.add(path, linksAt(path));
    if (added.exhausted) {
      exhausted_ = true;  // the stream gives this tree up
      return std::nullopt;
    }
    if (path == folder && added.watch >= 0) top = added.watch;
    const auto known = folders_.find(path);
    if (known != folders_.end() && known->second == added.watch) continue;  // the same folder as before
    dropTree(path);
    if (added.watch < 0) continue;
    auto below = scanOne(path, added.watch, reporting);
    pending.insert(pending.end(), std::make_move_iterator(below.begin()),
                   std::make_move_iterator(below.end()));
  }
  return top;
}

std::vector<std::string> WatchedTree::scanOne(const std::string& folder, int watch, Reporting reporting) {
  insert(folder, watch);
  const auto listing = watches_.list(folder);
  if (!listing) return {};  // has gone meanwhile: the end of its watch will tell
  if (!listing->empty && reporting == Reporting::NonEmptyFolders) report_(folder);
  std::vector<std::string> below;
  below.reserve(listing->folders.size());
  for (const auto& name : listing->folders) below.push_back(entryPath(folder, name));
  return below;
}

void WatchedTree::insert(const std::string& folder, int watch) {
  const auto inserted = folders_.emplace(folder, watch).first;
  foldersOfWatches_.emplace(watch, &inserted->first);
}

void WatchedTree::dropTree(const std::string& folder) {
  if (const auto found = folders_.find(folder); found != folders_.end()) drop(found);
  const std::string prefix = entryPath(folder, "");
  auto below = folders_.lower_bound(prefix);
  while (below != folders_.end() && below->first.compare(0, prefix.size(), prefix) == 0) below = drop(below);
}

WatchedTree::Folders::iterator WatchedTree::drop(Folders::iterator folder) {
  const auto [first, last] = foldersOfWatches_.equal_range(folder->second);
  for (auto entry = first; entry != last; ++entry) {
    if (entry->second != &folder->first) continue;
    const int watch = entry->first;
    foldersOfWatches_.erase(entry);
    // The same folder may be known under another path, through a link or a second root.
    if (foldersOfWatches_.count(watch) == 0) watches_.remove(watch);
    break;
  }
  return folders_.erase(folder);
}

/// The kernel has ended the watch: the folder was removed, or its file system was unmounted and another
/// folder stands at the path now.
void WatchedTree::watchHasEnded(int watch, bool unmounted) {
  for (const auto& folder : foldersOf(watch)) {
    const auto slash = folder.rfind('/');
    const std::string parent = slash == 0 ? "/" : folder.substr(0, slash);
    if (unmounted && folders_.count(parent) != 0) report_(parent);
    if (unmounted) report_(folder);
    dropTree(folder);
    reconcile(folder, Reporting::NonEmptyFolders);
  }
}

std::vector<std::string> WatchedTree::foldersOf(int watch) const {
  std::vector<std::string> folders;
  const auto [first, last] = foldersOfWatches_.equal_range(watch);
  for (auto entry = first; entry != last; ++entry) folders.push_back(*entry->second);
  return folders;
}

}  // namespace corvane
