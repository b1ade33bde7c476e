#include <cerrno>
#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"
#include "posix/ProgramOutput.h"
#include "support/Patience.h"
#include "support/TemporaryFolder.h"

namespace corvane {
namespace {

using ::testing::Optional;

std::optional<std::string> shell(const std::string& command, const OutputLimits& limits = {}) {
  return outputOf("/bin/sh", {"-c", command}, limits);
}

bool hasChildren() {
  errno = 0;
  return ::waitpid(-1, nullptr, WNOHANG) != -1 || errno != ECHILD;
}

double secondsFor(const std::function<void()>& act) {
  const auto start = std::chrono::steady_clock::now();
  act();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(ProgramOutput, AnswersWithEverythingPrintedAndLeavesNoChild) {
  EXPECT_EQ(shell("printf 'one\\ntwo'"), "one\ntwo");
  EXPECT_EQ(shell("exit 3"), "");
  EXPECT_FALSE(hasChildren());
}

TEST(ProgramOutput, ArgumentsArriveUnchanged) {
  EXPECT_EQ(outputOf("/usr/bin/printf", {"%s|", "a b", "$HOME", "", "*"}), "a b|$HOME||*|");
}

TEST(ProgramOutput, ProgramThatCannotBeStartedIsNothing) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(outputOf("/nonexistent", {}), std::nullopt);
  EXPECT_EQ(outputOf(folder.writeFile("not-executable", "text"), {}), std::nullopt);
  EXPECT_EQ(outputOf(folder.path(), {}), std::nullopt);
  EXPECT_FALSE(hasChildren());
}

TEST(ProgramOutput, OutputLargerThanThePipeIsComplete) {
  const auto output = shell("head -c 1000000 /dev/zero");
  ASSERT_TRUE(output);
  EXPECT_EQ(output->size(), 1'000'000U);
}

/// Whether the process, of which nobody may be told, is gone.
bool endsSoon(pid_t process) {
  const FileDescriptor watched(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
  if (!watched) return errno == ESRCH;
  pollfd ended{watched.get(), POLLIN, 0};
  return ::poll(&ended, 1, test::kHangMilliseconds) == 1;
}

TEST(ProgramOutput, EndlessOutputIsStoppedAtTheLimit) {
  EXPECT_EQ(shell("cat /dev/zero", {10, 100'000}), std::nullopt);
  EXPECT_FALSE(hasChildren());
}

TEST(ProgramOutput, ProgramThatHangsIsKilledWithWhatItStarted) {
  const test::TemporaryFolder folder;
  std::optional<std::string> output = "";
  const double seconds = secondsFor([&] {
    output = shell("sleep 600 & echo $! > '" + (folder / "pid") + "'; wait", {1.0, 1000});
  });
  EXPECT_EQ(output, std::nullopt);
  EXPECT_LT(seconds, test::kHangSeconds);
  EXPECT_FALSE(hasChildren());
  const std::string grandchild = folder.readFile("pid");
  ASSERT_FALSE(grandchild.empty());
  EXPECT_TRUE(endsSoon(std::stoi(grandchild))) << "still running: " << grandchild;
}

TEST(ProgramOutput, ProgramThatClosesItsOutputAndHangsIsKilled) {
  EXPECT_EQ(shell("exec >&-; exec sleep 600", {0.2, 1000}), std::nullopt);
  EXPECT_FALSE(hasChildren());
}

TEST(ProgramOutput, ProgramInheritsNoDescriptorAndReadsNothing) {
  // Inheritable on purpose, under a number that a shell has no use for itself.
  const FileDescriptor leaky(::fcntl(STDERR_FILENO, F_DUPFD, 50));
  ASSERT_TRUE(leaky);
  const std::string ofTheShell = "/proc/$$/fd/" + std::to_string(leaky.get());
  EXPECT_EQ(shell("test -e " + ofTheShell + " && echo inherited || echo closed"), "closed\n");
  EXPECT_EQ(shell("readlink /proc/$$/fd/0; cat"), "/dev/null\n");
}

TEST(ProgramOutput, ProgramStartsWithFreshSignals) {
  const auto handler = std::signal(SIGPIPE, SIG_IGN);
  sigset_t blocked;
  sigset_t before;
  ::sigemptyset(&blocked);
  ::sigaddset(&blocked, SIGUSR1);
  ::sigprocmask(SIG_BLOCK, &blocked, &before);
  // A shell that waits for its child blocks signals of its own accord.
  const auto output = shell("exec grep SigIgn /proc/self/status");
  const auto mask = shell("exec grep SigBlk /proc/self/status");
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
  std::signal(SIGPIPE, handler);
  EXPECT_EQ(mask, "SigBlk:\t0000000000000000\n");
  // The C library keeps two signals above the numbered ones for itself and ignores them in every child.
  EXPECT_THAT(output, Optional(::testing::EndsWith("0000000\n")));
}

}  // namespace
}  // namespace corvane
