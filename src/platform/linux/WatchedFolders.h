// The folders of a directory stream and the ways to them, watched by one inotify instance: says in which of
// the folders something changed, and which of them have come, gone or become other folders. A folder need not
// exist, nor its parents; links on the way are followed. What lies below a folder is not watched.
//
// A step of a way is watched in one of two manners. Between the folders and the one that all of them lie
// below, the folder that holds the step is watched for its name. Further up, where other programs may be busy
// (a temporary folder), the step itself is watched for being moved or removed, so that its neighbours wake
// nobody; what does not exist can be awaited in its parent only. So one thing is not seen: the folder that
// all lie below is removed while some process has it open, and made again.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/InotifyEvents.h"
#include "platform/linux/MountTable.h"
#include "posix/FileDescriptor.h"

namespace corvane {

class WatchedFolders {
 public:
  using Report = std::function<void(const std::string& folder)>;

  /// Watches what is there now; that is no change. The folders are absolute paths without a trailing slash,
  /// each once. They are reported as spelled here.
  WatchedFolders(const std::vector<std::string>& folders, Report report);
  WatchedFolders(const WatchedFolders&) = delete;
  WatchedFolders& operator=(const WatchedFolders&) = delete;
  ~WatchedFolders() = default;

  /// The number of the error for which the system refused a watch, or 0. With one, changes are missed.
  [[nodiscard]] int problem() const { return problem_; }

  /// Can be read when there are events; negative when the system gave no inotify instance.
  [[nodiscard]] int events() const { return inotify_.get(); }
  /// Takes up the events that wait.
  void readEvents();
  /// Can be read when something was mounted or unmounted; negative when the system does not tell.
  [[nodiscard]] int mounts() const { return mountTable_.changes(); }
  /// Reports the folders that became others by that, and those in which a volume came or went.
  void readMounts();

 private:
  struct Folder {
    std::string path;
    std::optional<int> watch;  // of what stands there now
    std::string place;         // its path without links, while it is watched
  };
  /// What the events of one watch are about.
  struct Interest {
    std::set<std::string> names;   // entries that are steps of ways
    std::vector<Folder*> folders;  // whose contents these are
  };
  using Interests = std::map<int, Interest>;
  class Walk;

  void follow();
  /// Whether the event is about a step of some way.
  [[nodiscard]] bool handle(const InotifyEvent& event);

  std::vector<Folder> folders_;
  std::size_t sharedDepth_;  // how many steps from "/" all ways have in common
  Report report_;
  FileDescriptor inotify_;
  MountTable mountTable_;
  Interests interests_;
  int problem_ = 0;
};

}  // namespace corvane
