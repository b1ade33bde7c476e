#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "linux/StreamUnderTest.h"
#include "platform/linux/LinuxDirectoryEvents.h"
#include "posix/FileDescriptor.h"
#include "support/OtherUser.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Names = test::StreamUnderTest::Names;

class LinuxDirectoryEventsTest : public ::testing::Test, protected test::StreamUnderTest {
 protected:
  ~LinuxDirectoryEventsTest() override { EXPECT_THAT(logLines, IsEmpty()); }
  void append(const std::string& file) const { std::ofstream(folder / file, std::ios::app) << "more"; }
};

TEST_F(LinuxDirectoryEventsTest, WhatWasThereBeforeIsNoChange) {
  folder.writeFile("root/a/file");
  start({"root"});
  EXPECT_EQ(changes(), Names{});
  EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(LinuxDirectoryEventsTest, EveryKindOfChangeReportsTheFolderOfTheEntryAtAnyDepth) {
  for (const std::string in : {"root", "root/a", "root/a/b/c"}) folder.makeFolder(in);
  start({"root"});
  for (const std::string in : {"root", "root/a", "root/a/b/c"}) {
    SCOPED_TRACE(in);
    folder.writeFile(in + "/file", "text");
    EXPECT_EQ(changes(), Names{in}) << "created";
    append(in + "/file");
    EXPECT_EQ(changes(), Names{in}) << "written";
    fs::permissions(folder / in + "/file", fs::perms::owner_all);
    EXPECT_EQ(changes(), Names{in}) << "mode";
    fs::rename(folder / in + "/file", folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "renamed";
    folder.writeFile(in + "/new");
    fs::rename(folder / in + "/new", folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "replaced";
    fs::remove(folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "removed";
    fs::create_symlink("nowhere", folder / in + "/link");
    EXPECT_EQ(changes(), Names{in}) << "link";
  }
}

TEST_F(LinuxDirectoryEventsTest, FileThatStaysOpenIsReportedWithEachWrite) {
  folder.makeFolder("root");
  std::ofstream journal(folder / "root/journal");
  start({"root"});
  for (int write = 0; write < 3; ++write) {
    journal << "line" << std::flush;
    EXPECT_EQ(changes(), Names{"root"});
  }
}

TEST_F(LinuxDirectoryEventsTest, ReadingIsNoChange) {
  folder.writeFile("root/file", "text");
  start({"root"});
  EXPECT_EQ(folder.readFile("root/file"), "text");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, FoldersMadeWithFilesInThemAtOnceAreAllReportedAndFollowed) {
  folder.makeFolder("root");
  start({"root"});
  folder.writeFile("root/a/b/c/file");
  EXPECT_EQ(changes(), (Names{"root", "root/a", "root/a/b", "root/a/b/c"}));
  append("root/a/b/c/file");
  EXPECT_EQ(changes(), Names{"root/a/b/c"});
}

TEST_F(LinuxDirectoryEventsTest, BurstIsOneBatch) {
  folder.makeFolder("root/a");
  start({"root"});
  for (int file = 0; file < 1000; ++file) folder.writeFile("root/a/" + std::to_string(file), "text");
  takeUpEvents();
  loop.advance(1.0);
  EXPECT_THAT(batches, ElementsAre(ElementsAre(folder / "root/a")));
}

TEST_F(LinuxDirectoryEventsTest, BatchComesOneSecondAfterItsFirstEventThoughOthersFollow) {
  folder.makeFolder("root/a");
  start({"root"});
  for (int event = 0; event < 9; ++event) {
    append("root/file");
    takeUpEvents();
    loop.advance(0.1);
    EXPECT_THAT(batches, IsEmpty());
  }
  append("root/a/file");
  takeUpEvents();
  loop.advance(0.125);
  EXPECT_THAT(batches, ElementsAre(ElementsAre(folder / "root", folder / "root/a")));
  EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(LinuxDirectoryEventsTest, FolderRenamedInsideIsFollowedUnderItsNewNameOnly) {
  folder.writeFile("root/a/b/file");
  start({"root"});
  fs::rename(folder / "root/a", folder / "root/z");
  EXPECT_EQ(changes(), (Names{"root", "root/z", "root/z/b"}));
  append("root/z/b/file");
  EXPECT_EQ(changes(), Names{"root/z/b"});
  folder.writeFile("root/a/new");
  EXPECT_EQ(changes(), (Names{"root", "root/a"}));
}

TEST_F(LinuxDirectoryEventsTest, FolderMovedInIsReportedAndFollowed) {
  folder.makeFolder("root");
  folder.writeFile("outside/b/file");
  start({"root"});
  fs::rename(folder / "outside", folder / "root/a");
  EXPECT_EQ(changes(), (Names{"root", "root/a", "root/a/b"}));
  append("root/a/b/file");
  EXPECT_EQ(changes(), Names{"root/a/b"});
}

TEST_F(LinuxDirectoryEventsTest, FolderMovedOutIsFollowedNoMore) {
  folder.writeFile("root/a/b/file");
  start({"root"});
  fs::rename(folder / "root/a", folder / "outside");
  EXPECT_EQ(changes(), Names{"root"});
  append("outside/b/file");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, SwappedFoldersAreReportedByTheNamesThatTheyHaveNow) {
  folder.writeFile("root/one/of-one/file");
  folder.writeFile("root/two/of-two/file");
  start({"root"});
  ASSERT_EQ(::renameat2(AT_FDCWD, (folder / "root/one").c_str(), AT_FDCWD, (folder / "root/two").c_str(),
                        RENAME_EXCHANGE),
            0);
  EXPECT_EQ(changes(), (Names{"root", "root/one", "root/one/of-two", "root/two", "root/two/of-one"}));
  append("root/one/of-two/file");
  EXPECT_EQ(changes(), Names{"root/one/of-two"});
  append("root/two/of-one/file");
  EXPECT_EQ(changes(), Names{"root/two/of-one"});
}

TEST_F(LinuxDirectoryEventsTest, FolderRemovedAndMadeAgainIsFollowedAnew) {
  folder.writeFile("root/a/file");
  start({"root"});
  for (int round = 0; round < 3; ++round) {
    fs::remove_all(folder / "root/a");
    folder.writeFile("root/a/file");
    EXPECT_EQ(changes(), (Names{"root", "root/a"}));
    append("root/a/file");
    EXPECT_EQ(changes(), Names{"root/a"});
  }
}

TEST_F(LinuxDirectoryEventsTest, RootRemovedAndMadeAgainIsReportedAndFollowed) {
  folder.writeFile("root/a/file");
  start({"root"});
  for (int round = 0; round < 3; ++round) {
    fs::remove_all(folder / "root");
    EXPECT_THAT(changes(), ::testing::Contains("root"));
    folder.writeFile("root/a/file");
    EXPECT_EQ(changes(), (Names{"root", "root/a"}));
    append("root/a/file");
    EXPECT_EQ(changes(), Names{"root/a"});
  }
}

TEST_F(LinuxDirectoryEventsTest, LateRootIsReportedAndFollowed) {
  start({"root"});
  EXPECT_EQ(changes(), Names{});
  folder.makeFolder("neighbour");
  EXPECT_EQ(changes(), Names{});
  folder.makeFolder("root");
  EXPECT_EQ(changes(), Names{"root"});
  folder.writeFile("root/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, LateParentsOfARootAreFollowed) {
  start({"late/parents/root"});
  folder.makeFolder("late");
  EXPECT_EQ(changes(), Names{});
  folder.makeFolder("late/parents");
  folder.writeFile("late/parents/other/file");
  EXPECT_EQ(changes(), Names{});
  folder.makeFolder("late/parents/root");
  EXPECT_EQ(changes(), Names{"late/parents/root"});
  fs::rename(folder / "late", folder / "away");
  EXPECT_EQ(changes(), Names{"late/parents/root"});
  fs::rename(folder / "away", folder / "late");
  EXPECT_EQ(changes(), Names{"late/parents/root"});
  folder.writeFile("late/parents/root/file");
  EXPECT_EQ(changes(), Names{"late/parents/root"});
}

TEST_F(LinuxDirectoryEventsTest, RootMadeTogetherWithItsParentsAndFilesIsReportedWhole) {
  start({"late/parents/root"});
  folder.writeFile("late/parents/root/a/file");
  EXPECT_EQ(changes(), (Names{"late/parents/root", "late/parents/root/a"}));
}

TEST_F(LinuxDirectoryEventsTest, RootThatWasAFileIsFollowedOnceItIsAFolder) {
  folder.writeFile("root", "a file");
  start({"root"});
  append("root");
  EXPECT_EQ(changes(), Names{});
  fs::remove(folder / "root");
  folder.makeFolder("root");
  EXPECT_EQ(changes(), Names{"root"});
  folder.writeFile("root/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, RootThatIsALinkIsReportedAsTheCallerSpelledIt) {
  folder.writeFile("real/a/file");
  fs::create_directory_symlink("real", folder / "root");
  start({"root"});
  append("real/a/file");
  EXPECT_EQ(changes(), Names{"root/a"});
}

TEST_F(LinuxDirectoryEventsTest, LinkThatIsTurnedElsewhereIsReportedAndFollowed) {
  folder.writeFile("one/file");
  folder.writeFile("two/a/file");
  fs::create_directory_symlink("one", folder / "root");
  start({"root"});
  fs::create_directory_symlink("two", folder / "new link");
  fs::rename(folder / "new link", folder / "root");
  EXPECT_EQ(changes(), (Names{"root", "root/a"}));
  append("two/a/file");
  EXPECT_EQ(changes(), Names{"root/a"});
  append("one/file");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, DanglingLinkIsFollowedOnceItsTargetIsThere) {
  fs::create_directory_symlink("late/real", folder / "root");
  start({"root/below"});
  folder.makeFolder("late/real");
  EXPECT_EQ(changes(), Names{});
  folder.makeFolder("late/real/below");
  EXPECT_EQ(changes(), Names{"root/below"});
  folder.writeFile("late/real/below/file");
  EXPECT_EQ(changes(), Names{"root/below"});
}

TEST_F(LinuxDirectoryEventsTest, LinksBelowARootAreNotEntered) {
  folder.writeFile("outside/file");
  folder.makeFolder("root");
  fs::create_directory_symlink("../outside", folder / "root/link");
  fs::create_directory_symlink("..", folder / "root/up");
  start({"root"});
  append("outside/file");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, NestedRootsReportEachDirectoryOnce) {
  folder.makeFolder("root/a/b");
  start({"root/a/b", "root", "root/a", "root/late"});
  folder.writeFile("root/a/b/file");
  EXPECT_EQ(changes(), Names{"root/a/b"});  // that it came once is checked for every batch
  folder.writeFile("root/file");
  folder.writeFile("root/a/file");
  EXPECT_EQ(changes(), (Names{"root", "root/a"}));
  folder.writeFile("root/late/file");
  EXPECT_EQ(changes(), (Names{"root", "root/late"}));
  fs::rename(folder / "root/a", folder / "root/z");
  EXPECT_EQ(changes(), (Names{"root", "root/a", "root/a/b", "root/z", "root/z/b"}));
  append("root/z/b/file");
  EXPECT_EQ(changes(), Names{"root/z/b"});
}

TEST_F(LinuxDirectoryEventsTest, SameRootTwiceAndTrailingSlashesMakeNoDifference) {
  folder.makeFolder("root");
  start({"root/", "root", "root//"});
  folder.writeFile("root/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, LostEventsReportTheRootsAndNothingIsMissedAfterwards) {
  folder.writeFile("one/a/file");
  folder.makeFolder("two");
  start({"one", "two"});
  folder.writeFile("one/other");
  // More events than the kernel keeps, each different from the one before.
  int limit = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
  ASSERT_GT(limit, 0);
  for (int event = 0; event <= limit; ++event) {
    ASSERT_EQ(::chmod((folder / (event % 2 == 0 ? "one/a/file" : "one/other")).c_str(), 0600), 0);
  }
  folder.writeFile("one/late/file");
  EXPECT_THAT(changes(), ::testing::IsSupersetOf({"one", "two"}));
  append("one/late/file");
  EXPECT_EQ(changes(), Names{"one/late"}) << "made while events were lost";
  append("one/a/file");
  EXPECT_EQ(changes(), Names{"one/a"});
}

TEST_F(LinuxDirectoryEventsTest, TenThousandFoldersAreFollowed) {
  for (int group = 0; group < 100; ++group) {
    const std::string path = folder.makeFolder("root/" + std::to_string(group));
    for (int one = 0; one < 99; ++one) fs::create_directory(path + "/" + std::to_string(one));
  }
  start({"root"});
  folder.writeFile("root/99/98/file");
  folder.writeFile("root/0/0/file");
  EXPECT_EQ(changes(), (Names{"root/0/0", "root/99/98"}));
}

TEST_F(LinuxDirectoryEventsTest, NamesThatAreNotUtf8AreReportedByteForByte) {
  folder.makeFolder("root/\xFF\xFE");
  start({"root"});
  folder.writeFile("root/\xFF\xFE/\x80");
  EXPECT_EQ(changes(), Names{"root/\xFF\xFE"});
}

TEST_F(LinuxDirectoryEventsTest, FolderThatBecomesReadableIsReportedAndFollowed) {
  if (!test::OtherUser::isPossible())
    GTEST_SKIP() << "NOT TESTED: this needs root to make a folder that this user can't read";
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  folder.writeFile("closed/file");
  folder.writeFile("root/closed/file");
  for (const char* path : {"closed", "root/closed"}) ASSERT_EQ(::chmod((folder / path).c_str(), 0700), 0);
  {
    const test::OtherUser nobody;
    start({"closed", "root"});
  }
  append("closed/file");
  append("root/closed/file");
  EXPECT_EQ(changes(), Names{});
  for (const char* path : {"closed", "root/closed"}) ASSERT_EQ(::chmod((folder / path).c_str(), 0755), 0);
  {
    const test::OtherUser nobody;
    EXPECT_EQ(changes(), (Names{"closed", "root", "root/closed"}));
  }
  append("closed/file");
  append("root/closed/file");
  EXPECT_EQ(changes(), (Names{"closed", "root/closed"}));
}

TEST_F(LinuxDirectoryEventsTest, StoppedOrUnscheduledStreamDeliversNothing) {
  folder.makeFolder("root");
  start({"root"});
  folder.writeFile("root/file");
  takeUpEvents();
  stream->stop();
  stream->unscheduleFromRunLoop();
  append("root/file");
  EXPECT_EQ(changes(), Names{});
  EXPECT_EQ(loop.pendingTimers(), 0U);
  EXPECT_EQ(loop.watchedDescriptors(), 0U);
}

TEST_F(LinuxDirectoryEventsTest, StreamCanBeStartedAgainButNotTwice) {
  folder.makeFolder("root");
  start({"root"});
  EXPECT_FALSE(stream->start());
  stream->stop();
  folder.writeFile("root/meanwhile");
  EXPECT_TRUE(stream->start());
  EXPECT_EQ(changes(), Names{}) << "from now on";
  append("root/meanwhile");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, ReceiverMayDestroyTheStream) {
  folder.makeFolder("root");
  start({"root"});
  onDelivery = [this] { stream.reset(); };
  folder.writeFile("root/file");
  EXPECT_EQ(changes(), Names{"root"});
  EXPECT_EQ(loop.watchedDescriptors(), 0U);
}

TEST_F(LinuxDirectoryEventsTest, DestroyedStreamLeavesNoDescriptorBehind) {
  const auto openDescriptors = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  folder.makeFolder("root/a");
  const auto before = openDescriptors();
  start({"root"});
  EXPECT_EQ(openDescriptors(), before + 2);
  stream.reset();
  EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace corvane
