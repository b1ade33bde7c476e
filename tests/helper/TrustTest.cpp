// What somebody else could change or make between root's look and root's step.
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TreeFixture.h"
#include "support/OtherUser.h"

namespace corvane::helper::test {
namespace {

namespace fs = std::filesystem;
using corvane::test::OtherUser;
constexpr const char* kTarget = "/Users/Shared/Corp";

class Trust : public TreeFixture {
 protected:
  /// In a folder where everybody may make one, a stranger lays a link to the folder of root "etc".
  std::string layLink() {
    folder.makeFolder("etc");
    ::chmod(folder.makeFolder("Users/Shared").c_str(), 01777);
    const auto link = folder / "Users/Shared/Corp";
    fs::create_directory_symlink("/etc", link);
    own(link, kStranger);
    stage("a.plist", "new");
    return link;
  }
};

TEST_F(Trust, LinkOfAStrangerLeadsNowhere) {
  CORVANE_NEEDS_ROOT();
  const auto link = layLink();
  const auto reply = tree().writeTarget("a.plist", kTarget);
  EXPECT_EQ(reply.outcome, Outcome::Denied);
  EXPECT_EQ(reply.message, link + ": others than root can turn the symbolic link");
  EXPECT_FALSE(exists("etc/a.plist"));
}

/// What a stranger makes of their link while root is on its way, at each step of the way in turn.
TEST_F(Trust, WhateverAStrangerMakesOfTheirLinkAtWhateverStepItLeadsNowhere) {
  CORVANE_NEEDS_ROOT();
  const auto link = layLink();
  const auto rename = [&](const std::string& what) {
    fs::remove_all(link);
    fs::rename(what, link);
  };
  const auto folderOfTheirs = [&] {
    fs::create_directory(folder / "theirs");
    own(folder / "theirs", kStranger);
    rename(folder / "theirs");
  };
  const auto linkOfTheirs = [&] {
    fs::create_directory_symlink("/etc", folder / "theirs");
    own(folder / "theirs", kStranger);
    rename(folder / "theirs");
  };
  const auto fileOfTheirs = [&] {
    own(folder.writeFile("theirs", "x"), kStranger);
    rename(folder / "theirs");
  };
  const std::function<void()> acts[] = {folderOfTheirs, linkOfTheirs, fileOfTheirs,
                                        [&] { fs::remove_all(link); }};
  for (const auto& before : acts) {
    for (const auto& act : acts) {
      bool acted = true;
      for (int step = 0; acted; ++step) {
        before();
        acted = false;
        observers.beforeLook = [&, left = step](const std::string&) mutable {
          if (left-- != 0) return;
          acted = true;
          act();
        };
        const auto reply = tree().writeTarget("a.plist", kTarget);
        EXPECT_TRUE(reply.outcome == Outcome::Denied || reply.exitStatus != 0);
        EXPECT_NE(reply.message, "");
        EXPECT_FALSE(exists("etc/a.plist"));
      }
    }
  }
}

/// On a disk that others made, what is only read may be reached through their links, which lead as far up as
/// the prefix.
TEST_F(Trust, FolderThatIsMovedOnTheWayUpDoesNotLeadOutOfThePrefix) {
  folder.writeFile("a.plist", "of the host");
  ::chmod(folder.makeFolder("disk/private/tmp").c_str(), 01777);
  folder.makeFolder("disk/Users/Shared/deep/deeper");
  fs::create_directory_symlink("deep/deeper/../../../..", folder / "disk/Users/Shared/up");
  bool moved = false;
  observers.beforeLook = [&](const std::string& at) {
    if (!at.ends_with("/deeper")) return;
    fs::rename(at, folder / "disk/Users/Shared/moved");
    moved = true;
  };
  const RootTree tree(folder / "disk", user, observers);
  EXPECT_EQ(tree.readSource("/Users/Shared/up", "a.plist").outcome, Outcome::Missing);
  EXPECT_TRUE(moved);
  EXPECT_FALSE(exists("disk/private/tmp/read-a.plist"));
}

TEST_F(Trust, PrefixThatHasBecomeALinkIsNotWorkedBelow) {
  CORVANE_NEEDS_ROOT();
  corvane::test::TemporaryFolder above;
  fs::create_directories(above / "tree/Library/Corvane/Plugins");
  const std::string program = above.writeFile("tree/Library/Corvane/Plugins/check_x", "#!/bin/sh\n");
  ::chmod(program.c_str(), 0755);
  ::chmod(above.path().c_str(), 0755);
  const RootTree tree(above / "tree", user);
  expectDone(tree.checkProgram("/Library/Corvane/Plugins", "check_x", true));
  fs::rename(above / "tree", above / "real");
  fs::create_directory_symlink("real", above / "tree");
  expectDenied(tree.checkProgram("/Library/Corvane/Plugins", "check_x", true),
               "a symbolic link stands in the way");
  fs::remove(above / "tree");
  fs::rename(above / "real", above / "old");
  fs::create_directories(above / "tree/Library/Corvane/Plugins");
  expectDenied(tree.checkProgram("/Library/Corvane/Plugins", "check_x", true),
               "another folder has taken the place of the root prefix");
}

/// The client's folder is missing: where somebody else could make it, the lock does not open.
struct Missing {
  std::string name;
  uid_t owner;  // of the folder above it
  mode_t mode;
  bool isTrusted;
};
void PrintTo(const Missing& missing, std::ostream* stream) { *stream << missing.name; }
class MissingFolder : public TreeFixture, public testing::WithParamInterface<Missing> {};

TEST_P(MissingFolder, IsNoObjectionWhereNobodyElseCanMakeIt) {
  CORVANE_NEEDS_ROOT();
  fs::remove_all(folder / "Library/Corvane");
  own(folder / "Library", GetParam().owner);
  ::chmod((folder / "Library").c_str(), GetParam().mode);
  EXPECT_EQ(tree().objection(),
            GetParam().isTrusted
                ? ""
                : folder / "Library" +
                      ": others than root can change the folder; run the pane as the owner of "
                      "the tree, or keep the tree where only root can change it");
}
INSTANTIATE_TEST_SUITE_P(Folders, MissingFolder,
                         testing::Values(Missing{"BelowRoots", 0, 0755, true},
                                         Missing{"BelowAStrangers", kStranger, 0755, false},
                                         Missing{"BelowASharedOne", 0, 01777, false},
                                         Missing{"BelowOneOfTheGroup", 0, 0775, false}),
                         [](const testing::TestParamInfo<Missing>& value) { return value.param.name; });

TEST_F(Trust, FolderThatADanglingLinkWouldMakeIsAnObjectionBelowAStrangers) {
  CORVANE_NEEDS_ROOT();
  own(folder.makeFolder("Users/stranger"), kStranger);
  fs::remove_all(folder / "Library/Corvane");
  fs::create_directory_symlink("/Users/stranger/later", folder / "Library/Corvane");
  EXPECT_NE(tree().objection().find("/Users/stranger: others than root can change the folder"),
            std::string::npos);
}

/// A tree of the user's own: the user is trusted with it beside root, and nobody else.
class OwnTree : public TreeFixture {
 protected:
  void SetUp() override {
    CORVANE_NEEDS_ROOT();
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) own(entry.path(), kUser);
    own(folder.path(), kUser);
    own(folder.writeFile("private/tmp/a.plist", "new"), kUser);
  }
};

TEST_F(OwnTree, IsTrustedWithFoldersOfRootInIt) {
  own(folder / "Library", 0);
  const OtherUser owner(kUser);
  EXPECT_EQ(tree().objection(), "");
  expectDone(tree().writeTarget("a.plist", "/Library/Corvane"));
  EXPECT_EQ(folder.readFile("Library/Corvane/a.plist"), "new");
}

TEST_F(OwnTree, IsLeftAloneWhereOthersCanChangeIt) {
  for (const char* relative : {"", "Library", "Library/Corvane"}) {
    const auto open = relative[0] == '\0' ? folder.path() : folder / relative;
    for (const auto& [uid, mode] : {std::pair<uid_t, mode_t>{kUser, 0775}, {kStranger, 0755}}) {
      own(open, uid);
      ::chmod(open.c_str(), mode);
      {
        const OtherUser owner(kUser);
        EXPECT_EQ(tree().objection(), open +
                                          ": others than you can change the folder; keep the tree where only "
                                          "you can change it");
        expectDenied(tree().writeTarget("a.plist", "/Library/Corvane"),
                     "others than you can change the folder");
      }
      own(open, kUser);
      ::chmod(open.c_str(), 0755);
    }
  }
  EXPECT_FALSE(exists("Library/Corvane/a.plist"));
}

TEST_F(OwnTree, FileInThePlaceOfAFolderIsAnObjectionAndTheTreeTheUsersAllTheSame) {
  for (const char* relative : {"private/tmp", "Library/Corvane"}) {
    fs::rename(folder / relative, folder / "away");
    own(folder.writeFile(relative, ""), kStranger);
    {
      const OtherUser owner(kUser);
      EXPECT_EQ(tree().objection(), folder / relative + ": Not a directory");
      EXPECT_TRUE(tree().belongsTo(kUser));
    }
    fs::remove(folder / relative);
    fs::rename(folder / "away", folder / relative);
  }
}

TEST_F(OwnTree, BelongsToItsOwnerAndOnlyWithoutLinks) {
  EXPECT_TRUE(tree().belongsTo(kUser));
  EXPECT_FALSE(tree().belongsTo(kStranger));
  fs::rename(folder / "Library/Corvane", folder / "users");
  EXPECT_TRUE(tree().belongsTo(kUser)) << "the prefix counts where the client's folder is missing";
  fs::create_directory_symlink(folder / "users", folder / "Library/Corvane");
  EXPECT_FALSE(tree().belongsTo(kUser)) << "whose link is it?";
  own(folder / "Library/Corvane", kUser);
  EXPECT_FALSE(tree().belongsTo(kUser));
  fs::remove(folder / "Library/Corvane");
  own(folder.path(), kStranger);
  EXPECT_FALSE(tree().belongsTo(kUser));
}

}  // namespace
}  // namespace corvane::helper::test
