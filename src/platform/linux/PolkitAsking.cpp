#include "platform/linux/PolkitAsking.h"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Session.h"
#include "platform/linux/HelperRights.h"
#include "platform/linux/Installation.h"
#include "posix/Differences.h"
#include "posix/Pipe.h"
#include "posix/SpawnSettings.h"

namespace corvane {
namespace {

// What polkit's launcher exits with when the program was not started.
constexpr int kDismissed = 126;
constexpr int kNotStarted = 127;
// All that the launcher needs: it refuses to run when some of the user's variables are not to its taste.
constexpr const char* kEnvironment[] = {"PATH=/usr/bin:/bin", nullptr};
constexpr std::string_view kNotAuthorized = "Not authorized";
constexpr std::size_t kLongestComplaint = 2000;

/// How long a withdrawn question may take to go away, in milliseconds.
constexpr int kWithdrawal = 1000;

/// The first line of what the launcher has printed.
std::string firstLine(int descriptor) {
  std::string text(kLongestComplaint, '\0');
  pollfd waited{descriptor, POLLIN, 0};
  if (::poll(&waited, 1, 0) <= 0) return {};
  const ssize_t count = ::read(descriptor, text.data(), text.size());
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return text.substr(0, text.find('\n'));
}

}  // namespace

PolkitAsking::PolkitAsking(LinuxRunLoop& runLoop, SystemLog& log, Options options,
                           AuthorizationServices::Done done)
    : runLoop_(runLoop), log_(log), options_(std::move(options)), done_(std::move(done)) {}

PolkitAsking::~PolkitAsking() {
  childSource_.reset();
  if (child_.descriptor() < 0) return;
  socket_.reset();
  child_.terminate();
  pollfd ended{child_.descriptor(), POLLIN, 0};
  (void)::poll(&ended, 1, kWithdrawal);
  (void)child_.reap();
}

void PolkitAsking::start() {
  std::string problem;
  if (launch(problem)) {
    socketSource_ = runLoop_.watchDescriptor(socket_.get(), [this] { socketReady(); });
    childSource_ = runLoop_.watchDescriptor(child_.descriptor(), [this] { childEnded(); });
    return;
  }
  deadline_ = runLoop_.scheduleTimer(0, false,
                                     [this, problem] { answer(AuthorizationOutcome::Unavailable, problem); });
}

bool PolkitAsking::launch(std::string& problem) {
  problem = missingHelper(options_.helper);
  if (!problem.empty()) return false;
  // Held until the launcher is there to be watched in its stead: one that can't be would stay behind.
  FileDescriptor watch = watchEndOf(::getpid());
  if (!watch) {
    problem = "this system can't watch a process: " + std::generic_category().message(errno);
    return false;
  }
  int ends[2];
  auto complaints = makePipe();
  if (!complaints.readEnd || ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) {
    problem = std::generic_category().message(errno);
    return false;
  }
  socket_ = FileDescriptor(ends[0]);
  const FileDescriptor low(ends[1]);
  const FileDescriptor theirs(::fcntl(low.get(), F_DUPFD_CLOEXEC, 3));  // above the standard streams
  complaints_ = std::move(complaints.readEnd);

  const SpawnSettings settings({.input = theirs.get(), .errors = complaints.writeEnd.get()},
                               SpawnSettings::Group::Ours);
  const std::string root = options_.root.empty() ? "/" : options_.root;
  const std::array<const char*, 7> vector{options_.pkexec.c_str(),
                                          "--disable-internal-agent",
                                          options_.helper.c_str(),
                                          "--session",
                                          "--root",
                                          root.c_str(),
                                          nullptr};
  pid_t pid = -1;
  const int error =
      ::posix_spawn(&pid, options_.pkexec.c_str(), settings.actions(), settings.attributes(),
                    const_cast<char* const*>(vector.data()), const_cast<char* const*>(kEnvironment));
  if (error != 0) {
    problem = options_.pkexec + ": " + std::generic_category().message(error);
    return false;
  }
  watch.reset();
  child_ = ChildProcess(pid);
  return true;
}

/// The hello, or the end of the launcher or the helper.
void PolkitAsking::socketReady() {
  const auto packet = helper::receivePacket(socket_.get());
  if (packet.state == helper::Packet::State::Whole && packet.bytes == helper::hello()) {
    auto rights = std::make_unique<HelperRights>(runLoop_, log_, std::move(socket_), std::move(child_),
                                                 options_.answerDeadline);
    answer(AuthorizationOutcome::Granted, {}, std::move(rights));
    return;
  }
  if (packet.bytes.starts_with("qlhelper ")) {
    socket_.reset();
    childSource_.reset();
    ChildProcess::leave(runLoop_, std::move(child_));
    answer(AuthorizationOutcome::Unavailable, foreignHelper(options_.helper));
    return;
  }
  // The exit status tells why; something that hangs up and stays is not waited for longer than for an answer.
  deadline_ = runLoop_.scheduleTimer(options_.answerDeadline, false,
                                     [this] { answer(AuthorizationOutcome::Unavailable, kHelperIsSilent); });
  const auto source = std::move(socketSource_);
  socket_.reset();
}

void PolkitAsking::childEnded() {
  const auto status = child_.reap();
  if (!status) return;
  const auto complaint = firstLine(complaints_.get());
  const int code = WIFEXITED(*status) ? WEXITSTATUS(*status) : 128 + WTERMSIG(*status);
  if (code == kDismissed) {
    answer(AuthorizationOutcome::Cancelled, {});
  } else if (code == kNotStarted && complaint.find(kNotAuthorized) != std::string::npos) {
    answer(AuthorizationOutcome::Denied, complaint);
  } else {
    answer(AuthorizationOutcome::Unavailable,
           complaint.empty() ? "the root helper ended with exit status " + std::to_string(code) : complaint);
  }
}

/// Whoever is answered may ask again, which destroys this object.
void PolkitAsking::answer(AuthorizationOutcome outcome, std::string_view problem,
                          std::unique_ptr<Authorization> rights) {
  if (!problem.empty()) log_.write(std::string(kNoRights) + std::string(problem));
  const auto socketSource = std::move(socketSource_);
  const auto childSource = std::move(childSource_);
  const auto deadline = std::move(deadline_);
  const auto done = std::move(done_);
  done_ = nullptr;
  done({outcome, std::move(rights), std::string(problem)});
}

}  // namespace corvane
