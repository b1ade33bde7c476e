// Directory-change streams over inotify and the table of mounts: over folders that may come, go and move at
// any time. Where the system has no watch left, the stream says so in the log once, and the changes in what
// is not watched are missed.
#pragma once

#include "platform/DirectoryEvents.h"
#include "platform/SystemLog.h"
#include "platform/linux/LinuxRunLoop.h"

namespace corvane {

class LinuxDirectoryEvents : public DirectoryEvents {
 public:
  LinuxDirectoryEvents(LinuxRunLoop& runLoop, SystemLog& log) : runLoop_(runLoop), log_(log) {}
  /// Paths that are not absolute are passed over.
  [[nodiscard]] std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> directories,
                                                                   double latency,
                                                                   Callback callback) override;

 private:
  LinuxRunLoop& runLoop_;
  SystemLog& log_;
};

}  // namespace corvane
