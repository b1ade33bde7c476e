// What root runs and what it refuses to run.
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TreeFixture.h"

namespace corvane::helper::test {
namespace {

class Programs : public TreeFixture {
 protected:
  std::string program(const std::string& relative) const {
    const auto path = folder.writeFile(relative, "#!/bin/sh\n");
    ::chmod(path.c_str(), 0755);
    return path;
  }
};

TEST_F(Programs, RegularExecutableMayRun) {
  program("Library/Corvane/Plugins/check_x");
  program("Library/Corvane/Plugins/sub/check_y");
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", "check_x", true));
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", "sub/check_y", true));
}

TEST_F(Programs, MissingOrNotExecutableOneIsAFailure) {
  folder.writeFile("Library/Corvane/Plugins/text", "x");
  const auto missing = tree().checkProgram("/Library/Corvane/Plugins", "none", true);
  EXPECT_EQ(missing.outcome, Outcome::Failed);
  EXPECT_EQ(missing.message, folder.path() + "/Library/Corvane/Plugins/none: No such file or directory");
  EXPECT_EQ(tree().checkProgram("/Library/Corvane/Plugins", "text", true).outcome, Outcome::Failed);
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", "text", false));
  EXPECT_EQ(tree().checkProgram("/Library/None", "text", false).outcome, Outcome::Failed);
}

TEST_F(Programs, LinkThatLeavesTheFolderIsDenied) {
  program("Library/Corvane/evil");
  folder.makeFolder("Library/Corvane/Plugins");
  std::filesystem::create_symlink("../evil", folder / "Library/Corvane/Plugins/relative");
  std::filesystem::create_symlink("/bin/sh", folder / "Library/Corvane/Plugins/absolute");
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "relative", true), "outside the folder");
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "absolute", true), "outside the folder");
}

TEST_F(Programs, LinkInsideTheFolderMayRunUnlessItLeadsWhereOthersCanWrite) {
  program("Library/Corvane/Plugins/sub/real");
  std::filesystem::create_symlink("sub/real", folder / "Library/Corvane/Plugins/link");
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", "link", true));
  CORVANE_NEEDS_ROOT();
  ::chmod((folder / "Library/Corvane/Plugins/sub").c_str(), 0777);
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "link", true), "others than root");
}

/// Ways to a program that cross a folder in which others can change a link: between what is checked and what
/// is run, the link could be turned.
struct Way {
  std::string name;
  std::string program;  // below the plug-ins folder
  std::function<void(const std::string& plugins)> lay;
};

void makeLink(const std::string& target, const std::string& path) {
  std::filesystem::create_symlink(target, path);
}

class OpenWay : public Programs, public testing::WithParamInterface<Way> {};

TEST_P(OpenWay, IsNotTakenByRoot) {
  CORVANE_NEEDS_ROOT();
  const std::string plugins = folder / "Library/Corvane/Plugins";
  program("Library/Corvane/Plugins/real/check_x");
  folder.makeFolder("Library/Corvane/Plugins/open");
  GetParam().lay(plugins);
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", GetParam().program, true));
  ::chmod((plugins + "/open").c_str(), 0777);
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", GetParam().program, true), "others than root");
}
INSTANTIATE_TEST_SUITE_P(Programs, OpenWay,
                         testing::Values(Way{"LinkInTheOpenFolder", "open/link/check_x",
                                             [](const std::string& plugins) {
                                               makeLink("../real", plugins + "/open/link");
                                             }},
                                         Way{"LinkToALinkInTheOpenFolder", "check_a",
                                             [](const std::string& plugins) {
                                               makeLink("../real/check_x", plugins + "/open/link");
                                               makeLink("open/link", plugins + "/check_a");
                                             }},
                                         Way{"FolderLinkToALinkInTheOpenFolder", "sub/check_x",
                                             [](const std::string& plugins) {
                                               makeLink("../real", plugins + "/open/link");
                                               makeLink("open/link", plugins + "/sub");
                                             }}),
                         [](const testing::TestParamInfo<Way>& value) { return value.param.name; });

TEST_F(Programs, LinkOfAnotherUserInAStickyFolderIsNotFollowed) {
  CORVANE_NEEDS_ROOT();
  program("Library/Corvane/Plugins/real/check_x");
  const std::string shared = folder.makeFolder("Library/Corvane/Plugins/shared");
  ::chmod(shared.c_str(), 01777);
  makeLink("../real", shared + "/link");
  makeLink("shared/link", folder / "Library/Corvane/Plugins/sub");
  expectDone(tree().checkProgram("/Library/Corvane/Plugins", "sub/check_x", true));
  own(shared + "/link", kStranger);
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "sub/check_x", true), "others than root");
}

TEST_F(Programs, LinksThatLeadInACircleAreAFailure) {
  folder.makeFolder("Library/Corvane/Plugins");
  makeLink("b", folder / "Library/Corvane/Plugins/a");
  makeLink("a", folder / "Library/Corvane/Plugins/b");
  const auto reply = tree().checkProgram("/Library/Corvane/Plugins", "a", true);
  EXPECT_EQ(reply.outcome, Outcome::Failed);
  EXPECT_EQ(reply.message, folder.path() + "/Library/Corvane/Plugins/a: Too many levels of symbolic links");
}

TEST_F(Programs, FolderLinkThatMeansAnotherPlaceToTheSystemIsDenied) {
  program("etc/check_x");
  std::filesystem::create_directory_symlink("/etc", folder / "Library/Corvane/Plugins");
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "check_x", true), "out of the root prefix");
}

TEST_F(Programs, FileThatOthersCanChangeIsDeniedToRoot) {
  CORVANE_NEEDS_ROOT();
  const auto path = program("Library/Corvane/RunClient");
  expectDone(tree().checkProgram("/Library/Corvane", "RunClient", false));
  ::chmod(path.c_str(), 0775);
  expectDenied(tree().checkProgram("/Library/Corvane", "RunClient", false), "can change the program");
  ::chmod(path.c_str(), 0755);
  own(path, user);
  expectDenied(tree().checkProgram("/Library/Corvane", "RunClient", false), "can change the program");
}

TEST_F(Programs, FolderOrFifoIsNoProgram) {
  folder.makeFolder("Library/Corvane/Plugins/folder");
  ASSERT_EQ(::mkfifo((folder / "Library/Corvane/Plugins/fifo").c_str(), 0755), 0);
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "folder", true), "not a regular file");
  expectDenied(tree().checkProgram("/Library/Corvane/Plugins", "fifo", true), "not a regular file");
}

}  // namespace
}  // namespace corvane::helper::test
