#include "helper/Supervisor.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Launch.h"
#include "posix/Signals.h"

namespace corvane::helper {
namespace {

// What the supervisor has open, in the places of the standard streams.
constexpr int kLeash = 0;
constexpr int kLifeline = 1;
constexpr int kChildEnded = 2;
/// How long the killed are given before the children are listed again, in milliseconds.
constexpr int kRound = 10;

/// Kills the direct children; orphans of theirs become direct children in turn. False when they can't be
/// listed.
bool killChildren() {
  const int list = ::open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
  if (list < 0) return false;
  char buffer[4096];
  pid_t child = 0;
  ssize_t count = 0;
  while ((count = ::read(list, buffer, sizeof buffer)) > 0) {
    for (ssize_t i = 0; i < count; ++i) {
      if (buffer[i] >= '0' && buffer[i] <= '9') {
        child = child * 10 + (buffer[i] - '0');
      } else if (child > 0) {
        ::kill(child, SIGKILL);
        child = 0;
      }
    }
  }
  ::close(list);
  return true;
}

/// Ends everything: what survives one round has a new parent, this process, in the next.
[[noreturn]] void endAll(pid_t group) {
  if (group > 0) ::kill(-group, SIGKILL);
  for (;;) {
    const bool listed = killChildren();
    pid_t ended = 0;
    while ((ended = ::waitpid(-1, nullptr, WNOHANG)) > 0) {
    }
    if (ended < 0 || !listed) ::_exit(0);
    ::poll(nullptr, 0, kRound);
  }
}

/// Reaps what has ended; forgets the group with its leader. False when no child is left.
bool reap(pid_t& group) {
  for (;;) {
    const pid_t ended = ::waitpid(-1, nullptr, WNOHANG);
    if (ended == 0) return true;
    if (ended < 0 && errno != EINTR) return false;
    if (ended == group) group = 0;
  }
}

[[noreturn]] void watch(pid_t group) {
  pollfd waited[] = {{kChildEnded, POLLIN, 0}, {kLifeline, 0, 0}, {kLeash, POLLIN, 0}};
  int patience = -1;
  for (;;) {
    const int ready = ::poll(waited, 3, patience);
    if (ready < 0 && errno == EINTR) continue;
    if (ready <= 0 || waited[1].revents != 0) endAll(group);
    if (waited[0].revents != 0) {
      signalfd_siginfo ignored;
      (void)!::read(kChildEnded, &ignored, sizeof ignored);
      if (!reap(group)) ::_exit(0);
    }
    if (waited[2].revents != 0) {
      char word = 0;
      if (::read(kLeash, &word, 1) != 1 || word != kReplyWasRead) endAll(group);
      waited[2].fd = -1;
      patience = kGraceSeconds * 1000;
    }
  }
}

}  // namespace

void supervise(SupervisedDescriptors descriptors, const std::function<void(int, int)>& become) {
  ::setsid();
  ::prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
  setAllSignalsToDefault();
  setSignal(SIGPIPE, SIG_IGN);
  sigset_t childEnds;
  ::sigemptyset(&childEnds);
  ::sigaddset(&childEnds, SIGCHLD);
  ::sigprocmask(SIG_SETMASK, &childEnds, nullptr);

  const pid_t self = ::getpid();
  const pid_t child = ::fork();
  if (child == 0) {
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    if (::getppid() != self) ::_exit(0);
    become(descriptors.output, descriptors.report);
    ::_exit(0);
  }
  if (child < 0) {
    const int error = errno;
    (void)!::write(descriptors.report, &error, sizeof error);
    ::_exit(0);
  }
  ::setpgid(child, child);
  // Only what is watched stays open: the output must end with the program, and the helper's socket with the
  // helper.
  const FileDescriptor ended(::fcntl(::signalfd(-1, &childEnds, SFD_CLOEXEC), F_DUPFD_CLOEXEC, 3));
  if (::dup2(descriptors.leash, kLeash) < 0 || ::dup2(descriptors.lifeline, kLifeline) < 0 ||
      ::dup2(ended.get(), kChildEnded) < 0) {
    endAll(child);
  }
  ::closefrom(kChildEnded + 1);
  watch(child);
}

}  // namespace corvane::helper
