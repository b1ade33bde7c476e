#include <array>
#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/LinuxSystemLog.h"
#include "posix/FileDescriptor.h"
#include "posix/Signals.h"
#include "support/Isolated.h"

namespace corvane {
namespace {

using test::IsolatedOutcome;

TEST(ProcessSignals, LogLineThatNobodyReadsDoesNotEndThePane) {
  const auto outcome = test::runIsolated(0, [] {
    std::signal(SIGPIPE, SIG_DFL);
    prepareSignals();
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    FileDescriptor(ends[0]).reset();
    const FileDescriptor writeEnd(ends[1]);
    LinuxSystemLog(writeEnd.get()).write("nobody reads this");
  });
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

TEST(ProcessSignals, ChildrenCanBeWaitedForThoughTheStarterIgnoredHisOwn) {
  const auto outcome = test::runIsolated(0, [] {
    std::signal(SIGCHLD, SIG_IGN);
    prepareSignals();
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) ::_exit(7);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 7);
  });
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

}  // namespace
}  // namespace corvane
