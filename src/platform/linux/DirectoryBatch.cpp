#include "platform/linux/DirectoryBatch.h"

#include <utility>

namespace corvane {

DirectoryBatch::DirectoryBatch(RunLoop& runLoop, double latency, Deliver deliver)
    : runLoop_(runLoop), latency_(latency), deliver_(std::move(deliver)) {}

bool DirectoryBatch::add(const std::string& directory) {
  if (directories_.size() >= kMostDirectories) return directories_.count(directory) != 0;
  directories_.insert(directory);
  if (!timer_) timer_ = runLoop_.scheduleTimer(latency_, false, [this] { fire(); });
  return true;
}

void DirectoryBatch::replaceBy(const std::vector<std::string>& directories) {
  directories_.clear();
  for (const auto& directory : directories) {
    if (!add(directory)) return;
  }
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
