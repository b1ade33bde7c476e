#include "platform/linux/ChildProcess.h"

#include <cerrno>
#include <csignal>

#include <sys/wait.h>

#include "posix/Differences.h"

namespace corvane {

ChildProcess::ChildProcess(pid_t pid) : pid_(pid), ended_(watchEndOf(pid)) {}

std::optional<int> ChildProcess::reap() {
  int status = 0;
  pid_t ended = 0;
  do {
    ended = pid_ > 0 ? ::waitpid(pid_, &status, WNOHANG) : -1;
  } while (ended < 0 && pid_ > 0 && errno == EINTR);
  if (ended <= 0) return std::nullopt;
  pid_ = -1;
  return status;
}

void ChildProcess::terminate() const {
  if (pid_ > 0) ::kill(pid_, SIGTERM);
}

void ChildProcess::leave(LinuxRunLoop& runLoop, ChildProcess child) {
  if (child.descriptor() < 0 || child.reap()) return;
  // The watch owns itself until the process has ended; destroying a source from inside its own callback is
  // allowed.
  struct Left {
    ChildProcess child;
    std::unique_ptr<RunLoop::Source> source;
  };
  auto left = std::make_shared<Left>();
  left->child = std::move(child);
  left->source = runLoop.watchDescriptor(left->child.descriptor(), [left] {
    (void)left->child.reap();
    const auto source = std::move(left->source);
  });
}

}  // namespace corvane
