#include "helper/UsersSession.h"

#include <algorithm>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "posix/Signals.h"

namespace corvane::helper {
namespace {

/// What the system gives its own services. An unlimited stack would change how a program's memory is laid
/// out, and unlimited descriptors make some programs close them all one by one.
rlimit usual(int resource) {
  switch (resource) {
    case RLIMIT_STACK:
      return {8 << 20, RLIM_INFINITY};
    case RLIMIT_NOFILE:
      return {1024, 524288};
    case RLIMIT_MSGQUEUE:
      return {819200, 819200};
    case RLIMIT_NICE:
    case RLIMIT_RTPRIO:
      return {0, 0};
    default:
      return {RLIM_INFINITY, RLIM_INFINITY};
  }
}

void takeUsualLimits() {
  for (int number = 0; number < RLIM_NLIMITS; ++number) {
    const auto resource = static_cast<__rlimit_resource_t>(number);
    const rlimit limit = usual(number);
    rlimit present{};
    // Root of a container may not widen every limit.
    if (::setrlimit(resource, &limit) == 0 || ::getrlimit(resource, &present) != 0) continue;
    present.rlim_cur = std::min(limit.rlim_cur, present.rlim_max);
    (void)::setrlimit(resource, &present);
  }
}

/// The processor and the disks, as a program has them for which nobody asks otherwise.
void takeOrdinaryTurns() {
  const sched_param ordinary{};
  (void)::sched_setscheduler(0, SCHED_OTHER, &ordinary);
  (void)::setpriority(PRIO_PROCESS, 0, 0);
  constexpr int ofOneProcess = 1;
  (void)::syscall(SYS_ioprio_set, ofOneProcess, 0, 0);
  cpu_set_t all;
  std::memset(&all, 0xFF, sizeof all);
  (void)::sched_setaffinity(0, sizeof all, &all);
}

}  // namespace

void leaveUsersSession() {
  setAllSignalsToDefault();
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::umask(022);
  if (::geteuid() != 0) return;
  takeUsualLimits();
  takeOrdinaryTurns();
  const int score = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
  if (score < 0) return;
  (void)!::write(score, "0", 1);
  ::close(score);
}

}  // namespace corvane::helper
