// qlhelper on a Mac: started as root by the authorization services with a program and its arguments, it
// becomes that program. Its output, and so a plug-in's reply, goes where the caller wants it.
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/Signals.h"

namespace {

constexpr int kUsage = 64;
constexpr int kNotRoot = 77;
constexpr int kCannotExecute = 127;
constexpr const char* kEnvironment[] = {"PATH=/usr/bin:/bin:/usr/sbin:/sbin", nullptr};

/// Only the effective user is root at the start. A shell gives that back when the real one is another, and
/// the groups would still be those of whoever opened the lock.
bool becomeRoot() {
  const gid_t group = 0;
  return ::setgroups(1, &group) == 0 && ::setgid(0) == 0 && ::setuid(0) == 0;
}

/// Nothing of the user's session is left but the standard streams.
bool leaveSession() {
  corvane::setAllSignalsToDefault();
  sigset_t none;
  sigemptyset(&none);
  (void)::sigprocmask(SIG_SETMASK, &none, nullptr);
  (void)::umask(022);
  const int end = ::getdtablesize();
  for (int number = 3; number < end; ++number) (void)::fcntl(number, F_SETFD, FD_CLOEXEC);
  return ::chdir("/") == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argv[1][0] != '/') return kUsage;
  if (!becomeRoot()) return kNotRoot;
  if (!leaveSession()) return kCannotExecute;
  ::execve(argv[1], argv + 1, const_cast<char* const*>(kEnvironment));
  std::perror(argv[1]);
  return kCannotExecute;
}
