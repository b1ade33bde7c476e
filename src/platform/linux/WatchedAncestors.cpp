#include "platform/linux/WatchedAncestors.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <utility>

#include <sys/inotify.h>

#include "values/Text.h"

namespace corvane {
namespace {

constexpr int kMostLinks = 40;  // the kernel's own limit for one path

/// The parts of a path, without empty ones and ".".
std::deque<std::string> partsOf(const std::string& path) {
  std::deque<std::string> parts;
  for (auto& part : split(path, '/')) {
    if (!part.empty() && part != ".") parts.push_back(std::move(part));
  }
  return parts;
}

std::string parentOf(const std::string& folder) {
  const auto slash = folder.rfind('/');
  return slash == 0 ? "/" : folder.substr(0, slash);
}

}  // namespace

void WatchedAncestors::follow() {
  Steps steps;
  for (const auto& root : roots_) followOne(root, steps);
  for (const auto& [watch, names] : steps_) {
    if (steps.count(watch) == 0) watches_.remove(watch);
  }
  steps_ = std::move(steps);
}

void WatchedAncestors::followOne(const std::string& root, Steps& steps) {
  std::deque<std::string> parts = partsOf(root);
  std::string folder = "/";
  int links = 0;
  while (!parts.empty()) {
    const std::string part = std::move(parts.front());
    parts.pop_front();
    if (part == "..") {
      folder = parentOf(folder);
      continue;
    }
    // Watched before it is looked at, so that no change falls in between. A folder that we may pass but not
    // read can't be watched; the way goes on below it.
    const auto added = watches_.add(folder, FolderWatches::Links::Refuse);
    exhausted_ = exhausted_ || added.exhausted;
    if (added.watch >= 0) steps[added.watch].insert(part);
    const auto entry = watches_.lookAt(entryPath(folder, part));
    if (entry.kind == FolderWatches::Entry::Kind::Folder) {
      folder = entryPath(folder, part);
    } else if (entry.kind == FolderWatches::Entry::Kind::Link && ++links <= kMostLinks) {
      if (entry.target.front() == '/') folder = "/";
      auto target = partsOf(entry.target);
      std::move(parts.begin(), parts.end(), std::back_inserter(target));
      parts = std::move(target);
    } else {
      return;  // nothing there, or no folder: what comes to this name will tell
    }
  }
}

bool WatchedAncestors::concerns(const InotifyEvent& event) const {
  const auto names = steps_.find(event.watch);
  if (names == steps_.end()) return false;
  // Without a name the event is about the folder itself: the end of its watch.
  if (event.name.empty()) return (event.mask & (IN_IGNORED | IN_UNMOUNT)) != 0;
  return names->second.count(std::string(event.name)) != 0;
}

}  // namespace corvane
