// Directory streams where the system gives fewer watches than they need, and over volumes that come and go.
// Each test runs in a child process with limits or mounts of its own.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "linux/StreamUnderTest.h"
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
  int value;
  bool starts;
  std::string line;
};
void PrintTo(const Shortage& shortage, std::ostream* stream) { *stream << shortage.limit; }

class Shortages : public ::testing::TestWithParam<Shortage> {};

TEST_P(Shortages, AreLoggedOnce) {
  runWithLimit(GetParam().limit, GetParam().value, [](test::StreamUnderTest& under) {
    under.folder.makeFolder("root");
    under.start({"root", "late/root"}, GetParam().starts);
    EXPECT_THAT(under.logLines, ElementsAre(GetParam().line));
    under.folder.writeFile("root/file");
    under.folder.makeFolder("late/root");
    EXPECT_EQ(under.changes(), Names{});
    EXPECT_EQ(under.logLines.size(), 1U);
    EXPECT_EQ(under.loop.pendingTimers(), 0U) << "nothing polls";
  });
}

INSTANTIATE_TEST_SUITE_P(
    Limits, Shortages,
    ::testing::Values(Shortage{"max_inotify_watches", 1, true,
                               "Could not watch the client's directories (No space left on device); changes "
                               "that others make are not seen"},
                      Shortage{"max_inotify_instances", 0, false,
                               "Could not watch the client's directories (Too many open files); changes that "
                               "others make are not seen"}),
    [](const auto& param) { return std::string(param.param.limit); });

TEST(DirectoryEventsWithoutWatches, WatchesThatRunOutLaterAreLoggedAndTheOthersStay) {
  runWithLimit("max_inotify_watches", 8, [](test::StreamUnderTest& under) {
    under.folder.makeFolder("root");
    under.start({"root", "late/1/2/3/4/5/6/7/8"});
    EXPECT_THAT(under.logLines, IsEmpty());
    under.folder.makeFolder("late/1/2/3/4/5/6/7/8");
    under.takeUpEvents();
    EXPECT_EQ(under.logLines.size(), 1U);
    under.changes();
    under.folder.writeFile("root/file");
    EXPECT_EQ(under.changes(), Names{"root"});
    EXPECT_EQ(under.logLines.size(), 1U);
  });
}

TEST(DirectoryEventsWithoutWatches, WhatLiesBelowTheFoldersNeedsNoWatch) {
  runWithLimit("max_inotify_watches", 8, [](test::StreamUnderTest& under) {
    for (int below = 0; below < 100; ++below) under.folder.makeFolder("root/a/" + std::to_string(below));
    under.start({"root", "root/a", "late"});
    under.folder.writeFile("root/a/file");
    EXPECT_EQ(under.changes(), Names{"root/a"});
    EXPECT_THAT(under.logLines, IsEmpty());
  });
}

/// Runs the body in a child process whose mounts are its own.
void runWithMounts(const std::function<void(test::StreamUnderTest&)>& body) {
  const auto outcome = test::runIsolated(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER), [&] {
    test::StreamUnderTest underTest;
    body(underTest);
    EXPECT_THAT(underTest.logLines, IsEmpty());
  });
  if (outcome == test::IsolatedOutcome::Impossible)
    GTEST_SKIP() << "NOT TESTED: mounting is not possible here";
  EXPECT_EQ(outcome, test::IsolatedOutcome::Passed);
}

void mountEmptyVolume(const std::string& folder) {
  ASSERT_EQ(::mount("none", folder.c_str(), "tmpfs", 0, nullptr), 0);
}

TEST(DirectoryEventsOverVolumes, MountingOnAnExistingFolderAndUnmountingAreChangesOfTheFolderThatHoldsIt) {
  runWithMounts([](test::StreamUnderTest& under) {
    const std::string volume = under.folder.makeFolder("Volumes/Macintosh HD");
    under.folder.makeFolder("elsewhere");
    under.start({"Volumes"});
    mountEmptyVolume(volume);
    EXPECT_EQ(under.changes(), Names{"Volumes"});
    under.folder.writeFile("Volumes/Macintosh HD/file", "text");
    EXPECT_EQ(under.changes(), Names{}) << "inside the volume";
    mountEmptyVolume(under.folder / "elsewhere");
    EXPECT_EQ(under.changes(), Names{}) << "not in the folder";
    ASSERT_EQ(::umount(volume.c_str()), 0) << "a stream must not keep a volume busy";
    EXPECT_EQ(under.changes(), Names{"Volumes"});
  });
}

TEST(DirectoryEventsOverVolumes, VolumeThatTakesThePlaceOfAFolderOrItsParentIsFollowed) {
  runWithMounts([](test::StreamUnderTest& under) {
    under.folder.makeFolder("Library/Client/Plugins");
    under.start({"Library/Client", "Library/Client/Plugins"});
    mountEmptyVolume(under.folder / "Library");
    under.changes();
    under.folder.makeFolder("Library/Client/Plugins");
    EXPECT_EQ(under.changes(), (Names{"Library/Client", "Library/Client/Plugins"}));
    under.folder.writeFile("Library/Client/Plugins/file");
    EXPECT_EQ(under.changes(), Names{"Library/Client/Plugins"});
    ASSERT_EQ(::umount((under.folder / "Library").c_str()), 0);
    EXPECT_EQ(under.changes(), (Names{"Library/Client", "Library/Client/Plugins"}));
    under.folder.writeFile("Library/Client/Plugins/file");
    EXPECT_EQ(under.changes(), Names{"Library/Client/Plugins"});
  });
}

}  // namespace
}  // namespace corvane
