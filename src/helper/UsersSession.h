// What the session of a user leaves behind in the processes that are started from it: none of it is to reach
// root's work.
#pragma once

namespace corvane::helper {

/// Default signals and mask; for root also no limit, priority or preference as a victim that the session has
/// set. Another user keeps those, which are theirs. May be called after a fork.
void leaveUsersSession();

}  // namespace corvane::helper
