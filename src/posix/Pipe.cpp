#include "posix/Pipe.h"

#include <fcntl.h>

#include "posix/Differences.h"

namespace corvane {

Pipe raised(const int (&ends)[2]) {
  const FileDescriptor low[2] = {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
  Pipe pipe{FileDescriptor(::fcntl(ends[0], F_DUPFD_CLOEXEC, STDERR_FILENO + 1)),
            FileDescriptor(::fcntl(ends[1], F_DUPFD_CLOEXEC, STDERR_FILENO + 1))};
  if (!pipe.readEnd || !pipe.writeEnd) return {};
  return pipe;
}

Pipe makePipe() {
  int ends[2];
  return openPipe(ends) ? raised(ends) : Pipe{};
}

}  // namespace corvane
