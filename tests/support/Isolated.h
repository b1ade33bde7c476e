// Runs part of a test in a child process with name spaces of its own (mounts, limits), so that the machine is
// left as it is.
#pragma once

#include <functional>
#include <string>

namespace corvane::test {

enum class IsolatedOutcome {
  Passed,
  Failed,      // an assertion failed; it has been printed
  Impossible,  // this machine does not allow it
};

/// Runs `body` in a child after unshare(flags). With CLONE_NEWUSER among the flags the child is root of a new
/// user name space, which any user may be where the system allows it. The child passes when none of its
/// assertions fails.
[[nodiscard]] IsolatedOutcome runIsolated(int flags, const std::function<void()>& body);

/// From now on this process and its children have a kernel that does not know the system call. False where
/// that can't be had.
[[nodiscard]] bool forgetSystemCall(int number);

/// Writes the limit of the user name space that the process is in ("max_inotify_watches").
[[nodiscard]] bool setUserLimit(const std::string& name, int value);

}  // namespace corvane::test
