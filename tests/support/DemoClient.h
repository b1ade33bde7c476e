// A demo client below a temporary folder, laid out by its own script. Runs its scripts as the pane does: with
// bash, from the root folder, in an environment that holds nothing but a search path.
//
// The program that uses it is compiled with CORVANE_DEMO_FOLDER, the folder that holds the script.
#pragma once

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "pane/PathTable.h"
#include "support/Patience.h"
#include "support/TemporaryFolder.h"
#include "values/PropertyListCodec.h"

namespace corvane::test {

/// A program that was started: its standard output comes through a pipe, or through a socket that keeps its
/// writes apart.
class Started {
 public:
  enum class Output { Pipe, WriteByWrite };
  explicit Started(const std::vector<std::string>& command, Output kind = Output::Pipe) {
    int ends[2];
    const int made = kind == Output::Pipe ? ::pipe(ends) : ::socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends);
    if (made != 0) return;
    std::vector<char*> vector;
    for (const std::string& word : command) vector.push_back(const_cast<char*>(word.c_str()));
    vector.push_back(nullptr);
    const char* const environment[] = {"PATH=/usr/bin:/bin", nullptr};
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(ends[1], 1);
      ::close(ends[0]);
      ::close(ends[1]);
      if (::chdir("/") == 0) ::execve(vector[0], vector.data(), const_cast<char* const*>(environment));
      ::_exit(127);
    }
    ::close(ends[1]);
    output_ = ends[0];
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;
  ~Started() {
    if (pid_ > 0) ::kill(pid_, SIGKILL);
    static_cast<void>(exitCode());
    if (output_ >= 0) ::close(output_);
  }

  [[nodiscard]] pid_t pid() const { return pid_; }
  /// Everything that it prints until it closes its output.
  [[nodiscard]] std::string output() {
    std::string all;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::read(output_, buffer, sizeof buffer)) > 0)
      all.append(buffer, static_cast<std::size_t>(count));
    return all;
  }
  /// One read, as the pane makes it.
  [[nodiscard]] std::string firstPiece() {
    char buffer[1000];
    const ssize_t count = ::read(output_, buffer, sizeof buffer);
    return {buffer, count > 0 ? static_cast<std::size_t>(count) : 0};
  }
  /// How often it writes until it closes its output.
  [[nodiscard]] int writes() {
    char buffer[4096];
    int writes = 0;
    while (::read(output_, buffer, sizeof buffer) > 0) ++writes;
    return writes;
  }
  /// Waits for its end; 128 and more for a signal.
  int exitCode() {
    if (pid_ <= 0) return exitCode_;
    int status = 0;
    ::waitpid(std::exchange(pid_, -1), &status, 0);
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return exitCode_;
  }

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  int exitCode_ = -1;
};

inline int runToEnd(const std::vector<std::string>& command) { return Started(command).exitCode(); }

class DemoClient {
 public:
  /// Lays the client out in a folder of this name. `runSeconds` is how long a run of the client takes.
  explicit DemoClient(std::string runSeconds = "0", const std::string& folderName = "demo",
                      std::string makeDemo = script())
      : root(folder_ / folderName),
        paths(root),
        runSeconds_(std::move(runSeconds)),
        script_(std::move(makeDemo)) {
    EXPECT_EQ(make(), 0);
  }
  DemoClient(const DemoClient&) = delete;
  DemoClient& operator=(const DemoClient&) = delete;
  ~DemoClient() {
    const int daemon = daemonPid();
    if (isAlive(daemon)) ::kill(daemon, SIGTERM);
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
    EXPECT_TRUE(waitUntil([daemon] { return !isAlive(daemon); })) << "the daemon outlives its tree";
  }

  int make() { return runToEnd({script_, "--run-seconds", runSeconds_, root}); }
  [[nodiscard]] static std::string script() { return CORVANE_DEMO_FOLDER "/make-demo"; }
  /// The command that runs a script of the client.
  [[nodiscard]] static std::vector<std::string> bash(const std::string& script,
                                                     std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"/bin/bash", script});
    return arguments;
  }

  /// The process of the pid file; 0 when there is none.
  [[nodiscard]] int daemonPid() const {
    int pid = 0;
    std::ifstream(paths.diskJournalPid) >> pid;
    return pid;
  }
  /// Ended processes that nobody has waited for do not count.
  [[nodiscard]] static bool isAlive(int pid) {
    std::ifstream commandLine("/proc/" + std::to_string(pid) + "/cmdline");
    return pid > 0 && commandLine.get() != std::ifstream::traits_type::eof();
  }
  [[nodiscard]] static std::string contents(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  [[nodiscard]] static PropertyList plist(const std::string& path) {
    return readPropertyList(contents(path));
  }
  [[nodiscard]] std::string log() const { return contents(root + "/var/log/corvane.log"); }

 private:
  TemporaryFolder folder_;

 public:
  const std::string root;
  const PathTable paths;

 private:
  std::string runSeconds_;
  std::string script_;
};

}  // namespace corvane::test
