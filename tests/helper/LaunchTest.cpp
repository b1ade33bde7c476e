// Programs that are started: what is told of their start, and what they print.
#include <cerrno>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Launch.h"
#include "support/Isolated.h"

namespace corvane::helper::test {
namespace {

using namespace corvane::test;

bool leftNoChild() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

TEST(StartDetached, ProgramThatCannotBeStartedIsAnError) {
  EXPECT_EQ(startDetached({"/nonexistent", {}}), ENOENT);
  EXPECT_EQ(startDetached({"/etc/passwd", {}}), EACCES);
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

/// What is printed up to the end of a line, or to the end of the output.
std::string readLine(int descriptor) {
  std::string line;
  char next = 0;
  while (!line.ends_with('\n') && ::read(descriptor, &next, 1) == 1) line += next;
  return line;
}

TEST(StartSupervised, NoDescriptorReachesTheProgramOnAKernelThatClosesThemOneByOne) {
  const auto outcome = runIsolated(0, [] {
    if (!forgetSystemCall(SYS_close_range)) GTEST_SKIP() << "no filter for system calls";
    ASSERT_EQ(::close_range(1000, 1000, 0), -1);
    ASSERT_EQ(::dup2(STDERR_FILENO, 9), 9);
    const auto lifeline = makePipe();
    const std::string say =
        "for i in 3 4 5 6 7 8 9; do test -e /proc/$$/fd/$i && echo $i; done; echo ran; exec sleep";
    auto run = startSupervised({"/bin/sh", {"-c", say + " 1000"}}, lifeline.readEnd.get());
    EXPECT_EQ(run.error, 0);
    EXPECT_EQ(readLine(run.output.get()), "ran\n");
    // The output ends when nobody has it any more, the supervisor neither.
    run.leash.reset();
    EXPECT_EQ(readLine(run.output.get()), "");
    EXPECT_EQ(startSupervised({"/nonexistent", {}}, lifeline.readEnd.get()).error, ENOENT);
    EXPECT_EQ(startDetached({"/bin/true", {}}), 0);
  });
  if (outcome == IsolatedOutcome::Impossible) GTEST_SKIP() << "no filter for system calls";
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

}  // namespace
}  // namespace corvane::helper::test
