#include <array>
#include <cerrno>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include "platform/linux/LinuxSystemLog.h"
#include "posix/FileDescriptor.h"
#include "posix/LogLine.h"
#include "support/Isolated.h"

namespace corvane {
namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

struct Case {
  std::string line;
  std::string escaped;
};

TEST(LinuxSystemLog, NothingInALineCanForgeAnother) {
  const std::array cases{
      Case{"Error writing plist file: -60002", "Error writing plist file: -60002"},
      Case{"caf\xC3\xA9 \xF0\x9F\x98\x80 C:\\n", "caf\xC3\xA9 \xF0\x9F\x98\x80 C:\\n"},
      Case{"one\ntwo\r\tthree", "one\\u{0A}two\\u{0D}\\u{09}three"},
      Case{std::string("nul\0esc\x1B[2Jdel\x7F", 15), "nul\\u{00}esc\\u{1B}[2Jdel\\u{7F}"},
      Case{"next line \xC2\x85 control sequence \xC2\x9B", "next line \\u{85} control sequence \\u{9B}"},
      Case{"\xE2\x80\xA8 \xE2\x80\xA9", "\\u{2028} \\u{2029}"},
      // NOLINTNEXTLINE(misc-misleading-bidirectional)
      Case{"right to left \xE2\x80\xAE isolate \xE2\x81\xA6", "right to left \\u{202E} isolate \\u{2066}"},
      Case{"bad \xFF cut \xE2\x80", "bad \\xFF cut \\xE2\\x80"},
      Case{"over-long \xC0\x8A", "over-long \\xC0\\x8A"},
      Case{"", ""},
  };
  for (const auto& [line, escaped] : cases) EXPECT_EQ(escapedLogLine(line), escaped);
}

TEST(LinuxSystemLog, LongLineIsCutAtAWholeCharacter) {
  EXPECT_EQ(escapedLogLine(std::string(5000, 'a')), std::string(4096, 'a'));
  EXPECT_EQ(escapedLogLine(std::string(4095, 'a') + "\n"), std::string(4095, 'a'));
  EXPECT_EQ(escapedLogLine(std::string(4095, 'a') + "\xC3\xA9"), std::string(4095, 'a'));
}

TEST(LinuxSystemLog, EachCallIsOneLineOnStandardError) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
  const FileDescriptor readEnd(ends[0]);
  const FileDescriptor writeEnd(ends[1]);
  LinuxSystemLog log(writeEnd.get());
  log.write("Failed to write tmp file");
  log.write("two\nlines");
  std::array<char, 200> buffer{};
  const ssize_t count = ::read(readEnd.get(), buffer.data(), buffer.size());
  ASSERT_GT(count, 0);
  EXPECT_EQ(std::string(buffer.data(), static_cast<std::size_t>(count)),
            "corvane-pane: Failed to write tmp file\ncorvane-pane: two\\u{0A}lines\n");
}

TEST(LinuxSystemLog, EachCallIsOneLineOfTheSystemLogAlsoWithoutAStandardError) {
  const auto outcome = test::runIsolated(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER), [] {
    ASSERT_EQ(::mount("none", "/dev", "tmpfs", 0, nullptr), 0);
    const FileDescriptor journal(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const sockaddr_un address{AF_UNIX, "/dev/log"};
    ASSERT_EQ(::bind(journal.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::closelog();  // a connection that this process has inherited
    LinuxSystemLog(-1).write("two\nlines");
    std::array<char, 500> line{};
    ASSERT_GT(::recv(journal.get(), line.data(), line.size() - 1, 0), 0);
    EXPECT_THAT(line.data(), StartsWith("<11>")) << "of a user's program, an error";
    EXPECT_THAT(line.data(), EndsWith(std::string(program_invocation_short_name) + ": two\\u{0A}lines"));
    EXPECT_EQ(::recv(journal.get(), line.data(), line.size(), 0), -1) << "one line";
  });
  if (outcome == test::IsolatedOutcome::Impossible)
    GTEST_SKIP() << "NOT TESTED: mounting is not possible here";
  EXPECT_EQ(outcome, test::IsolatedOutcome::Passed);
}

}  // namespace
}  // namespace corvane
