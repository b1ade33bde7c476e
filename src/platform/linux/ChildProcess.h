// A child process of the pane that ends in its own time: its end can be watched for without blocking, and it
// is reaped.
#pragma once

#include <memory>
#include <optional>

#include <sys/types.h>

#include "platform/linux/LinuxRunLoop.h"
#include "posix/FileDescriptor.h"

namespace corvane {

class ChildProcess {
 public:
  ChildProcess() = default;
  explicit ChildProcess(pid_t pid);
  ChildProcess(ChildProcess&&) noexcept = default;
  ChildProcess& operator=(ChildProcess&&) noexcept = default;

  /// Becomes readable when the process has ended; -1 when there is none or it can't be watched.
  [[nodiscard]] int descriptor() const { return ended_.get(); }
  /// The wait status, once, after the process has ended.
  [[nodiscard]] std::optional<int> reap();
  /// Asks the process to end, where the user may.
  void terminate() const;

  /// Leaves the process to end and be reaped by the run loop.
  static void leave(LinuxRunLoop& runLoop, ChildProcess child);

 private:
  pid_t pid_ = -1;
  FileDescriptor ended_;
};

}  // namespace corvane
