#include "helper/UsersSession.h"

#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/Signals.h"

namespace corvane::helper {
namespace {

constexpr rlim_t kMebibyte = rlim_t{1} << 20;

struct Limit {
  __rlimit_resource_t resource;
  rlim_t usual;
  rlim_t most;
};
/// What the system gives its own services. An unlimited stack would change how a program's memory is laid
/// out, and unlimited descriptors make some programs close them all one by one.
constexpr Limit kLimits[] = {
    {RLIMIT_STACK, 8 * kMebibyte, RLIM_INFINITY},     {RLIMIT_NOFILE, 1024, 524288},
    {RLIMIT_AS, RLIM_INFINITY, RLIM_INFINITY},        {RLIMIT_CORE, RLIM_INFINITY, RLIM_INFINITY},
    {RLIMIT_CPU, RLIM_INFINITY, RLIM_INFINITY},       {RLIMIT_DATA, RLIM_INFINITY, RLIM_INFINITY},
    {RLIMIT_FSIZE, RLIM_INFINITY, RLIM_INFINITY},     {RLIMIT_LOCKS, RLIM_INFINITY, RLIM_INFINITY},
    {RLIMIT_MEMLOCK, RLIM_INFINITY, RLIM_INFINITY},   {RLIMIT_NPROC, RLIM_INFINITY, RLIM_INFINITY},
    {RLIMIT_RSS, RLIM_INFINITY, RLIM_INFINITY},       {RLIMIT_RTTIME, RLIM_INFINITY, RLIM_INFINITY},
    {RLIMIT_SIGPENDING, RLIM_INFINITY, RLIM_INFINITY}};

}  // namespace

void leaveUsersSession() {
  setAllSignalsToDefault();
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::umask(022);
  if (::geteuid() != 0) return;
  for (const auto& limit : kLimits) {
    rlimit usual{limit.usual, limit.most};
    if (::setrlimit(limit.resource, &usual) == 0 || ::getrlimit(limit.resource, &usual) != 0) continue;
    // Root of a container may not widen every limit.
    usual.rlim_cur = limit.usual < usual.rlim_max ? limit.usual : usual.rlim_max;
    (void)::setrlimit(limit.resource, &usual);
  }
  (void)::setpriority(PRIO_PROCESS, 0, 0);
  const int score = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
  if (score < 0) return;
  (void)!::write(score, "0", 1);
  ::close(score);
}

}  // namespace corvane::helper
