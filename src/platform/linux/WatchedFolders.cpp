#include "platform/linux/WatchedFolders.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <utility>

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "values/Text.h"

namespace corvane {
namespace {

constexpr int kMostLinks = 40;  // the kernel's own limit for one path

/// The entry of a name has come, gone or become readable.
constexpr std::uint32_t kNames = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_ONLYDIR;
/// IN_EXCL_UNLINK: a file that is still written after its removal is no change of the folder.
constexpr std::uint32_t kContents = kNames | IN_MODIFY | IN_EXCL_UNLINK;
constexpr std::uint32_t kItself = IN_MOVE_SELF | IN_DELETE_SELF;

using Parts = std::deque<std::string>;

/// The parts of a path, without empty ones and ".".
Parts partsOf(const std::string& path) {
  Parts parts;
  for (auto& part : split(path, '/')) {
    if (!part.empty() && part != ".") parts.push_back(std::move(part));
  }
  return parts;
}

std::string entryPath(const std::string& folder, const std::string& name) {
  return folder == "/" ? folder + name : folder + "/" + name;
}

std::string parentOf(const std::string& folder) {
  const auto slash = folder.rfind('/');
  return slash == 0 ? "/" : folder.substr(0, slash);
}

/// How many leading steps all the paths have in common, the last step of each not counted.
std::size_t sharedDepthOf(const std::vector<std::string>& paths) {
  std::optional<Parts> shared;
  for (const auto& path : paths) {
    Parts parts = partsOf(path);
    if (!parts.empty()) parts.pop_back();
    if (shared) {
      const auto [end, ignored] = std::mismatch(shared->begin(), shared->end(), parts.begin(), parts.end());
      parts.assign(shared->begin(), end);
    }
    shared = std::move(parts);
  }
  return shared ? shared->size() : 0;
}

std::string targetOf(const std::string& link) {
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
  return length <= 0 ? std::string() : std::string(target.data(), static_cast<std::size_t>(length));
}

}  // namespace

/// One look at all ways: what the watches are about from now on.
class WatchedFolders::Walk {
 public:
  explicit Walk(WatchedFolders& owner) : owner_(owner) {}

  void go(Folder& folder);
  Interests interests;
  int problem = 0;

 private:
  void watchStep(const std::string& folder, const std::string& name, bool isShared);
  bool watchName(const std::string& folder, const std::string& name);
  bool watchItself(const std::string& path);
  std::optional<int> add(const std::string& path, std::uint32_t mask);

  WatchedFolders& owner_;
};

/// Every step is watched before it is looked at, so that no change falls in between.
void WatchedFolders::Walk::go(Folder& folder) {
  const std::optional<int> before = std::exchange(folder.watch, std::nullopt);
  Parts parts = partsOf(folder.path);
  std::size_t beyondShared = parts.size() - std::min(parts.size(), owner_.sharedDepth_);
  std::string place = "/";
  int links = 0;
  bool isThere = true;
  while (isThere && !parts.empty()) {
    const bool isShared = parts.size() > beyondShared;
    const std::string part = std::move(parts.front());
    parts.pop_front();
    beyondShared = std::min(beyondShared, parts.size());
    if (part == "..") {
      place = parentOf(place);
      continue;
    }
    watchStep(place, part, isShared);
    const std::string path = entryPath(place, part);
    struct stat status {};
    isThere = ::lstat(path.c_str(), &status) == 0;
    if (!isThere && isShared) {  // awaited in its parent, which is looked at once more
      watchName(place, part);
      isThere = ::lstat(path.c_str(), &status) == 0;
    }
    if (!isThere) break;
    if (S_ISDIR(status.st_mode)) {
      place = path;
    } else {
      const std::string target = S_ISLNK(status.st_mode) && ++links <= kMostLinks ? targetOf(path) : "";
      isThere = !target.empty();
      if (isThere && target.front() == '/') place = "/";
      // The way by which a link leads belongs to the step that the link is.
      const Parts targetParts = partsOf(target);
      parts.insert(parts.begin(), targetParts.begin(), targetParts.end());
      if (!isShared) beyondShared = parts.size();
    }
  }
  if (isThere) folder.watch = add(place, kContents);
  folder.place = folder.watch ? place : std::string();
  if (folder.watch) interests[*folder.watch].folders.push_back(&folder);
  if (folder.watch != before) owner_.report_(folder.path);
}

void WatchedFolders::Walk::watchStep(const std::string& folder, const std::string& name, bool isShared) {
  // A folder that may be passed but not read can't be watched; the other manner is the next best then.
  if (isShared) {
    if (!watchItself(entryPath(folder, name))) watchName(folder, name);
  } else {
    if (!watchName(folder, name)) watchItself(entryPath(folder, name));
  }
}

bool WatchedFolders::Walk::watchName(const std::string& folder, const std::string& name) {
  const auto watch = add(folder, kNames);
  if (watch) interests[*watch].names.insert(name);
  return watch.has_value();
}

bool WatchedFolders::Walk::watchItself(const std::string& path) {
  const auto watch = add(path, kItself | IN_DONT_FOLLOW);
  if (watch) interests[*watch];
  return watch.has_value();
}

/// The same folder has the same watch for as long as it lasts, whatever its path; what was asked of it before
/// is kept.
std::optional<int> WatchedFolders::Walk::add(const std::string& path, std::uint32_t mask) {
  const int watch = ::inotify_add_watch(owner_.inotify_.get(), path.c_str(), mask | IN_MASK_ADD);
  if (watch >= 0) return watch;
  if (errno == ENOSPC || errno == ENOMEM) problem = errno;
  return std::nullopt;
}

WatchedFolders::WatchedFolders(const std::vector<std::string>& folders, Report report)
    : sharedDepth_(sharedDepthOf(folders)),
      report_([](const std::string&) {}),
      inotify_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      problem_(inotify_ ? 0 : errno) {
  for (const auto& path : folders) folders_.push_back({path, std::nullopt, {}});
  if (inotify_) follow();
  report_ = std::move(report);
}

void WatchedFolders::follow() {
  Walk walk(*this);
  for (Folder& folder : folders_) walk.go(folder);
  for (const auto& [watch, interest] : interests_) {
    if (walk.interests.count(watch) == 0) ::inotify_rm_watch(inotify_.get(), watch);
  }
  interests_ = std::move(walk.interests);
  problem_ = walk.problem;
}

bool WatchedFolders::handle(const InotifyEvent& event) {
  const auto found = interests_.find(event.watch);
  if (found == interests_.end()) return false;
  if (event.name.empty()) return true;  // about the folder itself: moved, removed, unmounted, readable now
  for (const Folder* folder : found->second.folders) report_(folder->path);
  return found->second.names.count(std::string(event.name)) != 0;
}

void WatchedFolders::readEvents() {
  bool waysChanged = false;
  readInotifyEvents(inotify_.get(), [&](const InotifyEvent& event) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
      for (const Folder& folder : folders_) report_(folder.path);
      waysChanged = true;
    } else if (handle(event)) {
      waysChanged = true;
    }
  });
  if (waysChanged) follow();
}

void WatchedFolders::readMounts() {
  std::vector<std::set<std::string>> before;
  for (const Folder& folder : folders_) before.push_back(mountTable_.mountsIn(folder.place));
  mountTable_.read();
  for (std::size_t i = 0; i < folders_.size(); ++i) {
    if (mountTable_.mountsIn(folders_[i].place) != before[i]) report_(folders_[i].path);
  }
  follow();
}

}  // namespace corvane
