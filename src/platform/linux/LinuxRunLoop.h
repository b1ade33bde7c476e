// The run loop as the services of Linux need it: with readable descriptors besides the timers.
#pragma once

#include "platform/RunLoop.h"

namespace corvane {

class LinuxRunLoop : public RunLoop {
 public:
  /// Calls back whenever the descriptor can be read or its other end has closed. The descriptor stays the
  /// caller's.
  [[nodiscard]] virtual std::unique_ptr<Source> watchDescriptor(int descriptor,
                                                                std::function<void()> readable) = 0;
};

}  // namespace corvane
