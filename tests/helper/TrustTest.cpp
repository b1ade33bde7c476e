// What somebody else could change or make between root's look and root's step.
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TreeFixture.h"

namespace corvane::helper::test {
namespace {

namespace fs = std::filesystem;
constexpr const char* kTarget = "/Users/Shared/Corp";

class Trust : public TreeFixture {
 protected:
  ~Trust() override { RootTree::beforeLook = nullptr; }

  /// Lays a stranger's link, in a folder where everybody may make one, to the folder of root "etc". Expects a
  /// write through it to be refused when this happens between root's opening of the folder and its look at
  /// the way there.
  void expectTheLinkToLeadNowhereAfter(std::function<void()> step) {
    folder.makeFolder("etc");
    ::chmod(folder.makeFolder("Users/Shared").c_str(), 01777);
    link = folder / "Users/Shared/Corp";
    fs::create_directory_symlink("/etc", link);
    own(link, kStranger);
    stage("a.plist", "new");
    RootTree::beforeLook = [this, step = std::move(step)] {
      if (++opened == 2) step();  // the first is the staging folder
    };
    expectDenied(tree().writeTarget("a.plist", kTarget), "others than root");
    EXPECT_EQ(opened, 2);
    EXPECT_FALSE(exists("etc/a.plist"));
  }

  std::string link;
  int opened = 0;  // folders
};

TEST_F(Trust, LinkThatIsGoneByTheTimeOfTheLookHasLedNowhere) {
  CORVANE_NEEDS_ROOT();
  expectTheLinkToLeadNowhereAfter([this] { fs::remove(link); });
}

TEST_F(Trust, LinkThatHasBecomeAFolderByTheTimeOfTheLookHasLedNowhere) {
  CORVANE_NEEDS_ROOT();
  expectTheLinkToLeadNowhereAfter([this] {
    fs::remove(link);
    fs::create_directory(link);
  });
}

TEST_F(Trust, LinkThatHasBecomeAFileByTheTimeOfTheLookHasLedNowhere) {
  CORVANE_NEEDS_ROOT();
  expectTheLinkToLeadNowhereAfter([this] {
    fs::remove(link);
    folder.writeFile("Users/Shared/Corp", "x");
  });
}

TEST_F(Trust, PrefixThatHasBecomeALinkIsNotWorkedBelow) {
  CORVANE_NEEDS_ROOT();
  corvane::test::TemporaryFolder above;
  fs::create_directories(above / "tree/Library/Corvane/Plugins");
  const std::string program = above.writeFile("tree/Library/Corvane/Plugins/check_x", "#!/bin/sh\n");
  ::chmod(program.c_str(), 0755);
  ::chmod(above.path().c_str(), 0755);
  const RootTree tree(above / "tree", {.user = user, .distrust = true});
  expectDone(tree.checkProgram("/Library/Corvane/Plugins", "check_x", true));
  fs::rename(above / "tree", above / "real");
  fs::create_directory_symlink("real", above / "tree");
  expectDenied(tree.checkProgram("/Library/Corvane/Plugins", "check_x", true), "others than root");
  expectDenied(tree.checkFolder("/Library"), "others than root");
}

struct Missing {
  std::string name;
  std::string above;  // the deepest folder that there is
  uid_t owner;
  mode_t mode;
  bool isTrusted;
};

class MissingFolder : public TreeFixture, public testing::WithParamInterface<Missing> {};

TEST_P(MissingFolder, IsTrustedWhereNobodyElseCanMakeIt) {
  CORVANE_NEEDS_ROOT();
  const std::string above = folder.makeFolder(GetParam().above);
  own(above, GetParam().owner);
  ::chmod(above.c_str(), GetParam().mode);
  const auto reply = tree().checkFolder("/Library/Corvane/Utilities/UpdaterSupport");
  if (GetParam().isTrusted) {
    expectDone(reply);
  } else {
    expectDenied(reply, "others than root");
  }
}
INSTANTIATE_TEST_SUITE_P(
    Folders, MissingFolder,
    testing::Values(Missing{"BelowRoots", "Library/Corvane/Utilities", 0, 0755, true},
                    Missing{"BelowAStrangers", "Library/Corvane/Utilities", kStranger, 0755, false},
                    Missing{"BelowASharedOne", "Library/Corvane/Utilities", 0, 01777, false},
                    Missing{"BelowOneOfTheGroup", "Library/Corvane/Utilities", 0, 0775, false},
                    Missing{"FurtherBelowASharedOne", "Library/Corvane", 0, 01777, false}),
    [](const testing::TestParamInfo<Missing>& value) { return value.param.name; });

TEST_F(Trust, FolderThatADanglingLinkWouldMakeIsNotTrustedBelowAStrangers) {
  CORVANE_NEEDS_ROOT();
  own(folder.makeFolder("Users/stranger"), kStranger);
  fs::create_directory_symlink("/Users/stranger/later", folder / "Library/Corvane/Utilities");
  expectDenied(tree().checkFolder("/Library/Corvane/Utilities"), "others than root");
}

}  // namespace
}  // namespace corvane::helper::test
