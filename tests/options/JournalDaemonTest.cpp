#include <gtest/gtest.h>

#include "options/JournalDaemon.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

class JournalDaemonTest : public ::testing::Test {
 protected:
  bool runs() {
    return JournalDaemon(platform_.platform, platform_.paths.diskJournalPid).isDiskJournalPIDRunning();
  }
  TestPlatform platform_;
};

TEST_F(JournalDaemonTest, RunsWhenThePidOfItsFileIsAmongTheProcesses) {
  struct Case {
    const char* what;
    const char* pidFile;
    std::optional<std::string> listing;
    bool running;
  };
  const std::string listing = "  PID\n    1\n  333\n 4711\n";
  const Case cases[] = {
      {"listed", "333", listing, true},
      {"listed, with a line break in the file", "333\n", listing, true},
      {"listed, with blanks before it", "  333", listing, true},
      {"followed by other text", "333 diskjournald", listing, true},
      {"the last line", "4711", listing, true},
      {"the last line without a line break", "4711", "  PID\n 4711", true},
      {"stale", "334", listing, false},
      {"only the beginning of a listed one", "33", listing, false},
      {"only the end of a listed one", "711", listing, false},
      {"negative", "-333", listing, false},
      {"an empty file", "", listing, false},
      {"only letters, which read as 0 like the header", "abc", listing, true},
      {"only a line break, which reads as 0 as well", "\n", listing, true},
      {"zero, like the piece after the last line break", "0", "1\n2\n", true},
      {"zero, where every piece is a number", "0", "1\n2", false},
      {"an empty listing, which is one piece that reads as 0", "0", "", true},
      {"an empty listing", "333", "", false},
      {"no listing", "333", std::nullopt, false},
      {"no listing and a file without digits", "abc", std::nullopt, false},
      {"a listing that is not UTF-8", "333", "333\n\xFF\n", false},
      {"a file that is not ASCII", "333\xC3\xA9", listing, false},
      {"beyond 32 bits, which saturates", "99999999999", "2147483647\n", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    platform_.writeText(platform_.paths.diskJournalPid, c.pidFile);
    platform_.processes.text = c.listing;
    EXPECT_EQ(runs(), c.running);
  }
}

TEST_F(JournalDaemonTest, APidFileOfAnyReasonableSizeIsRead) {
  platform_.processes.text = "  333\n";
  platform_.writeText(platform_.paths.diskJournalPid, "333\n" + std::string(1000000, ' '));
  EXPECT_TRUE(runs());
}

TEST_F(JournalDaemonTest, DoesNotRunWithoutAPidFileAndListsNoProcesses) {
  platform_.processes.text = "  PID\n";
  EXPECT_FALSE(runs());
  EXPECT_EQ(platform_.processes.made, 0U);
}

TEST_F(JournalDaemonTest, AFolderInThePlaceOfThePidFileCountsAsNotRunning) {
  std::filesystem::create_directories(platform_.paths.diskJournalPid);
  platform_.processes.text = "  PID\n";
  EXPECT_FALSE(runs());
}

TEST_F(JournalDaemonTest, ListsTheProcessesAnewOnEveryCall) {
  platform_.writeText(platform_.paths.diskJournalPid, "7");
  platform_.processes.text = "7\n";
  EXPECT_TRUE(runs());
  platform_.processes.text = "8\n";
  EXPECT_FALSE(runs());
  EXPECT_EQ(platform_.processes.made, 2U);
}

}  // namespace
}  // namespace corvane::test
