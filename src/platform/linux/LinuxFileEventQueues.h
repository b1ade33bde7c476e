// Event queues for one path over inotify. inotify follows the file, not the path, and tells of a deletion
// only when the last descriptor of the file is closed; so what it reports is compared with what stands at the
// path. A file has disappeared when its name or one of its other names was removed, when it was renamed,
// replaced by another file, or when its file system was unmounted. Nothing polls: without an event nothing
// runs.
#pragma once

#include "platform/FileEventQueues.h"
#include "platform/linux/LinuxRunLoop.h"

namespace corvane {

class LinuxFileEventQueues : public FileEventQueues {
 public:
  explicit LinuxFileEventQueues(LinuxRunLoop& runLoop) : runLoop_(runLoop) {}
  /// Links are followed: what is watched is the file that the path leads to now.
  [[nodiscard]] OpenedPath openForEvents(const std::string& path) override;
  [[nodiscard]] CreatedQueue createQueue() override;

 private:
  LinuxRunLoop& runLoop_;
};

}  // namespace corvane
