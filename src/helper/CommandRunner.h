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

struct Answer {
  Reply reply;
  SupervisedRun run;  // with descriptors when a plug-in was started
};

class CommandRunner {
 public:
  /// `user` is whose settings these are. Validation runs end with the runner.
  CommandRunner(Place place, uid_t user, TreeObservers observers = {});

  [[nodiscard]] Answer carryOut(const Request& request);
  [[nodiscard]] const RootTree& tree() const { return tree_; }

 private:
  struct Dispatch;

  Place place_;
  RootTree tree_;
  Pipe lifeline_;
};

}  // namespace corvane::helper
