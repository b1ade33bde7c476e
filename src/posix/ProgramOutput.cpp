#include "posix/ProgramOutput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>

#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/Differences.h"
#include "posix/Pipe.h"
#include "posix/SpawnSettings.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

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

std::optional<std::string> outputOf(const std::string& program, const std::vector<std::string>& arguments,
                                    const OutputLimits& limits) {
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                           std::chrono::duration<double>(limits.seconds));
  auto pipe = makePipe();
  if (!pipe.readEnd) return std::nullopt;

  std::vector<char*> vector;
  vector.push_back(const_cast<char*>(program.c_str()));  // NOLINT(*-const-cast): the call does not write
  for (const auto& argument : arguments)
    vector.push_back(const_cast<char*>(argument.c_str()));  // NOLINT(*-const-cast)
  vector.push_back(nullptr);
  pid_t child = 0;
  const SpawnSettings settings({.output = pipe.writeEnd.get()}, SpawnSettings::Group::ItsOwn);
  if (::posix_spawn(&child, program.c_str(), settings.actions(), settings.attributes(), vector.data(),
                    ownEnvironment()) != 0) {
    return std::nullopt;
  }
  pipe.writeEnd.reset();

  std::optional<std::string> output = readAll(pipe.readEnd.get(), limits.bytes, deadline);
  // A program may close its output and go on; its end is awaited under the same deadline.
  const auto process = watchEndOf(child);
  if (!output || !process || !waitForInput(process.get(), deadline)) {
    output.reset();
    ::kill(-child, SIGKILL);
  }
  reap(child);
  return output;
}

}  // namespace corvane
