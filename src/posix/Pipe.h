// A pipe between two processes, or two parts of one.
#pragma once

#include "posix/FileDescriptor.h"

namespace corvane {

/// Two ends of a pipe, both above the standard streams and closed in programs that are started.
struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};
/// Without descriptors when none can be had (errno tells).
[[nodiscard]] Pipe makePipe();
/// Takes two ends that were just opened to places above the standard streams.
[[nodiscard]] Pipe raised(const int (&ends)[2]);

}  // namespace corvane
