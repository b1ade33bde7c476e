// Programs that are awaited: how they end is told, and none is waited for beyond its time.
#include <cerrno>
#include <csignal>
#include <cstdio>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Launch.h"

namespace corvane::helper::test {
namespace {

constexpr int kLong = 20;  // seconds

/// A tool that does not end by itself, nor asks to be ended.
const Program kHanging{"/bin/sh", {"-c", "trap '' TERM HUP INT; sleep 1000"}};

bool leftNoChild() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

TEST(RunToEnd, TellsTheExitStatusOrTheSignal) {
  EXPECT_EQ(runToEnd({"/bin/true", {}}, kLong, -1).exitStatus, 0);
  EXPECT_EQ(runToEnd({"/bin/sh", {"-c", "exit 7"}}, kLong, -1).exitStatus, 7);
  EXPECT_EQ(runToEnd({"/bin/sh", {"-c", "kill -TERM $$"}}, kLong, -1).exitStatus, 128 + SIGTERM);
  EXPECT_TRUE(leftNoChild());
}

TEST(RunToEnd, ProgramThatCannotBeStartedIsAnError) {
  EXPECT_EQ(runToEnd({"/nonexistent", {}}, kLong, -1).error, ENOENT);
  EXPECT_EQ(runToEnd({"/etc/passwd", {}}, kLong, -1).error, EACCES);
  EXPECT_EQ(startDetached({"/nonexistent", {}}), ENOENT);
  EXPECT_TRUE(leftNoChild());
}

TEST(RunToEnd, ProgramIsKilledAfterItsTime) {
  const auto ending = runToEnd(kHanging, 0, -1);
  EXPECT_TRUE(ending.timedOut);
  EXPECT_FALSE(ending.abandoned);
  EXPECT_EQ(ending.exitStatus, 128 + SIGKILL);
  EXPECT_TRUE(leftNoChild());
}

TEST(RunToEnd, ProgramIsKilledWhenWhoeverAskedIsGone) {
  int ends[2];
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
  const FileDescriptor ours(ends[0]);
  FileDescriptor theirs(ends[1]);
  theirs.reset();
  const auto ending = runToEnd(kHanging, kLong, ours.get());
  EXPECT_TRUE(ending.abandoned);
  EXPECT_FALSE(ending.timedOut);
  EXPECT_TRUE(leftNoChild());
}

TEST(StartSupervised, ProgramThatCannotBeStartedIsAnErrorWithoutDescriptors) {
  const auto lifeline = makePipe();
  const auto run = startSupervised({"/nonexistent", {}}, lifeline.readEnd.get());
  EXPECT_EQ(run.error, ENOENT);
  EXPECT_FALSE(run.output);
  EXPECT_FALSE(run.leash);
  EXPECT_TRUE(leftNoChild());
}

/// Prints the output of a run in a process without a standard output, and ends it.
[[noreturn]] void runWithoutStandardOutput(const Program& program) {
  ::close(STDOUT_FILENO);
  const auto lifeline = makePipe();
  const auto run = startSupervised(program, lifeline.readEnd.get());
  char output[100] = {};
  (void)!::read(run.output.get(), output, sizeof output - 1);
  std::fprintf(stderr, "output: %s", output);
  ::_exit(0);
}

TEST(StartSupervised, ComplaintsStayOutOfTheOutputAlsoWhereThePaneHasNoStandardOutput) {
  const Program program{"/bin/sh", {"-c", "echo complaint >&2; echo reply"}};
  EXPECT_EXIT(runWithoutStandardOutput(program), ::testing::ExitedWithCode(0), "^output: reply\n$");
}

}  // namespace
}  // namespace corvane::helper::test
