#include "helper/HelperMain.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helper/CommandRunner.h"
#include "helper/CommandShapes.h"
#include "helper/Session.h"
#include "helper/UsersSession.h"
#include "posix/Signals.h"

namespace corvane::helper {
namespace {

constexpr int kUsageError = 2;
constexpr int kCannotExecute = 127;

int complain(std::string_view what) {
  std::fprintf(stderr, "qlhelper: %.*s\n", static_cast<int>(what.size()), what.data());
  return kUsageError;
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

int session(std::string_view rootArgument, TreeObservers observers) {
  const auto root = normalizedRoot(rootArgument);
  if (!root) return complain("the root prefix is not an absolute path");
  std::error_code error;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return complain("cannot tell where the helper tool is");
  struct stat input {};
  if (::fstat(STDIN_FILENO, &input) != 0 || !S_ISSOCK(input.st_mode)) {
    return complain("the standard input is not a socket");
  }
  leaveUsersSession();
  corvane::setSignal(SIGPIPE, SIG_IGN);
  corvane::setSignal(SIGXFSZ, SIG_IGN);  // a limit is an error like a full disk
  // Root's memory is dumped nowhere. Programs that it starts become what they were without this.
  if (::geteuid() == 0) ::prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
  // A terminal's keys reach every process of its foreground group, whoever it runs as: one must not end root
  // in the middle of a write. Fails only where a shell has started this process in a group of its own.
  (void)::setsid();
  if (::chdir("/") != 0) return complain("cannot enter /");
  CommandRunner runner({*root, self.string()}, invokingUser(), std::move(observers));
  if (const auto objection = runner.tree().objection(); !objection.empty()) return complain(objection);
  return serveSession(STDIN_FILENO, runner);
}

int sayVersion() {
  const auto version = hello();
  return std::printf("%.*s\n", static_cast<int>(version.size()), version.data()) < 0 ? kUsageError : 0;
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

int helperMain(int count, char** vector, TreeObservers observers) {
  // A standard stream that is closed would let the next open file take its place.
  for (int number = 0; number <= 2; ++number) {
    if (::fcntl(number, F_GETFD) < 0 && ::open("/dev/null", O_RDWR) != number) return kUsageError;
  }
  if (count == 2 && std::string_view(vector[1]) == "--version") return sayVersion();
  const bool isSession = count > 1 && std::string_view(vector[1]) == "--session";
  if (isSession && count == 4 && std::string_view(vector[2]) == "--root")
    return session(vector[3], std::move(observers));
  if (count > 1 && !isSession) return become(vector + 1);
  return complain(
      "usage: qlhelper PROGRAM ARGUMENTS... | qlhelper --session --root DIR | qlhelper --version");
}

}  // namespace corvane::helper
