// The process between the helper and a plug-in that is validated. It is there for one thing: when the pane
// lets go of the run, or the pane or the helper dies, nothing that the plug-in has started is left, whatever
// process groups and sessions it made.
#pragma once

#include <functional>

namespace corvane::helper {

struct SupervisedDescriptors {
  int leash = -1;     // readable end; see Launch.h
  int lifeline = -1;  // readable end
  int output = -1;    // the program's standard output
  int report = -1;    // where an error of starting it is written
};

/// The body of the supervisor process: starts the program by `become`, given the descriptors of its output
/// and of the report, in a child and returns never. Allocates nothing, since the process that forked may have
/// threads.
[[noreturn]] void supervise(SupervisedDescriptors descriptors, const std::function<void(int, int)>& become);

}  // namespace corvane::helper
