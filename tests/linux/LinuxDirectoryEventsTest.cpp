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

TEST_F(LinuxDirectoryEventsTest, EveryKindOfChangeOfAnEntryReportsTheFolder) {
  folder.makeFolder("root/a");
  start({"root", "root/a"});
  for (const std::string in : {"root", "root/a"}) {
    SCOPED_TRACE(in);
    folder.writeFile(in + "/file", "text");
    EXPECT_EQ(changes(), Names{in}) << "created";
    append(in + "/file");
    EXPECT_EQ(changes(), Names{in}) << "written";
    fs::permissions(folder / in + "/file", fs::perms::owner_all);
    EXPECT_EQ(changes(), Names{in}) << "mode";
    fs::last_write_time(folder / in + "/file", fs::file_time_type{});
    EXPECT_EQ(changes(), Names{in}) << "date";
    fs::rename(folder / in + "/file", folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "renamed";
    folder.writeFile(in + "/new");
    fs::rename(folder / in + "/new", folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "replaced";
    fs::remove(folder / in + "/renamed");
    EXPECT_EQ(changes(), Names{in}) << "removed";
    fs::create_symlink("nowhere", folder / in + "/link");
    EXPECT_EQ(changes(), Names{in}) << "link";
    fs::create_directory(folder / in + "/folder");
    EXPECT_EQ(changes(), Names{in}) << "folder";
  }
}

TEST_F(LinuxDirectoryEventsTest, ChangesBelowTheEntriesOfAFolderWakeNobody) {
  folder.writeFile("root/below/file");
  start({"root", "root/late"});
  append("root/below/file");
  folder.writeFile("root/below/a/b/c");
  fs::rename(folder / "root/below/a", folder / "root/below/z");
  EXPECT_EQ(numberOfWakeUps(), 0);
}

TEST_F(LinuxDirectoryEventsTest, BusyFoldersOnTheWayAndBesideItWakeNobody) {
  folder.makeFolder("busy/tree/Library/Client");
  folder.makeFolder("busy/tree/Volumes");
  start({"busy/tree/Library/Client", "busy/tree/Volumes"});
  folder.writeFile("beside/file");
  folder.writeFile("busy/file", "text");
  append("busy/file");
  fs::permissions(folder / "busy/file", fs::perms::owner_all);
  fs::remove(folder / "busy/file");
  EXPECT_EQ(numberOfWakeUps(), 0);
  fs::rename(folder / "busy", folder / "away");
  EXPECT_EQ(changes(), (Names{"busy/tree/Library/Client", "busy/tree/Volumes"})) << "all the same watched";
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

TEST_F(LinuxDirectoryEventsTest, BurstIsOneBatch) {
  folder.makeFolder("root");
  start({"root"});
  for (int file = 0; file < 1000; ++file) folder.writeFile("root/" + std::to_string(file), "text");
  takeUpEvents();
  loop.advance(1.0);
  EXPECT_THAT(batches, ElementsAre(ElementsAre(folder / "root")));
}

TEST_F(LinuxDirectoryEventsTest, BatchComesOneSecondAfterItsFirstEventThoughOthersFollow) {
  folder.makeFolder("root/a");
  start({"root", "root/a"});
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

TEST_F(LinuxDirectoryEventsTest, FolderMovedAwayIsFollowedNoMoreUntilItIsBack) {
  folder.writeFile("root/file");
  start({"root"});
  fs::rename(folder / "root", folder / "outside");
  EXPECT_EQ(changes(), Names{"root"});
  append("outside/file");
  EXPECT_EQ(changes(), Names{});
  fs::rename(folder / "outside", folder / "root");
  EXPECT_EQ(changes(), Names{"root"});
  append("root/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, SwappedFoldersAreReportedByTheNamesThatTheyHaveNow) {
  folder.writeFile("one/file");
  folder.writeFile("two/file");
  start({"one", "two"});
  const auto swap = [this](const char* left, const char* right) {
    return ::renameat2(AT_FDCWD, (folder / left).c_str(), AT_FDCWD, (folder / right).c_str(),
                       RENAME_EXCHANGE);
  };
  ASSERT_EQ(swap("one", "two"), 0);
  EXPECT_EQ(changes(), (Names{"one", "two"}));
  append("one/file");
  EXPECT_EQ(changes(), Names{"one"});
  folder.writeFile("three/file");
  ASSERT_EQ(swap("two", "three"), 0);
  EXPECT_EQ(changes(), Names{"two"});
  append("three/file");
  EXPECT_EQ(changes(), Names{});
  append("two/file");
  EXPECT_EQ(changes(), Names{"two"});
}

TEST_F(LinuxDirectoryEventsTest, SwappedParentsAreSeenWhereverTheyStandOnTheWay) {
  for (const char* tree : {"this", "that"}) {
    folder.writeFile(std::string(tree) + "/up/Library/a/file");
    folder.writeFile(std::string(tree) + "/up/Library/b/file");
  }
  start({"this/up/Library/a", "this/up/Library/b"});
  for (const std::string step : {"", "/up", "/up/Library"}) {
    SCOPED_TRACE(step);
    ASSERT_EQ(::renameat2(AT_FDCWD, (folder / "this" + step).c_str(), AT_FDCWD,
                          (folder / "that" + step).c_str(), RENAME_EXCHANGE),
              0);
    EXPECT_EQ(changes(), (Names{"this/up/Library/a", "this/up/Library/b"}));
    append("that/up/Library/a/file");
    EXPECT_EQ(changes(), Names{});
    append("this/up/Library/a/file");
    EXPECT_EQ(changes(), Names{"this/up/Library/a"});
  }
}

TEST_F(LinuxDirectoryEventsTest, FolderThatIsHeldOpenWhileItIsReplacedIsFollowedAnew) {
  folder.writeFile("top/root/file");
  folder.makeFolder("top/other");
  start({"top/root", "top/other"});
  const FileDescriptor held(::open((folder / "top/root").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  fs::remove_all(folder / "top/root");
  EXPECT_EQ(changes(), Names{"top/root"});
  folder.makeFolder("top/root");
  EXPECT_EQ(changes(), Names{"top/root"});
  folder.writeFile("top/root/file");
  EXPECT_EQ(changes(), Names{"top/root"});
}

TEST_F(LinuxDirectoryEventsTest, RootRemovedAndMadeAgainIsReportedAndFollowed) {
  folder.writeFile("root/file");
  start({"root"});
  for (int round = 0; round < 3; ++round) {
    fs::remove_all(folder / "root");
    EXPECT_EQ(changes(), Names{"root"});
    folder.writeFile("root/file");
    EXPECT_EQ(changes(), Names{"root"});
    append("root/file");
    EXPECT_EQ(changes(), Names{"root"});
    fs::remove_all(folder / "root");
    folder.writeFile("root/file");
    EXPECT_EQ(changes(), Names{"root"}) << "both in one batch";
    append("root/file");
    EXPECT_EQ(changes(), Names{"root"});
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
  EXPECT_EQ(changes(), Names{"late/parents/root"});
  folder.writeFile("late/parents/root/file");
  EXPECT_EQ(changes(), Names{"late/parents/root"});
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
  folder.writeFile("real/file");
  fs::create_directory_symlink("real", folder / "root");
  start({"root"});
  append("real/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, LinksUpwardsAndInCirclesOnTheWayAreFollowedAsTheSystemFollowsThem) {
  folder.writeFile("one/two/file");
  fs::create_directory_symlink("../two/../../one", folder / "one/two/up");
  fs::create_directory_symlink("circle", folder / "circle");
  start({"one/two/up/two", "circle/below"});
  append("one/two/file");
  EXPECT_EQ(changes(), Names{"one/two/up/two"});
  fs::remove(folder / "circle");
  folder.makeFolder("circle/below");
  EXPECT_EQ(changes(), Names{"circle/below"});
}

TEST_F(LinuxDirectoryEventsTest, LinkThatIsTurnedElsewhereIsReportedAndFollowed) {
  folder.writeFile("one/file");
  folder.writeFile("two/file");
  fs::create_directory_symlink("one", folder / "root");
  start({"root"});
  fs::create_directory_symlink("two", folder / "new link");
  fs::rename(folder / "new link", folder / "root");
  EXPECT_EQ(changes(), Names{"root"});
  append("two/file");
  EXPECT_EQ(changes(), Names{"root"});
  append("one/file");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, LinkAboveAllFoldersThatIsTurnedElsewhereIsFollowed) {
  for (const char* tree : {"one", "two"}) {
    folder.writeFile(std::string(tree) + "/Library/a/file");
    folder.makeFolder(std::string(tree) + "/Library/b");
  }
  fs::create_directory_symlink("one", folder / "link");
  start({"link/Library/a", "link/Library/b"});
  fs::create_directory_symlink("two", folder / "new link");
  fs::rename(folder / "new link", folder / "link");
  EXPECT_EQ(changes(), (Names{"link/Library/a", "link/Library/b"}));
  append("one/Library/a/file");
  EXPECT_EQ(changes(), Names{});
  append("two/Library/a/file");
  EXPECT_EQ(changes(), Names{"link/Library/a"});
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

TEST_F(LinuxDirectoryEventsTest, NestedRootsAreEachReportedForTheirOwnEntries) {
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
  EXPECT_EQ(changes(), (Names{"root", "root/a", "root/a/b"}));
  append("root/z/b/file");
  EXPECT_EQ(changes(), Names{});
}

TEST_F(LinuxDirectoryEventsTest, FolderThatTwoPathsLeadToIsReportedUnderBoth) {
  folder.makeFolder("real");
  fs::create_directory_symlink("real", folder / "link");
  start({"real", "link"});
  folder.writeFile("real/file");
  EXPECT_EQ(changes(), (Names{"link", "real"}));
  fs::remove(folder / "link");
  EXPECT_EQ(changes(), Names{"link"});
  append("real/file");
  EXPECT_EQ(changes(), Names{"real"});
}

TEST_F(LinuxDirectoryEventsTest, SameRootTwiceAndTrailingSlashesMakeNoDifference) {
  folder.makeFolder("root");
  start({"root/", "root", "root//"});
  folder.writeFile("root/file");
  EXPECT_EQ(changes(), Names{"root"});
}

TEST_F(LinuxDirectoryEventsTest, LostEventsReportAllFoldersAndNothingIsMissedAfterwards) {
  folder.writeFile("one/a");
  folder.writeFile("one/b");
  start({"one", "two"});
  // More events than the kernel keeps, each different from the one before.
  int limit = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> limit;
  ASSERT_GT(limit, 0);
  for (int event = 0; event <= limit; ++event) {
    ASSERT_EQ(::chmod((folder / (event % 2 == 0 ? "one/a" : "one/b")).c_str(), 0600), 0);
  }
  folder.makeFolder("two");
  EXPECT_EQ(changes(), (Names{"one", "two"}));
  folder.writeFile("two/file");
  EXPECT_EQ(changes(), Names{"two"}) << "made while events were lost";
  append("one/a");
  EXPECT_EQ(changes(), Names{"one"});
}

TEST_F(LinuxDirectoryEventsTest, NamesThatAreNotUtf8AreReportedByteForByte) {
  start({"root/\xFF\xFE"});
  folder.makeFolder("root/\xFF\xFE");
  EXPECT_EQ(changes(), Names{"root/\xFF\xFE"});
  folder.writeFile("root/\xFF\xFE/\x80");
  EXPECT_EQ(changes(), Names{"root/\xFF\xFE"});
}

TEST_F(LinuxDirectoryEventsTest, FolderThatBecomesReadableIsReportedAndFollowed) {
  if (!test::OtherUser::isPossible())
    GTEST_SKIP() << "NOT TESTED: this needs root to make a folder that this user can't read";
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  folder.writeFile("closed/file");
  folder.writeFile("passable/below/file");
  ASSERT_EQ(::chmod((folder / "closed").c_str(), 0700), 0);
  ASSERT_EQ(::chmod((folder / "passable").c_str(), 0700), 0);
  {
    const test::OtherUser nobody;
    start({"closed", "passable/below"});
  }
  append("closed/file");
  append("passable/below/file");
  EXPECT_EQ(changes(), Names{});
  ASSERT_EQ(::chmod((folder / "closed").c_str(), 0755), 0);
  ASSERT_EQ(::chmod((folder / "passable").c_str(), 0711), 0);
  {
    const test::OtherUser nobody;
    EXPECT_EQ(changes(), (Names{"closed", "passable/below"}));
  }
  append("closed/file");
  append("passable/below/file");
  EXPECT_EQ(changes(), (Names{"closed", "passable/below"}));
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
  folder.makeFolder("root");
  const auto before = openDescriptors();
  start({"root"});
  EXPECT_EQ(openDescriptors(), before + 3);
  stream.reset();
  EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace corvane
