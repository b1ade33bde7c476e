// A small machine for the tests of the lock: a system bus, polkit, an unprivileged user and a client's tree
// that belongs to root, all inside a mount namespace of the test process, so that the real machine is left as
// it was.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "posix/FileDescriptor.h"
#include "support/TemporaryFolder.h"

/// Begins a test that needs the machine, which the test calls `machine`.
#define CORVANE_START_MACHINE(...)                                                 \
  if (const auto missing = machine.start(__VA_ARGS__)) {                           \
    GTEST_SKIP() << "NOT TESTED: the real polkit does not run here: " << *missing; \
  }

namespace corvane::test {

class PolkitMachine {
 public:
  static constexpr uid_t kUser = 4711;
  static constexpr uid_t kStranger = 4712;
  /// Of the user, who is the administrator where one is asked for.
  static constexpr const char* kPassword = "an admin's pa55word";
  enum class Rule { Allow, Refuse, AskAdministrator };

  PolkitMachine();
  ~PolkitMachine();
  PolkitMachine(const PolkitMachine&) = delete;
  PolkitMachine& operator=(const PolkitMachine&) = delete;

  /// Builds the machine; what is missing when that can't be done here.
  [[nodiscard]] std::optional<std::string> start(Rule rule, bool withPolicy = true);
  void killPolkit();

  /// Runs the body as the unprivileged user in a process of its own, in which failures of expectations count
  /// for this one too.
  void asUser(const std::function<void()>& body) const;
  /// The same without waiting; the process's id.
  [[nodiscard]] static pid_t startAsUser(const std::function<void()>& body, uid_t user = kUser);
  /// Puts another program in the helper's place.
  void replaceHelper(const std::string& program) const;

  [[nodiscard]] std::string helper() const { return base_ / "opt/qlhelper"; }
  /// The root prefix of the client's tree.
  [[nodiscard]] std::string root() const { return base_ / "tree"; }
  [[nodiscard]] std::string operator/(const std::string& relative) const { return root() + "/" + relative; }
  [[nodiscard]] const TemporaryFolder& base() const { return base_; }

 private:
  [[nodiscard]] bool mountFolders();
  void writeConfiguration(Rule rule, bool withPolicy) const;
  void layOutTree() const;
  /// Starts a daemon and waits until it prints the text.
  [[nodiscard]] bool startDaemon(const std::vector<std::string>& line, const std::string& untilPrinted);

  struct Daemon {
    pid_t pid;
    FileDescriptor output;
  };
  TemporaryFolder base_;
  std::vector<Daemon> daemons_;
  bool mounted_ = false;
};

/// A descriptor that becomes readable when the process ends.
[[nodiscard]] FileDescriptor watchProcess(pid_t pid);
/// Whether the descriptor becomes readable in good time.
[[nodiscard]] bool readableSoon(int descriptor);
/// Whether this process has no child, not even one that has ended and waits to be reaped.
[[nodiscard]] bool hasNoChild();
/// The first child of this process.
[[nodiscard]] pid_t onlyChild();

}  // namespace corvane::test
