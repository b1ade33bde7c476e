// Directory streams where the system gives fewer watches than they need, and over volumes that come and go.
// Each test runs in a child process with limits or mounts of its own.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "linux/StreamUnderTest.h"
#include "platform/linux/DirectorySnapshot.h"
#include "support/Isolated.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Names = test::StreamUnderTest::Names;

void runWithLimit(const std::string& limit, int value,
                  const std::function<void(test::StreamUnderTest&)>& body) {
  const auto outcome = test::runIsolated(CLONE_NEWUSER, [&] {
    if (!test::setUserLimit(limit, value)) GTEST_SKIP() << "NOT TESTED: the limit cannot be set here";
    test::StreamUnderTest underTest;
    body(underTest);
  });
  if (outcome == test::IsolatedOutcome::Impossible) GTEST_SKIP() << "NOT TESTED: no user name spaces here";
  EXPECT_EQ(outcome, test::IsolatedOutcome::Passed);
}

struct Shortage {
  const char* limit;
  std::string line;
};
void PrintTo(const Shortage& shortage, std::ostream* stream) { *stream << shortage.limit; }

class Shortages : public ::testing::TestWithParam<Shortage> {};

TEST_P(Shortages, AreLoggedOnceAndTheFoldersAreLookedAtEveryTwoSeconds) {
  runWithLimit(GetParam().limit, 1, [](test::StreamUnderTest& under) {
    under.folder.writeFile("root/a/b/file", "text");
    under.start({"root", "late/root"});
    EXPECT_THAT(under.logLines, ElementsAre(GetParam().line));
    EXPECT_EQ(under.loop.watchedDescriptors(), 0U) << "what watches there were are given back";
    EXPECT_EQ(under.changesAfterALook(), Names{});
    under.folder.writeFile("root/a/b/file", "longer text");
    EXPECT_EQ(under.changesAfterALook(), Names{"root/a/b"});
    under.folder.writeFile("root/new/below/file");
    EXPECT_EQ(under.changesAfterALook(), (Names{"root", "root/new", "root/new/below"}));
    fs::remove_all(under.folder / "root/new");
    EXPECT_EQ(under.changesAfterALook(), Names{"root"});
    under.folder.makeFolder("late/root");
    EXPECT_EQ(under.changesAfterALook(), Names{"late/root"});
    fs::remove(under.folder / "late/root");
    EXPECT_EQ(under.changesAfterALook(), Names{"late/root"});
    EXPECT_EQ(under.changesAfterALook(), Names{});
    EXPECT_EQ(under.logLines.size(), 1U);
    under.stream->stop();
    EXPECT_EQ(under.loop.pendingTimers(), 0U);
  });
}

INSTANTIATE_TEST_SUITE_P(
    Limits, Shortages,
    ::testing::Values(
        Shortage{"max_inotify_watches",
                 "Could not watch the client's directories (No space left on device); looking at "
                 "them every 2 seconds instead"},
        Shortage{"max_inotify_instances",
                 "Could not watch the client's directories (Too many open files); looking at "
                 "them every 2 seconds instead"}),
    [](const auto& param) { return std::string(param.param.limit); });

TEST(DirectoryEventsWithoutWatches, WatchesThatRunOutLaterLoseNoChange) {
  runWithLimit("max_inotify_watches", 40, [](test::StreamUnderTest& under) {
    under.folder.makeFolder("root/a");
    under.folder.makeFolder("other");
    under.start({"root", "other"});
    EXPECT_THAT(under.logLines, IsEmpty());
    for (int folder = 0; folder < 60; ++folder) under.folder.makeFolder("root/a/" + std::to_string(folder));
    under.takeUpEvents();
    EXPECT_EQ(under.logLines.size(), 1U);
    EXPECT_EQ(under.changes(), (Names{"other", "root", "root/a"})) << "what is missed is below some root";
    under.folder.writeFile("root/a/59/file");
    EXPECT_EQ(under.changesAfterALook(), Names{"root/a/59"});
    EXPECT_EQ(under.logLines.size(), 1U);
  });
}

TEST(DirectoryEventsWithoutWatches, StreamOverFewFoldersFitsIntoASmallLimit) {
  runWithLimit("max_inotify_watches", 40, [](test::StreamUnderTest& under) {
    under.folder.makeFolder("root/a");
    under.start({"root", "root/a", "late"});
    under.folder.writeFile("root/a/file");
    EXPECT_EQ(under.changes(), Names{"root/a"});
    EXPECT_THAT(under.logLines, IsEmpty());
  });
}

TEST(DirectoryEventsOverVolumes, UnmountingIsAChangeOfTheFolderThatHeldTheVolume) {
  const auto outcome = test::runIsolated(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER), [] {
    test::StreamUnderTest under;
    const std::string volume = under.folder.makeFolder("Volumes/Data");
    ASSERT_EQ(::mount("none", volume.c_str(), "tmpfs", 0, nullptr), 0);
    under.folder.writeFile("Volumes/Data/a/file");
    under.start({"Volumes"});
    under.folder.writeFile("Volumes/Data/a/file", "text");
    EXPECT_EQ(under.changes(), Names{"Volumes/Data/a"});
    ASSERT_EQ(::umount(volume.c_str()), 0) << "a stream must not keep a volume busy";
    EXPECT_THAT(under.changes(), ::testing::IsSupersetOf({"Volumes", "Volumes/Data"}));
    under.folder.writeFile("Volumes/Data/file");
    EXPECT_EQ(under.changes(), Names{"Volumes/Data"});
    EXPECT_THAT(under.logLines, IsEmpty());
  });
  if (outcome == test::IsolatedOutcome::Impossible)
    GTEST_SKIP() << "NOT TESTED: mounting is not possible here";
  EXPECT_EQ(outcome, test::IsolatedOutcome::Passed);
}

TEST(DirectorySnapshot, TellsFoldersWhoseEntriesDifferAndNotTheirParents) {
  const test::TemporaryFolder folder;
  const std::string root = folder.makeFolder("root");
  folder.writeFile("root/a/b/file", "text");
  const std::vector<std::string> roots{root, root + "/a"};
  DirectorySnapshot before(roots);
  EXPECT_THAT(DirectorySnapshot(roots).changesSince(before), IsEmpty());
  fs::permissions(root + "/a/b/file", fs::perms::owner_all);
  EXPECT_THAT(DirectorySnapshot(roots).changesSince(before), ElementsAre(root + "/a/b"));
  before = DirectorySnapshot(roots);
  fs::rename(root + "/a/b/file", root + "/a/b/renamed");
  fs::create_directory(root + "/empty");
  EXPECT_THAT(DirectorySnapshot(roots).changesSince(before), ElementsAre(root, root + "/a/b"));
  before = DirectorySnapshot(roots);
  fs::remove_all(root + "/a");
  EXPECT_THAT(DirectorySnapshot(roots).changesSince(before), ElementsAre(root, root + "/a"));
}

}  // namespace
}  // namespace corvane
