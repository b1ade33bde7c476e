// Gathers directories into batches. A batch is delivered a fixed time after its first directory came,
// whatever comes meanwhile; what comes later belongs to the next one. Time is that of the run loop's timers,
// so that a change of the clock of the machine has no effect.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/RunLoop.h"

namespace corvane {

class DirectoryBatch {
 public:
  using Deliver = std::function<void(const std::vector<std::string>&)>;
  DirectoryBatch(RunLoop& runLoop, double latency, Deliver deliver);
  DirectoryBatch(const DirectoryBatch&) = delete;
  DirectoryBatch& operator=(const DirectoryBatch&) = delete;

  void add(const std::string& directory);
  /// Drops what was gathered; nothing is delivered.
  void clear();

 private:
  void fire();

  RunLoop& runLoop_;
  double latency_;
  Deliver deliver_;
  std::set<std::string> directories_;
  std::unique_ptr<RunLoop::Source> timer_;
};

}  // namespace corvane
