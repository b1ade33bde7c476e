// The program `corvanectl`, run as a person or a script runs it.
#pragma once

#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
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

/// A call that goes on while the test looks at it.
class RunningCtl {
 public:
  /// `output` stands for standard output; it stays the caller's. -1: kept until the end.
  explicit RunningCtl(const Words& arguments, int output = -1, const std::string& input = {},
                      const std::string& program = CORVANECTL_PATH)
      : output_(::memfd_create("output", MFD_CLOEXEC)), errors_(::memfd_create("errors", MFD_CLOEXEC)) {
    const FileDescriptor given(::memfd_create("input", MFD_CLOEXEC));
    EXPECT_EQ(::write(given.get(), input.data(), input.size()), static_cast<ssize_t>(input.size()));
    ::lseek(given.get(), 0, SEEK_SET);
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    pid_ = ::fork();
    if (pid_ != 0) return;
    ::dup2(given.get(), 0);
    ::dup2(output >= 0 ? output : output_.get(), 1);
    ::dup2(errors_.get(), 2);
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
  return RunningCtl(arguments, -1, input).end();
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
