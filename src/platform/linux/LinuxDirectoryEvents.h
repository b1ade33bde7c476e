// Directory-change streams over inotify: recursive, with roots that may come, go and move at any time.
//
// Two sets of watches: one on every folder at and below the roots, one on every folder on the ways to them.
// Directories are reported as spelled below the root that the caller gave, also when a link leads to that
// root. Where the system has no watches left, the stream says so in the log once and looks at the folders
// again every two seconds instead. What is mounted over a watched folder makes no event; its contents are
// followed only after the next change beside it.
#pragma once

#include "platform/DirectoryEvents.h"
#include "platform/RunLoop.h"
#include "platform/SystemLog.h"

namespace corvane {

class LinuxDirectoryEvents : public DirectoryEvents {
 public:
  LinuxDirectoryEvents(RunLoop& runLoop, SystemLog& log) : runLoop_(runLoop), log_(log) {}
  /// Paths that are not absolute are passed over.
  [[nodiscard]] std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> directories,
                                                                   double latency,
                                                                   Callback callback) override;

 private:
  RunLoop& runLoop_;
  SystemLog& log_;
};

}  // namespace corvane
