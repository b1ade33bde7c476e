#include "platform/linux/LinuxProcessOutput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/FileDescriptor.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

/// What the child is to find: empty input, the pipe as output, nothing else open, signals as in a fresh
/// program.
class SpawnSettings {
 public:
  explicit SpawnSettings(int output) {
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    ::posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    ::sigemptyset(&none);
    ::sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setpgroup(&attributes, 0);  // a group of its own, so that all of it can be killed
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings() {
    ::posix_spawn_file_actions_destroy(&actions);
    ::posix_spawnattr_destroy(&attributes);
  }

  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

/// Waits until the descriptor can be read; false when the deadline passes first.
bool waitForInput(int descriptor, Clock::time_point deadline) {
  for (;;) {
    const std::chrono::duration<double, std::milli> left = deadline - Clock::now();
    const auto milliseconds = static_cast<int>(std::clamp(std::ceil(left.count()), 0.0, 1e9));
    pollfd entry{descriptor, POLLIN, 0};
    const int ready = ::poll(&entry, 1, milliseconds);
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

/// Everything up to the end of the pipe; nothing when it does not end in time or exceeds the limit.
std::optional<std::string> readAll(int pipe, std::size_t limit, Clock::time_point deadline) {
  std::string output;
  std::array<char, 16384> buffer{};
  while (waitForInput(pipe, deadline)) {
    const ssize_t count = ::read(pipe, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) return output;
    output.append(buffer.data(), static_cast<std::size_t>(count));
    if (output.size() > limit) return std::nullopt;
  }
  return std::nullopt;
}

void reap(pid_t child) {
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
}

}  // namespace

std::optional<std::string> LinuxProcessOutput::outputOf(const std::string& program,
                                                        const std::vector<std::string>& arguments) {
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                           std::chrono::duration<double>(limits_.seconds));
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
  const FileDescriptor readEnd(ends[0]);
  FileDescriptor writeEnd(ends[1]);

  std::vector<char*> vector;
  vector.push_back(const_cast<char*>(program.c_str()));  // NOLINT(*-const-cast): the call does not write
  for (const auto& argument : arguments)
    vector.push_back(const_cast<char*>(argument.c_str()));  // NOLINT(*-const-cast)
  vector.push_back(nullptr);
  pid_t child = 0;
  const SpawnSettings settings(writeEnd.get());
  if (::posix_spawn(&child, program.c_str(), &settings.actions, &settings.attributes, vector.data(),
                    environ) != 0) {
    return std::nullopt;
  }
  writeEnd.reset();

  std::optional<std::string> output = readAll(readEnd.get(), limits_.bytes, deadline);
  // A program may close its output and go on; its end is awaited under the same deadline.
  const FileDescriptor process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
  if (!output || !process || !waitForInput(process.get(), deadline)) {
    output.reset();
    ::kill(-child, SIGKILL);
  }
  reap(child);
  return output;
}

}  // namespace corvane
