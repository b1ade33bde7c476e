// Starting programs in a clean state: own environment, mask and folder, /dev/null for the standard streams,
// no other descriptor, default signals. Used by the command runner in the root helper and, in direct mode, in
// the user's process.
#pragma once

#include <string>
#include <vector>

#include "posix/Pipe.h"

namespace corvane::helper {

struct Program {
  std::string path;                    // absolute
  std::vector<std::string> arguments;  // without the path
};

/// Starts the program in a session of its own; nobody waits for it, and it outlives the caller. Answers 0 or
/// the error.
[[nodiscard]] int startDetached(const Program& program);

/// A program that is run for its output.
struct SupervisedRun {
  int error = 0;          // it could not be started
  FileDescriptor output;  // its standard output
  FileDescriptor leash;   // closing it ends the program and everything it started
};
/// Written to the leash before it is closed, gives the run kGraceSeconds to end by itself.
inline constexpr char kReplyWasRead = 'r';
inline constexpr int kGraceSeconds = 2;
/// Closes the leash in that way. Does nothing to the caller when the run has ended already.
void releaseGently(FileDescriptor& leash);
/// Starts the program below a supervisor process that ends it, with whatever it has started, once the leash
/// is closed or nobody holds the writing end of `lifeline` any more.
[[nodiscard]] SupervisedRun startSupervised(const Program& program, int lifeline);

}  // namespace corvane::helper
