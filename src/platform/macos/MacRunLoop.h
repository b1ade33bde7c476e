// Timers of the main run loop, in the common modes.
#pragma once

#include "platform/RunLoop.h"

namespace corvane {

class MacRunLoop final : public RunLoop {
 public:
  [[nodiscard]] std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                      std::function<void()> fire) override;
};

}  // namespace corvane
