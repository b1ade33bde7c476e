// The run loop of the one thread, as far as the core needs it: its timers. What it calls is never called from
// inside another call of it, except while a modal panel runs its own loop.
#pragma once

#include <functional>
#include <memory>

namespace corvane {

class RunLoop {
 public:
  /// A timer, or what else a platform's loop calls for; destroying it ends it. It may be destroyed from
  /// inside its own callback.
  class Source {
   public:
    virtual ~Source() = default;
  };

  virtual ~RunLoop() = default;
  /// Calls back after the interval, in seconds; again and again when it repeats. In the common modes: also
  /// while a menu is tracked or a sheet is open.
  [[nodiscard]] virtual std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                              std::function<void()> fire) = 0;
};

}  // namespace corvane
