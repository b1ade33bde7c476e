// Programs that are started: what is told of their start, and what they print.
#include <cerrno>
#include <cstdio>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Launch.h"

namespace corvane::helper::test {
namespace {

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

}  // namespace
}  // namespace corvane::helper::test
