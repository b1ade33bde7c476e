// Gathers directories into batches. A batch is delivered a fixed time after its first directory came,
// whatever comes meanwhile; what comes later belongs to the next one. Time is that of the run loop's timers,
// so that a change of the clock of the machine has no effect.
#pragma once

#include <cstddef>
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
  /// A batch never holds more: where that many directories changed at once, which ones does not matter any
  /// more.
  static constexpr std::size_t kMostDirectories = 65536;

  DirectoryBatch(RunLoop& runLoop, double latency, Deliver deliver);
  DirectoryBatch(const DirectoryBatch&) = delete;
  DirectoryBatch& operator=(const DirectoryBatch&) = delete;

  /// False, and nothing is added, when the batch is full.
  [[nodiscard]] bool add(const std::string& directory);
  /// Puts these in the place of everything gathered.
  void replaceBy(const std::vector<std::string>& directories);
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
