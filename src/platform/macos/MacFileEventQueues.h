// Event queues for one path by the kernel's own queues, whose descriptors the run loop watches.
#pragma once

#include "platform/FileEventQueues.h"

namespace corvane {

class MacFileEventQueues final : public FileEventQueues {
 public:
  [[nodiscard]] OpenedPath openForEvents(const std::string& path) override;
  [[nodiscard]] CreatedQueue createQueue() override;
};

}  // namespace corvane
