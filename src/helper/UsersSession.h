// What the session of a user leaves behind in the processes that are started from it: none of it is to reach
// root's work.
#pragma once

namespace corvane::helper {

/// Sets signals and mask to their defaults, and for root also limits, priority and what makes the system
/// choose a process when memory runs out. Another user keeps these, which are theirs. May be called after a
/// fork.
void leaveUsersSession();

}  // namespace corvane::helper
