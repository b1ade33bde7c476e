// The program `corvanectl`, run as a person or a script runs it.
#pragma once

#include <array>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"
#include "support/DemoClient.h"

namespace corvane::test {

using Json = nlohmann::ordered_json;
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

/// A terminal, as the person who looks at it and types has it.
class Terminal {
 public:
  Terminal() {
    int primary = -1;
    int secondary = -1;
    EXPECT_EQ(::openpty(&primary, &secondary, nullptr, nullptr, nullptr), 0);
    person_.reset(primary);
    program_.reset(secondary);
    for (const int end : {primary, secondary}) (void)::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  /// The end for programs.
  [[nodiscard]] int program() const { return program_.get(); }
  void type(const std::string& keys) const {
    EXPECT_EQ(::write(person_.get(), keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }
  /// Whether what is typed is shown.
  [[nodiscard]] bool echoes() const {
    termios settings{};
    EXPECT_EQ(::tcgetattr(person_.get(), &settings), 0);
    return (settings.c_lflag & ECHO) != 0;
  }
  /// Everything that stands there since it was last looked at.
  [[nodiscard]] std::string shown() const {
    std::string all;
    pollfd waited{person_.get(), POLLIN, 0};
    char buffer[4096];
    while (::poll(&waited, 1, 0) > 0 && (waited.revents & POLLIN) != 0) {
      const ssize_t count = ::read(person_.get(), buffer, sizeof buffer);
      if (count <= 0) break;
      all.append(buffer, static_cast<std::size_t>(count));
    }
    return all;
  }
  /// The window with it is closed.
  void close() { person_.reset(); }

 private:
  FileDescriptor person_;
  FileDescriptor program_;
};

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
    int status = 0;
    const bool hasEnded = waitUntil([&] { return ::waitpid(pid_, &status, WNOHANG) == pid_; });
    EXPECT_TRUE(hasEnded) << "the program does not end";
    if (!hasEnded) return {};
    pid_ = -1;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status), contentsOf(output_.get()),
            errors()};
  }

 private:
  FileDescriptor output_;
  FileDescriptor errors_;
  pid_t pid_ = -1;
};

[[nodiscard]] inline Ended ctl(const Words& arguments, const std::string& input = {}) {
  return RunningCtl(arguments, {.input = input}).end();
}

/// A demo client, and calls over it.
class CtlTest : public testing::Test {
 protected:
  [[nodiscard]] Words at(const Words& arguments) const {
    Words all{"--root", demo.root};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
  }
  [[nodiscard]] Ended run(const Words& arguments, const std::string& input = {}) const {
    return ctl(at(arguments), input);
  }
  /// Expects success; what was printed.
  std::string good(const Words& arguments, const std::string& input = {}) const {
    const Ended ended = run(arguments, input);
    EXPECT_EQ(ended.status, 0) << testing::PrintToString(arguments) << "\n" << testing::PrintToString(ended);
    EXPECT_EQ(ended.errors, "") << testing::PrintToString(arguments);
    return ended.output;
  }
  Json json(Words arguments) const {
    arguments.insert(arguments.begin(), "--json");
    return Json::parse(good(arguments), nullptr, false);
  }
  /// Expects a failure with this status and this one line on standard error, and nothing else.
  void refused(const Words& arguments, int status, const std::string& line) const {
    const Ended ended = run(arguments);
    EXPECT_EQ(ended.status, status) << testing::PrintToString(arguments);
    EXPECT_EQ(ended.errors, "corvanectl: " + line + "\n") << testing::PrintToString(arguments);
    EXPECT_EQ(ended.output, "") << testing::PrintToString(arguments);
  }
  /// Every file of the tree with its contents, without what the client itself writes meanwhile.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> files() const {
    std::vector<std::pair<std::string, std::string>> all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(demo.root)) {
      if (entry.is_regular_file()) all.emplace_back(entry.path(), DemoClient::contents(entry.path()));
    }
    std::ranges::sort(all);
    return all;
  }
  [[nodiscard]] bool nothingIsStaged() const {
    const std::filesystem::path staging(demo.root + "/private/tmp");
    for (const auto& entry : std::filesystem::directory_iterator(staging))
      if (entry.is_regular_file()) return false;
    return true;
  }
  void TearDown() override { EXPECT_TRUE(nothingIsStaged()); }

  DemoClient demo;
};

}  // namespace corvane::test
