// The program `corvanectl`, run as a person or a script runs it.
#pragma once

#include <array>
#include <csignal>
#include <string>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"
#include "support/Patience.h"
#include "support/Terminal.h"

namespace corvane::test {

using Words = std::vector<std::string>;

/// How a call has ended; a signal counts as 1000 and its number, which no exit status is.
struct Ended {
  int status = -1;
  std::string output;
  std::string errors;
};

inline void PrintTo(const Ended& ended, std::ostream* stream) {
  *stream << "status " << ended.status << "\noutput:\n" << ended.output << "errors:\n" << ended.errors;
}

inline std::string contentsOf(int descriptor) {
  std::string all;
  char buffer[65536];
  ssize_t count = 0;
  ::lseek(descriptor, 0, SEEK_SET);
  while ((count = ::read(descriptor, buffer, sizeof buffer)) > 0)
    all.append(buffer, static_cast<std::size_t>(count));
  return all;
}

struct CtlOptions {
  int output = -1;  // stands for standard output; it stays the caller's. -1: kept until the end
  std::string input = {};
  const Terminal* terminal = nullptr;  // that the program is started from; all its streams are there
  uid_t user = 0;                      // another one than that of the test
  std::string program = CORVANECTL_PATH;
};

/// A call that goes on while the test looks at it.
class RunningCtl {
 public:
  explicit RunningCtl(const Words& arguments, const CtlOptions& options = {})
      : output_(::memfd_create("output", MFD_CLOEXEC)), errors_(::memfd_create("errors", MFD_CLOEXEC)) {
    const FileDescriptor given(::memfd_create("input", MFD_CLOEXEC));
    EXPECT_EQ(::write(given.get(), options.input.data(), options.input.size()),
              static_cast<ssize_t>(options.input.size()));
    ::lseek(given.get(), 0, SEEK_SET);
    std::vector<char*> words{const_cast<char*>(options.program.c_str())};
    for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    std::array streams{given.get(), options.output >= 0 ? options.output : output_.get(), errors_.get()};
    if (options.terminal != nullptr) streams.fill(options.terminal->program());
    pid_ = ::fork();
    if (pid_ != 0) return;
    if (options.terminal != nullptr && (::setsid() < 0 || ::ioctl(streams[0], TIOCSCTTY, 0) != 0))
      ::_exit(126);
    for (int stream = 0; stream < 3; ++stream) ::dup2(streams[static_cast<std::size_t>(stream)], stream);
    const uid_t user = options.user;
    if (user != 0 && (::setgroups(0, nullptr) != 0 || ::setresgid(user, user, user) != 0 ||
                      ::setresuid(user, user, user) != 0))
      ::_exit(126);
    ::execv(words[0], words.data());
    ::_exit(127);
  }
  RunningCtl(const RunningCtl&) = delete;
  RunningCtl& operator=(const RunningCtl&) = delete;
  ~RunningCtl() {
    if (pid_ <= 0) return;
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }

  void signal(int number) const { EXPECT_EQ(::kill(pid_, number), 0); }
  [[nodiscard]] std::string errors() const { return contentsOf(errors_.get()); }
  /// Waits for its end, which no test waits for in vain: a call that hangs is killed.
  [[nodiscard]] Ended end() {
    const bool isOver = waitUntil([this] { return hasEnded(); });
    EXPECT_TRUE(isOver) << "the program does not end";
    if (!isOver) return {};
    return {WIFEXITED(status_) ? WEXITSTATUS(status_) : 1000 + WTERMSIG(status_), contentsOf(output_.get()),
            errors()};
  }
  [[nodiscard]] bool hasEnded() {
    if (pid_ > 0 && ::waitpid(pid_, &status_, WNOHANG) == pid_) pid_ = -1;
    return pid_ <= 0;
  }
  [[nodiscard]] pid_t pid() const { return pid_; }

 private:
  FileDescriptor output_;
  FileDescriptor errors_;
  pid_t pid_ = -1;
  int status_ = -1;
};

[[nodiscard]] inline Ended ctl(const Words& arguments, const std::string& input = {}) {
  return RunningCtl(arguments, {.input = input}).end();
}

}  // namespace corvane::test
