// Timers and readable descriptors of the application's run loop, in the modes of the pane.
#pragma once

#include "platform/linux/LinuxRunLoop.h"

namespace corvane::appkit {

class GNUstepRunLoop final : public LinuxRunLoop {
 public:
  [[nodiscard]] std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                      std::function<void()> fire) override;
  [[nodiscard]] std::unique_ptr<Source> watchDescriptor(int descriptor,
                                                        std::function<void()> readable) override;
};

}  // namespace corvane::appkit
