#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/FreshFile.h"
#include "posix/PosixFiles.h"
#include "support/OtherUser.h"
#include "support/TemporaryFolder.h"

namespace corvane {
namespace {

using Beginning = FreshFile::Beginning;
using Names = std::vector<std::string>;

const std::string kLeft = ".corvane-0123456789abcdef0123456789abcdef";

class FreshFileTest : public testing::TestWithParam<Beginning> {
 protected:
  [[nodiscard]] FreshFile fresh() const { return FreshFile::in(opened.get(), GetParam()); }
  [[nodiscard]] Names names() const { return PosixFiles().walk(folder.path()).value_or(Names{"?"}); }
  static void fill(FreshFile& file) { ASSERT_EQ(::write(file.descriptor(), "whole", 5), 5); }

  test::TemporaryFolder folder;
  FileDescriptor opened{::open(folder.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
};
INSTANTIATE_TEST_SUITE_P(Files, FreshFileTest,
                         testing::Values(Beginning::WithoutName, Beginning::WithUnpredictableName),
                         [](const testing::TestParamInfo<Beginning>& value) {
                           return value.param == Beginning::WithoutName ? "WithoutName"
                                                                        : "WithUnpredictableName";
                         });

TEST_P(FreshFileTest, IsFoundUnderItsNameOnceItHasOneAndUnderNoOther) {
  auto file = fresh();
  ASSERT_TRUE(file);
  fill(file);
  EXPECT_FALSE(std::filesystem::exists(folder / "a"));
  EXPECT_EQ(file.name("a"), 0);
  EXPECT_EQ(folder.readFile("a"), "whole");
  EXPECT_EQ(names(), Names{"a"});
  struct stat status {};
  ASSERT_EQ(::fstat(file.descriptor(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
  EXPECT_EQ(status.st_nlink, 1U);
}

TEST_P(FreshFileTest, GoesWithoutAName) {
  { auto file = fresh(); }
  EXPECT_EQ(names(), Names{});
}

TEST_P(FreshFileTest, TakesNoNameThatSomethingBears) {
  folder.writeFile("a", "old");
  std::filesystem::create_symlink("nowhere", folder / "b");
  for (const char* name : {"a", "b"}) {
    auto file = fresh();
    EXPECT_EQ(file.name(name), EEXIST);
  }
  EXPECT_EQ(folder.readFile("a"), "old");
  EXPECT_EQ(names(), (Names{"a", "b"}));
}

TEST_P(FreshFileTest, TakesThePlaceOfWhatBearsTheName) {
  folder.writeFile("victim", "precious");
  std::filesystem::create_symlink("victim", folder / "a");
  for (int i = 0; i < 2; ++i) {
    auto file = fresh();
    fill(file);
    EXPECT_EQ(file.nameInPlaceOf("a"), 0);
    EXPECT_EQ(folder.readFile("a"), "whole");
  }
  EXPECT_EQ(folder.readFile("victim"), "precious");
  EXPECT_EQ(names(), (Names{"a", "victim"}));
  folder.makeFolder("folder");
  {
    auto file = fresh();
    EXPECT_EQ(file.nameInPlaceOf("folder"), EISDIR);
  }
  EXPECT_EQ(names(), (Names{"a", "folder", "victim"}));
}

TEST_P(FreshFileTest, KillLeavesNothingUnderTheNameAndNothingAtAllWhereFilesNeedNone) {
  const pid_t child = ::fork();
  if (child == 0) {
    auto file = fresh();
    if (::write(file.descriptor(), "half", 4) == 4) (void)::raise(SIGKILL);
    ::_exit(1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  const Names left = names();
  EXPECT_EQ(left.size(), GetParam() == Beginning::WithoutName ? 0U : 1U);
  for (const std::string& name : left) EXPECT_EQ(name.substr(0, 9), ".corvane-");
}

class Sweep : public testing::Test {
 protected:
  void leave(const std::string& name, std::time_t age = 7200) const {
    folder.writeFile(name, "secret");
    const timespec then{std::time(nullptr) - age, 0};
    const timespec times[] = {then, then};
    ASSERT_EQ(::utimensat(AT_FDCWD, (folder / name).c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
  }
  void sweep() const {
    const FileDescriptor opened(::open(folder.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    sweepFreshFiles(opened.get());
  }
  test::TemporaryFolder folder;
};

TEST_F(Sweep, RemovesWhatAKilledProcessOfThisUserHasLeft) {
  leave(kLeft);
  sweep();
  EXPECT_EQ(PosixFiles().walk(folder.path()), Names{});
}

TEST_F(Sweep, LeavesEverythingElse) {
  const std::string young = ".corvane-00000000000000000000000000000000";
  const std::string linked = ".corvane-11111111111111111111111111111111";
  const std::string further = ".corvane-22222222222222222222222222222222";
  const std::string inside = ".corvane-33333333333333333333333333333333";
  leave(young, 60);
  leave("target");
  std::filesystem::create_symlink("target", folder / linked);
  leave("other name");
  std::filesystem::create_hard_link(folder / "other name", folder / further);
  folder.makeFolder(inside);
  leave(".corvane-0123");
  leave(".corvane-0123456789abcdef0123456789abcdeX");
  leave("corvane-0123456789abcdef0123456789abcdef");
  const auto before = PosixFiles().walk(folder.path());
  sweep();
  EXPECT_EQ(PosixFiles().walk(folder.path()), before);
}

TEST_F(Sweep, LeavesTheFilesOfOthers) {
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root, to act as two users";
  leave(kLeft);
  ASSERT_EQ(::chown((folder / kLeft).c_str(), 4711, 4711), 0);
  sweep();
  EXPECT_EQ(PosixFiles().walk(folder.path()), Names{kLeft});
}

}  // namespace
}  // namespace corvane
