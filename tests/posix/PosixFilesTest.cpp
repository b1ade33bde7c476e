#include <array>
#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"
#include "posix/Pipe.h"
#include "posix/PosixFiles.h"
#include "support/OtherUser.h"
#include "support/TemporaryFolder.h"

namespace corvane {
namespace {

using test::OtherUser;
using test::TemporaryFolder;
using ::testing::IsEmpty;
using ::testing::Optional;
using Paths = std::vector<std::string>;

TEST(PosixFiles, FilesFoldersAndLinksToThemExist) {
  const TemporaryFolder folder;
  const std::string file = folder.writeFile("file", "text");
  std::filesystem::create_symlink(file, folder / "link");
  PosixFiles files;
  EXPECT_TRUE(files.exists(folder.path()));
  EXPECT_TRUE(files.exists(file));
  EXPECT_TRUE(files.exists(folder / "link"));
}

TEST(PosixFiles, MissingFilesAndDanglingLinksDoNotExist) {
  const TemporaryFolder folder;
  folder.writeFile("file", "text");
  std::filesystem::create_symlink(folder / "nowhere", folder / "dangling");
  PosixFiles files;
  EXPECT_FALSE(files.exists(folder / "missing"));
  EXPECT_FALSE(files.exists(folder / "dangling"));
  EXPECT_FALSE(files.exists(folder / "file/below"));
  EXPECT_FALSE(files.exists(""));
}

TEST(PosixFiles, PathWithANulNamesNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("file", "text") + std::string("\0.plist", 7);
  PosixFiles files;
  EXPECT_FALSE(files.exists(path));
  EXPECT_EQ(files.contents(path, 100), std::nullopt);
  EXPECT_EQ(files.walk(folder.path() + std::string("\0x", 2)), std::nullopt);
  EXPECT_EQ(files.modificationDate(path).date, std::nullopt);
  EXPECT_EQ(files.modificationDate(path).error, "Invalid argument");
}

TEST(PosixFiles, ModificationDateHasFractionsOfASecond) {
  const TemporaryFolder folder;
  const std::string file = folder.writeFile("file");
  const std::array<timespec, 2> times{timespec{5, 0}, timespec{1'700'000'000, 250'000'000}};
  ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times.data(), 0), 0);
  PosixFiles files;
  EXPECT_THAT(files.modificationDate(file).date, Optional(Date{1'700'000'000.25}));
}

TEST(PosixFiles, MissingFileHasNoModificationDateButTheSystemsText) {
  const TemporaryFolder folder;
  PosixFiles files;
  const auto answer = files.modificationDate(folder / "missing");
  EXPECT_EQ(answer.date, std::nullopt);
  EXPECT_EQ(answer.error, "No such file or directory");
}

TEST(PosixFiles, ContentsAreReadByteForByte) {
  const TemporaryFolder folder;
  const std::string bytes("line\n\0\xFFrest", 11);
  PosixFiles files;
  EXPECT_EQ(files.contents(folder.writeFile("file", bytes), 100), bytes);
  EXPECT_EQ(files.contents(folder.writeFile("empty"), 100), "");
}

TEST(PosixFiles, FileOfExactlyTheLimitIsReadAndALargerOneIsNot) {
  const TemporaryFolder folder;
  const std::string file = folder.writeFile("file", "12345678");
  PosixFiles files;
  EXPECT_EQ(files.contents(file, 8), "12345678");
  EXPECT_EQ(files.contents(file, 7), std::nullopt);
}

TEST(PosixFiles, FileThatTellsNoSizeIsReadToItsEnd) {
  PosixFiles files;
  const auto contents = files.contents("/proc/self/stat", 10'000);
  ASSERT_TRUE(contents);
  EXPECT_THAT(*contents, ::testing::StartsWith(std::to_string(::getpid()) + " "));
  EXPECT_EQ(files.contents("/proc/self/stat", 3), std::nullopt);
}

TEST(PosixFiles, OnlyRegularFilesHaveContents) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
  PosixFiles files;
  EXPECT_EQ(files.contents(folder / "fifo", 100), std::nullopt);
  EXPECT_EQ(files.contents(folder.path(), 100), std::nullopt);
  EXPECT_EQ(files.contents("/dev/zero", 100), std::nullopt);
  EXPECT_EQ(files.contents(folder / "missing", 100), std::nullopt);
}

TEST(PosixFiles, ContentsOfWhatIsNoFileAreNotEvenOpened) {
  const TemporaryFolder folder;
  const std::string fifo = folder / "fifo";
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  const FileDescriptor opens(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  ASSERT_GE(::inotify_add_watch(opens.get(), fifo.c_str(), IN_OPEN), 0);
  EXPECT_EQ(PosixFiles().contents(fifo, 100), std::nullopt);
  std::array<char, 256> event{};
  EXPECT_EQ(::read(opens.get(), event.data(), event.size()), -1);
  EXPECT_EQ(errno, EAGAIN);
}

TEST(PosixFiles, WalkListsEverythingBelowInAFixedOrder) {
  const TemporaryFolder folder;
  for (const char* file : {"b/two", "b/one", "b/deep/er/file", "a", "c"}) folder.writeFile(file);
  folder.makeFolder("empty");
  folder.writeFile(".hidden");
  EXPECT_EQ(PosixFiles().walk(folder.path()), (Paths{".hidden", "a", "b", "b/deep", "b/deep/er",
                                                     "b/deep/er/file", "b/one", "b/two", "c", "empty"}));
}

TEST(PosixFiles, WalkListsLinksWithoutEnteringThem) {
  const TemporaryFolder folder;
  folder.writeFile("a/file");
  std::filesystem::create_symlink("..", folder / "a/up");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  EXPECT_EQ(PosixFiles().walk(folder.path()), (Paths{"a", "a/file", "a/up", "dangling"}));
}

TEST(PosixFiles, WalkBeginsThroughALinkToTheFolder) {
  const TemporaryFolder folder;
  folder.writeFile("real/file");
  std::filesystem::create_symlink("real", folder / "link");
  EXPECT_EQ(PosixFiles().walk(folder / "link"), Paths{"file"});
}

TEST(PosixFiles, WalkOfSomethingElseThanAFolderIsNothing) {
  const TemporaryFolder folder;
  EXPECT_EQ(PosixFiles().walk(folder / "missing"), std::nullopt);
  EXPECT_EQ(PosixFiles().walk(folder.writeFile("file")), std::nullopt);
  EXPECT_THAT(PosixFiles().walk(folder.makeFolder("empty")), Optional(IsEmpty()));
}

TEST(PosixFiles, WalkPassesOverUnreadableFolders) {
  if (!OtherUser::isPossible())
    GTEST_SKIP() << "NOT TESTED: this needs root to make a folder that this user can't read";
  const TemporaryFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  folder.writeFile("closed/secret");
  folder.writeFile("open/file");
  ASSERT_EQ(::chmod((folder / "closed").c_str(), 0700), 0);
  const OtherUser nobody;
  EXPECT_EQ(PosixFiles().walk(folder.path()), (Paths{"closed", "open", "open/file"}));
  EXPECT_EQ(PosixFiles().walk(folder / "closed"), std::nullopt);
}

TEST(PosixFiles, WalkLeavesOutNamesThatAreNotUtf8WithEverythingBelow) {
  const TemporaryFolder folder;
  folder.writeFile("bad\xFF/file");
  folder.writeFile("good\xC3\xA9/file");
  EXPECT_EQ(PosixFiles().walk(folder.path()), (Paths{"good\xC3\xA9", "good\xC3\xA9/file"}));
}

TEST(PosixFiles, WalkOfATreeDeeperThanPathsReachEnds) {
  const TemporaryFolder folder;
  // Built from inside, since no path leads to the bottom.
  int at = ::open(folder.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::string name(200, 'd');
  constexpr int kDepth = 100;
  for (int depth = 0; depth < kDepth; ++depth) {
    ASSERT_EQ(::mkdirat(at, name.c_str(), 0755), 0);
    const int next = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::close(at);
    ASSERT_GE(next, 0);
    at = next;
  }
  ::close(at);
  const auto paths = PosixFiles().walk(folder.path());
  ASSERT_TRUE(paths);
  // 4095 bytes hold 20 names with their slashes; the folder that holds the next one can still be listed.
  EXPECT_EQ(paths->size(), 21U);
}

TEST(PosixFiles, WalkNeedsFewDescriptorsForADeepTree) {
  const TemporaryFolder folder;
  std::string deep = "d";
  for (int depth = 1; depth < 500; ++depth) deep += "/d";
  folder.makeFolder(deep);
  const int lowestFree = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  ::close(lowestFree);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit few = before;
  few.rlim_cur = static_cast<rlim_t>(lowestFree) + 3;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
  const auto paths = PosixFiles().walk(folder.path());
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  ASSERT_TRUE(paths);
  EXPECT_EQ(paths->size(), 500U);
}

/// Runs the body in another process and answers what it answers.
int inAnotherProcess(const std::function<int()>& body) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
enum : int { kHeld, kTaken, kNeither };
int outcomeOf(const Files::Held& held) { return held.hold ? kHeld : held.isTaken ? kTaken : kNeither; }

TEST(PosixFiles, FolderIsHeldByOneProcessAndWaitedForNoLongerThanAsked) {
  const TemporaryFolder folder;
  const auto holdInAnother = [&](double patience) {
    return inAnotherProcess([&] { return outcomeOf(PosixFiles().holdFolder(folder.path(), patience)); });
  };
  auto held = PosixFiles().holdFolder(folder.path(), 0);
  ASSERT_EQ(outcomeOf(held), kHeld);
  EXPECT_EQ(holdInAnother(0), kTaken);
  EXPECT_EQ(holdInAnother(0.01), kTaken);
  held.hold.reset();
  EXPECT_EQ(holdInAnother(0), kHeld) << "and let go of when that process ended";
  EXPECT_EQ(outcomeOf(PosixFiles().holdFolder(folder.path(), 0)), kHeld);
}

TEST(PosixFiles, FolderThatIsLetGoOfInTimeIsHeldByWhoWaits) {
  const TemporaryFolder folder;
  auto held = PosixFiles().holdFolder(folder.path(), 0);
  const auto ready = makePipe();
  const pid_t child = ::fork();
  if (child == 0) {
    (void)::write(ready.writeEnd.get(), "x", 1);
    ::_exit(outcomeOf(PosixFiles().holdFolder(folder.path(), 60)));
  }
  char byte = 0;
  ASSERT_EQ(::read(ready.readEnd.get(), &byte, 1), 1);
  held.hold.reset();
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(WEXITSTATUS(status), kHeld);
}

TEST(PosixFiles, WhatCannotBeHeldIsNotTaken) {
  const TemporaryFolder folder;
  for (const std::string& path : {folder / "missing", folder.writeFile("file"), std::string("\0", 1)})
    EXPECT_EQ(outcomeOf(PosixFiles().holdFolder(path, 60)), kNeither);
}

TEST(PosixFiles, TreeIsClaimedByOneProcessHoweverItIsReached) {
  const TemporaryFolder folder;
  std::filesystem::create_directory_symlink(folder.path(), folder / "link");
  auto claim = PosixFiles().claimTree(folder.path());
  if (!claim.hold) GTEST_SKIP() << "NOT TESTED: this system has no names for processes";
  for (const std::string& path : {folder.path(), folder / "link"}) {
    EXPECT_EQ(inAnotherProcess([&] { return outcomeOf(PosixFiles().claimTree(path)); }), kTaken);
  }
  const TemporaryFolder other;
  EXPECT_EQ(outcomeOf(PosixFiles().claimTree(other.path())), kHeld);
  EXPECT_EQ(outcomeOf(PosixFiles().claimTree(folder / "missing")), kNeither);
  claim.hold.reset();
  EXPECT_EQ(inAnotherProcess([&] { return outcomeOf(PosixFiles().claimTree(folder.path())); }), kHeld);
}

TEST(PosixFiles, PathsThatLeadToOneFileAreTheSame) {
  const TemporaryFolder folder;
  folder.makeFolder("a");
  std::filesystem::create_directory_symlink("a", folder / "b");
  PosixFiles files;
  EXPECT_TRUE(files.areSame(folder / "a", folder / "b"));
  EXPECT_TRUE(files.areSame(folder / "a/../a/.", folder / "b/"));
  EXPECT_TRUE(files.areSame(folder / "missing", folder / "missing"));
  EXPECT_FALSE(files.areSame(folder / "a", folder.path()));
  EXPECT_FALSE(files.areSame(folder / "missing", folder / "a"));
}

}  // namespace
}  // namespace corvane
