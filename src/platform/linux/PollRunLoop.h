// A run loop of its own over poll(2), for programs without a window: the command line, benchmarks, tests of
// the real services. Timers use the monotonic clock. Sources may outlive the loop; they are dead then.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/LinuxRunLoop.h"

namespace corvane {

class PollRunLoop : public LinuxRunLoop {
 public:
  PollRunLoop();
  ~PollRunLoop() override;
  PollRunLoop(const PollRunLoop&) = delete;
  PollRunLoop& operator=(const PollRunLoop&) = delete;

  [[nodiscard]] std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                      std::function<void()> fire) override;
  [[nodiscard]] std::unique_ptr<Source> watchDescriptor(int descriptor,
                                                        std::function<void()> readable) override;

  /// Runs the loop until the condition holds; it is asked before the first wait and after each round of
  /// calls. False when `seconds` pass first.
  [[nodiscard]] bool runUntil(const std::function<bool()>& condition, double seconds);
  /// Calls everything that is due or ready at this moment, and what becomes so meanwhile, without waiting for
  /// anything. File-system events are queued before the call that caused them returns, so that a test can say
  /// "nothing came".
  void runReady();
  /// Timers that have yet to fire. A loop without timers that nothing wakes costs nothing.
  [[nodiscard]] std::size_t pendingTimers() const;

 private:
  struct Entry;
  class EntrySource;

  std::unique_ptr<Source> add(Entry entry);
  void dropEnded();
  bool waitAndCall(double until);  // true when it called something

  std::vector<std::shared_ptr<Entry>> entries_;
};

}  // namespace corvane
