#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"
#include "support/OtherUser.h"
#include "support/TemporaryFolder.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using test::OtherUser;
using test::TemporaryFolder;
using Paths = std::vector<std::string>;

Dictionary sample(const std::string& name = "value") {
  return Dictionary::make({{"Name", PropertyList::string(name)}, {"Count", PropertyList::integer(3)}});
}

mode_t modeOf(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

Paths namesIn(const TemporaryFolder& folder) {
  return PosixFiles().walk(folder.path()).value_or(Paths{"(unreadable)"});
}

TEST(PosixPropertyListFiles, WhatIsWrittenReadsBackEqualAndAsFreshObjects) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  const PropertyList first = files.read(folder / "a.plist");
  const PropertyList second = files.read(folder / "a.plist");
  EXPECT_EQ(first, sample());
  EXPECT_EQ(second, sample());
  EXPECT_FALSE(first.isSameObject(second));
}

TEST(PosixPropertyListFiles, WrittenFileIsXmlAloneInItsFolderAndTheUsersAloneWhateverTheUmask) {
  for (const mode_t mask : {0U, 0777U}) {
    const TemporaryFolder folder;
    const mode_t before = ::umask(mask);
    const Result written = PosixPropertyListFiles().write(folder / "a.plist", sample());
    ::umask(before);
    ASSERT_TRUE(written) << written.reason;
    EXPECT_EQ(folder.readFile("a.plist").substr(0, 6), "<?xml ");
    EXPECT_EQ(modeOf(folder / "a.plist"), 0600U);
    EXPECT_EQ(namesIn(folder), Paths{"a.plist"});
  }
}

TEST(PosixPropertyListFiles, WhatIsNotAReadablePropertyListIsNothing) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "fifo").c_str(), 0600), 0);
  std::filesystem::create_symlink("a", folder / "b");
  std::filesystem::create_symlink("b", folder / "a");
  PosixPropertyListFiles files;
  for (const std::string& path :
       {folder / "missing", folder / "fifo", folder.path(), folder / "a", std::string("/dev/null"),
        folder.writeFile("empty"), folder.writeFile("text", "no property list")}) {
    EXPECT_FALSE(files.read(path)) << path;
  }
}

TEST(PosixPropertyListFiles, FileBeyondTheSizeLimitIsNothing) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  ASSERT_TRUE(files.read(folder / "a.plist"));
  std::filesystem::resize_file(folder / "a.plist", kLargestPropertyListFile + 1);
  EXPECT_FALSE(files.read(folder / "a.plist"));
}

#if !defined(__SANITIZE_ADDRESS__)  // which itself takes more than any limit
TEST(PosixPropertyListFiles, FileForWhichThereIsNoMemoryIsNothing) {
  const TemporaryFolder folder;
  std::filesystem::resize_file(folder.writeFile("a.plist"), kLargestPropertyListFile);
  const pid_t child = ::fork();
  if (child == 0) {
    const rlimit limit{kLargestPropertyListFile, kLargestPropertyListFile};
    if (::setrlimit(RLIMIT_AS, &limit) != 0) ::_exit(2);
    ::_exit(PosixPropertyListFiles().read(folder / "a.plist") ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}
#endif

TEST(PosixPropertyListFiles, ExpectedCopyIsReadWhenItHasComeOrTakenAnothersPlace) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  auto expected = files.expectCopy(folder / "a.plist");
  EXPECT_FALSE(expected());
  ASSERT_TRUE(files.write(folder / "a.plist", sample("first")));
  EXPECT_EQ(expected(), sample("first"));
  expected = files.expectCopy(folder / "a.plist");
  EXPECT_FALSE(expected()) << "what was there before";
  ASSERT_TRUE(files.write(folder / "a.plist", sample("second")));
  EXPECT_EQ(expected(), sample("second"));
}

TEST(PosixPropertyListFiles, ExpectedCopyIsReadWhenItWasWrittenOverTheOldOne) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  const std::filesystem::path path = folder / "a.plist";
  std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) - std::chrono::hours(1));
  const auto expected = files.expectCopy(path);
  std::ofstream(path) << writeXmlPropertyList(sample("new")).value_or("");
  EXPECT_EQ(expected(), sample("new"));
}

TEST(PosixPropertyListFiles, ExpectedCopyIsNeitherALinkNorASecondNameNorAnotherKind) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "of the user.plist", sample()));
  const auto path = folder / "a.plist";
  const auto expected = files.expectCopy(path);
  std::filesystem::create_symlink("of the user.plist", path);
  EXPECT_FALSE(expected());
  std::filesystem::remove(path);
  std::filesystem::create_hard_link(folder / "of the user.plist", path);
  EXPECT_FALSE(expected());
  std::filesystem::remove(path);
  ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
  EXPECT_FALSE(expected());
}

TEST(PosixPropertyListFiles, ExpectedCopyIsOfTheUserOrOfRoot) {
  if (!OtherUser::isPossible()) GTEST_SKIP() << "needs root";
  constexpr uid_t user = 65534;
  constexpr uid_t stranger = 4242;
  const TemporaryFolder folder;
  std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
  PosixPropertyListFiles files;
  const auto path = folder / "a.plist";
  const auto expected = files.expectCopy(path);
  ASSERT_TRUE(files.write(path, sample()));
  std::filesystem::permissions(path, std::filesystem::perms(0644));
  const auto readAsUser = [&] {
    const OtherUser other(user);
    return expected();
  };
  EXPECT_EQ(readAsUser(), sample());
  ASSERT_EQ(::chown(path.c_str(), user, user), 0);
  EXPECT_EQ(readAsUser(), sample());
  ASSERT_EQ(::chown(path.c_str(), stranger, stranger), 0);
  EXPECT_FALSE(readAsUser());
}

TEST(PosixPropertyListFiles, TheFirstWriteIntoAFolderRemovesWhatAKilledProcessHasLeft) {
  const TemporaryFolder folder;
  const std::string left = folder.writeFile(".corvane-0123456789abcdef0123456789abcdef", "secret");
  const timespec times[] = {{1, 0}, {1, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, left.c_str(), times, 0), 0);
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  EXPECT_EQ(namesIn(folder), Paths{"a.plist"});
}

TEST(PosixPropertyListFiles, LinkAtThePathIsReplacedAndItsTargetKept) {
  const TemporaryFolder folder;
  folder.writeFile("victim", "precious");
  std::filesystem::create_symlink("victim", folder / "a.plist");
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  EXPECT_EQ(folder.readFile("victim"), "precious");
  EXPECT_FALSE(std::filesystem::is_symlink(folder / "a.plist"));
  EXPECT_EQ(files.read(folder / "a.plist"), sample());
}

TEST(PosixPropertyListFiles, SecondNameOfAFileAtThePathKeepsItsContents) {
  const TemporaryFolder folder;
  std::filesystem::create_hard_link(folder.writeFile("victim", "precious"), folder / "a.plist");
  ASSERT_TRUE(PosixPropertyListFiles().write(folder / "a.plist", sample()));
  EXPECT_EQ(folder.readFile("victim"), "precious");
}

TEST(PosixPropertyListFiles, FifoAtThePathIsReplacedWithoutWaiting) {
  const TemporaryFolder folder;
  ASSERT_EQ(::mkfifo((folder / "a.plist").c_str(), 0600), 0);
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  EXPECT_EQ(files.read(folder / "a.plist"), sample());
}

TEST(PosixPropertyListFiles, FailedWriteLeavesTheFolderAsItWas) {
  const TemporaryFolder folder;
  folder.makeFolder("a.plist");
  PosixPropertyListFiles files;
  EXPECT_EQ(files.write(folder / "a.plist", sample()).reason, "Is a directory");
  EXPECT_EQ(files.write(folder / "missing/a.plist", sample()).reason, "No such file or directory");
  EXPECT_EQ(files.write(folder.path() + "/", sample()).reason, "Is a directory");
  EXPECT_EQ(files.write(folder / "..", sample()).reason, "Is a directory");
  EXPECT_EQ(files.write(folder / ("b.plist" + std::string("\0x", 2)), sample()).reason, "Invalid argument");
  EXPECT_EQ(files.write("", sample()).reason, "Invalid argument");
  EXPECT_EQ(namesIn(folder), Paths{"a.plist"});
}

TEST(PosixPropertyListFiles, ValueThatHasNoXmlFormLeavesTheOldFile) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample()));
  EXPECT_EQ(files.write(folder / "a.plist", PropertyList()).reason,
            "the settings can't be put into a property list");
  EXPECT_EQ(files.read(folder / "a.plist"), sample());
}

TEST(PosixPropertyListFiles, FullDiskLeavesTheOldFileAndNoTemporaryOne) {
  const TemporaryFolder folder;
  PosixPropertyListFiles files;
  ASSERT_TRUE(files.write(folder / "a.plist", sample("old")));
  // A limit on the size of files makes the write fail half-way, as a full disk does.
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  rlimit small = before;
  small.rlim_cur = 64;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const Result written = files.write(folder / "a.plist", sample(std::string(1000, 'x')));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(written.reason, "File too large");
  EXPECT_EQ(files.read(folder / "a.plist"), sample("old"));
  EXPECT_EQ(namesIn(folder), Paths{"a.plist"});
}

TEST(PosixPropertyListFiles, FileOfSomebodyElseInAStickyFolderIsNotReplaced) {
  if (!OtherUser::isPossible()) GTEST_SKIP() << "NOT TESTED: this needs root to act as two users";
  const TemporaryFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 01777), 0);
  folder.writeFile("a.plist", "of root");
  Result written;
  {
    const OtherUser nobody;
    written = PosixPropertyListFiles().write(folder / "a.plist", sample());
  }
  EXPECT_EQ(written.reason, "Operation not permitted");
  EXPECT_EQ(folder.readFile("a.plist"), "of root");
  EXPECT_EQ(namesIn(folder), Paths{"a.plist"});
}

}  // namespace
}  // namespace corvane
