// Carries out requests: recognizes them, checks the files they concern, and does the work or starts the
// program. The root helper owns one for its session; in direct mode the pane's own process owns one for the
// open lock.
#pragma once

#include "helper/CommandShapes.h"
#include "helper/Launch.h"
#include "helper/Request.h"
#include "helper/RootTree.h"
#include "posix/FileDescriptor.h"

namespace corvane::helper {

/// How long a tool that is awaited may run, in seconds; less than the pane waits for an answer.
inline constexpr int kToolDeadline = 15;

struct Answer {
  Reply reply;
  SupervisedRun run;  // with descriptors when a plug-in was started
};

class CommandRunner {
 public:
  /// Validation runs end with the runner. `hangup` is a socket that ends an awaited tool when its other end
  /// closes, or -1.
  CommandRunner(Place place, Caution caution, int hangup = -1);

  [[nodiscard]] Answer carryOut(const Request& request);
  /// Why this process should not write staging files below the root prefix; empty when it may.
  [[nodiscard]] std::string objectionToStaging() const { return tree_.checkStagingPath().message; }

 private:
  struct Dispatch;

  Place place_;
  RootTree tree_;
  int hangup_;
  Pipe lifeline_;
};

}  // namespace corvane::helper
