#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/LinuxSystemLog.h"
#include "posix/FileDescriptor.h"
#include "posix/PosixPropertyListFiles.h"
#include "posix/Signals.h"
#include "support/Isolated.h"
#include "support/TemporaryFolder.h"

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

TEST(ProcessSignals, FileThatGrowsBeyondTheSessionsLimitIsAnErrorAndNoEnd) {
  const auto outcome = test::runIsolated(0, [] {
    std::signal(SIGXFSZ, SIG_DFL);
    prepareSignals();
    const test::TemporaryFolder folder;
    const rlimit limit{16, 16};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto value = PropertyList::string(std::string(1000, 'x'));
    EXPECT_EQ(PosixPropertyListFiles().write(folder / "a.plist", value).reason, "File too large");
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

TEST(ProcessSignals, FileThatWouldBecomeTooLargeIsAFailedWriteAndNotTheEnd) {
  const auto outcome = test::runIsolated(0, [] {
    std::signal(SIGXFSZ, SIG_DFL);
    prepareSignals();
    const test::TemporaryFolder folder;
    const rlimit tiny{10, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
    const FileDescriptor file(::open((folder / "file").c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    EXPECT_EQ(::write(file.get(), "0123456789abc", 13), 10);
    EXPECT_EQ(::write(file.get(), "abc", 3), -1);
    EXPECT_EQ(errno, EFBIG);
  });
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

}  // namespace
}  // namespace corvane
