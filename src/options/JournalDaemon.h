// Whether the client's disk-journal daemon runs: without it the journal is out of date and the volume list is
// not rebuilt.
#pragma once

#include <string>

#include "platform/Platform.h"

namespace corvane {

class JournalDaemon {
 public:
  /// The platform must outlive this. `pidFile` is absolute.
  JournalDaemon(Platform& platform, std::string pidFile)
      : platform_(platform), pidFile_(std::move(pidFile)) {}

  /// Whether the process id in the pid file is among those of the running processes. Lists the processes anew
  /// on every call and waits for the listing.
  [[nodiscard]] bool isDiskJournalPIDRunning() const;

 private:
  Platform& platform_;
  std::string pidFile_;
};

}  // namespace corvane
