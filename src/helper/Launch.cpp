#include "helper/Launch.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Supervisor.h"
#include "helper/UsersSession.h"

namespace corvane::helper {
namespace {

constexpr const char* kEnvironment[] = {"PATH=/usr/bin:/bin:/usr/sbin:/sbin", nullptr};
constexpr int kCannotExecute = 127;
constexpr int kReport = 3;  // where the report stands, beside the standard streams, until the program runs

/// The vector for exec; made before the fork, since the child of a process with threads must not allocate.
std::vector<char*> vectorOf(const Program& program) {
  std::vector<char*> vector;
  vector.push_back(const_cast<char*>(program.path.c_str()));
  for (const auto& argument : program.arguments) vector.push_back(const_cast<char*>(argument.c_str()));
  vector.push_back(nullptr);
  return vector;
}

/// In a child: becomes the program. Tells the error through `report` when that fails.
[[noreturn]] void become(char* const* vector, int output, int report) {
  leaveUsersSession();
  const int opened = ::open("/dev/null", O_RDWR);
  // Above the standard streams: in the place of a closed one it would be overwritten by the output.
  const int null = opened < 0 ? -1 : ::fcntl(opened, F_DUPFD, 3);
  if (::chdir("/") == 0 && null >= 0 && ::dup2(null, 0) >= 0 && ::dup2(output >= 0 ? output : null, 1) >= 0 &&
      ::dup2(null, 2) >= 0 && (report == kReport || ::dup3(report, kReport, O_CLOEXEC) == kReport)) {
    report = kReport;
    ::closefrom(kReport + 1);
    ::execve(vector[0], vector, const_cast<char* const*>(kEnvironment));
  }
  const int error = errno;
  (void)!::write(report, &error, sizeof error);
  ::_exit(kCannotExecute);
}

/// What a child told of its start: 0 once the program runs, or the error.
int startingError(Pipe& report) {
  report.writeEnd.reset();
  int error = 0;
  ssize_t count = 0;
  do {
    count = ::read(report.readEnd.get(), &error, sizeof error);
  } while (count < 0 && errno == EINTR);
  return count == sizeof error ? error : 0;
}

/// Like a pipe, but of sockets, so that writing to one that nobody reads raises no signal.
Pipe makeLeash() {
  int ends[2];
  return ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0 ? raised(ends) : Pipe{};
}

/// Runs `body` in a process that nobody has to wait for. Answers 0 or the error.
template <class Body>
int forkOrphan(int report, const Body& body) {
  const pid_t between = ::fork();
  if (between < 0) return errno;
  if (between == 0) {
    const pid_t orphan = ::fork();
    if (orphan == 0) body();
    if (orphan < 0) {
      const int error = errno;
      (void)!::write(report, &error, sizeof error);
    }
    ::_exit(0);
  }
  while (::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
  }
  return 0;
}

}  // namespace

void releaseGently(FileDescriptor& leash) {
  (void)::send(leash.get(), &kReplyWasRead, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
  leash.reset();
}

int startDetached(const Program& program) {
  auto report = makePipe();
  if (!report.readEnd) return errno;
  auto vector = vectorOf(program);
  const int error = forkOrphan(report.writeEnd.get(), [&] {
    ::setsid();
    become(vector.data(), -1, report.writeEnd.get());
  });
  return error != 0 ? error : startingError(report);
}

SupervisedRun startSupervised(const Program& program, int lifeline) {
  SupervisedRun run;
  auto report = makePipe();
  auto output = makePipe();
  auto leash = makeLeash();
  if (!report.readEnd || !output.readEnd || !leash.readEnd) {
    run.error = errno;
    return run;
  }
  auto vector = vectorOf(program);
  run.error = forkOrphan(report.writeEnd.get(), [&] {
    supervise({.leash = leash.readEnd.get(),
               .lifeline = lifeline,
               .output = output.writeEnd.get(),
               .report = report.writeEnd.get()},
              [&](int out, int err) { become(vector.data(), out, err); });
  });
  output.writeEnd.reset();
  if (run.error == 0) run.error = startingError(report);
  if (run.error == 0) {
    run.output = std::move(output.readEnd);
    run.leash = std::move(leash.writeEnd);
  }
  return run;
}

}  // namespace corvane::helper
