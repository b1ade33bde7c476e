// qlhelper, the pane's helper tool.
//
//   qlhelper PROGRAM ARGUMENTS...    becomes the program; its standard output is passed through
//   qlhelper --session --root DIR    serves the pane over the socket that is its standard input, until that
//                                    is closed; started as root through polkit when the lock is opened
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helper/Session.h"
#include "posix/Signals.h"

namespace {

using corvane::helper::Caution;
using corvane::helper::Place;

constexpr int kUsageError = 2;
constexpr int kCannotExecute = 127;

int complain(std::string_view what) {
  std::fprintf(stderr, "qlhelper: %.*s\n", static_cast<int>(what.size()), what.data());
  return kUsageError;
}

/// As far as this process may: root lifts what the user's session has set, another user up to its hard limit.
void liftLimit(__rlimit_resource_t resource) {
  rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
  if (::setrlimit(resource, &limit) == 0 || ::getrlimit(resource, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  (void)::setrlimit(resource, &limit);
}

/// What the caller's session may have left behind: handlers, limits, the mask.
void resetProcess() {
  corvane::setAllSignalsToDefault();
  corvane::setSignal(SIGPIPE, SIG_IGN);
  corvane::setSignal(SIGXFSZ, SIG_IGN);  // a limit is an error like a full disk
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::umask(022);
  for (const auto resource : {RLIMIT_FSIZE, RLIMIT_CPU, RLIMIT_AS, RLIMIT_DATA}) liftLimit(resource);
  const rlimit nothing{0, 0};
  (void)::setrlimit(RLIMIT_CORE, &nothing);
}

/// What polkit's launcher tells of the user who asked; nothing when it did not start this process.
const char* userToldByPolkit() {
  return std::getenv("PKEXEC_UID");  // NOLINT(concurrency-mt-unsafe): this process has one thread
}

uid_t invokingUser() {
  const char* told = userToldByPolkit();
  return ::geteuid() == 0 && told != nullptr ? static_cast<uid_t>(std::strtoul(told, nullptr, 10))
                                             : ::getuid();
}

int session(std::string_view rootArgument) {
  const auto root = corvane::helper::normalizedRoot(rootArgument);
  if (!root) return complain("the root prefix is not an absolute path");
  // Programs are started and the shell is run by path, so the path must not lead through a link that others
  // can turn.
  std::error_code error;
  if (!root->empty() && std::filesystem::canonical(*root, error).string() != *root) {
    return complain("the root prefix is not a folder, or its path leads through a symbolic link");
  }
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return complain("cannot tell where the helper tool is");
  struct stat input {};
  if (::fstat(STDIN_FILENO, &input) != 0 || !S_ISSOCK(input.st_mode)) {
    return complain("the standard input is not a socket");
  }
  resetProcess();
  // A terminal's keys reach every process of its foreground group, whoever it runs as: one must not end root
  // in the middle of a write. Fails only where a shell has started this process in a group of its own.
  (void)::setsid();
  if (::chdir("/") != 0) return complain("cannot enter /");
  return corvane::helper::serveSession(STDIN_FILENO, Place{*root, self.string()},
                                       Caution{.user = invokingUser(), .distrust = ::geteuid() == 0});
}

int become(char** vector) {
  // Someone who got root's rights for a session of the pane has got no more than that.
  if (userToldByPolkit() != nullptr) return complain("only sessions are started through polkit");
  if (vector[0][0] != '/') return complain("the program must be named by an absolute path");
  ::execv(vector[0], vector);
  complain(std::string(vector[0]) + ": " + std::generic_category().message(errno));
  return kCannotExecute;
}

}  // namespace

int main(int count, char** vector) {
  // A standard stream that is closed would let the next open file take its place.
  for (int number = 0; number <= 2; ++number) {
    if (::fcntl(number, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != number) return kUsageError;
  }
  const bool isSession = count > 1 && std::string_view(vector[1]) == "--session";
  if (isSession && count == 4 && std::string_view(vector[2]) == "--root") return session(vector[3]);
  if (count > 1 && !isSession) return become(vector + 1);
  return complain("usage: qlhelper PROGRAM ARGUMENTS... | qlhelper --session --root DIR");
}
