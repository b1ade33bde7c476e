#include "platform/linux/DirectoryBatch.h"

#include <utility>

namespace corvane {

DirectoryBatch::DirectoryBatch(RunLoop& runLoop, double latency, Deliver deliver)
    : runLoop_(runLoop), latency_(latency), deliver_(std::move(deliver)) {}

void DirectoryBatch::add(const std::string& directory) {
  directories_.insert(directory);
  if (!timer_) timer_ = runLoop_.scheduleTimer(latency_, false, [this] { fire(); });
}

void DirectoryBatch::clear() {
  directories_.clear();
  timer_.reset();
}

void DirectoryBatch::fire() {
  timer_.reset();
  const std::vector<std::string> directories(directories_.begin(), directories_.end());
  directories_.clear();
  const auto deliver = deliver_;  // the receiver may destroy the stream and this with it
  deliver(directories);
}

}  // namespace corvane
