// The file operations of root: what they leave behind, and that nothing planted or swapped is ever followed.
#include <filesystem>
#include <ostream>

#include <fcntl.h>

#include "TreeFixture.h"
#include "helper/RootTree.h"

namespace corvane::helper::test {
namespace {

constexpr const char* kSupport = "/Library/Corvane/PluginSupport";
const std::string kTarget = "Library/Corvane/PluginSupport/a.plist";
constexpr const char* kSecret = "for root's eyes only";

class Copying : public TreeFixture {};

TEST_F(Copying, ExistingTargetIsWrittenInPlaceAndKeepsOwnerAndMode) {
  for (const std::string old : {"", "old", "much longer than what is to be written"}) {
    folder.writeFile(kTarget, old);
    own(folder / kTarget, kStranger, kUser);
    ::chmod((folder / kTarget).c_str(), 0604);
    const auto before = attributesOf(kTarget);
    stage("a.plist", "new contents");
    expectDone(tree().writeTarget("a.plist", kSupport));
    const auto after = attributesOf(kTarget);
    EXPECT_EQ(folder.readFile(kTarget), "new contents");
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mode, before.st_mode);
  }
}

TEST_F(Copying, NewTargetBelongsToRootWithMode644WhateverTheMask) {
  stage("a.plist", "new");
  const auto mask = ::umask(0077);
  const auto reply = tree().writeTarget("a.plist", kSupport);
  ::umask(mask);
  expectDone(reply);
  EXPECT_EQ(folder.readFile(kTarget), "new");
  EXPECT_EQ(attributesOf(kTarget).st_mode & 07777, 0644U);
  EXPECT_EQ(attributesOf(kTarget).st_uid, ::geteuid());
  EXPECT_EQ(attributesOf(kTarget).st_nlink, 1U);
}

TEST_F(Copying, EmptyAndLargeContentsArriveWhole) {
  for (const auto& contents : {std::string(), std::string(3000000, 'x')}) {
    stage("a.plist", contents);
    expectDone(tree().writeTarget("a.plist", kSupport));
    EXPECT_EQ(folder.readFile(kTarget), contents);
  }
}

TEST_F(Copying, StagingFileStays) {
  stage("a.plist", "new");
  expectDone(tree().writeTarget("a.plist", kSupport));
  EXPECT_EQ(folder.readFile("private/tmp/a.plist"), "new");
}

TEST_F(Copying, MissingStagingFileOrFolderIsAnExitStatusAndChangesNothing) {
  folder.writeFile(kTarget, "old");
  auto reply = tree().writeTarget("a.plist", kSupport);
  EXPECT_EQ(reply.outcome, Outcome::Started);
  EXPECT_EQ(reply.exitStatus, 1);
  EXPECT_EQ(reply.message, folder.path() + "/private/tmp/a.plist: No such file or directory");
  EXPECT_EQ(folder.readFile(kTarget), "old");
  stage("a.plist", "new");
  reply = tree().writeTarget("a.plist", "/Library/None");
  EXPECT_EQ(reply.exitStatus, 1);
  EXPECT_EQ(reply.message, folder.path() + "/Library/None: No such file or directory");
}

TEST_F(Copying, ReadCopyIsTheUsersAloneAndReplacesAnEarlierOne) {
  folder.writeFile(kTarget, kSecret);
  ::chmod((folder / kTarget).c_str(), 0600);
  for (const uid_t earlier : {user, uid_t{0}}) {
    folder.writeFile("private/tmp/read-a.plist", "stale and longer than the secret");
    ::chmod((folder / "private/tmp/read-a.plist").c_str(), 0666);
    own(folder / "private/tmp/read-a.plist", earlier);
    expectDone(tree().readSource(kSupport, "a.plist"));
    EXPECT_EQ(folder.readFile("private/tmp/read-a.plist"), kSecret);
    EXPECT_EQ(attributesOf("private/tmp/read-a.plist").st_uid, user);
    EXPECT_EQ(attributesOf("private/tmp/read-a.plist").st_mode & 07777, 0600U);
  }
}

TEST_F(Copying, MissingSourceIsAnOutcomeOfItsOwnAndLeavesNoEarlierCopy) {
  for (const char* source : {kSupport, "/Library/None"}) {
    stage("read-a.plist", "stale");
    const auto reply = tree().readSource(source, "a.plist");
    EXPECT_EQ(reply.outcome, Outcome::Missing);
    EXPECT_EQ(reply.message, "");
    EXPECT_FALSE(exists("private/tmp/read-a.plist"));
  }
}

TEST_F(Copying, ReadThatFailsIsNotTakenForOneThatWasStarted) {
  folder.writeFile(kTarget, "settings");
  std::filesystem::resize_file(folder / kTarget, kLargestFile + 1);
  EXPECT_EQ(tree().readSource(kSupport, "a.plist").outcome, Outcome::Failed);
  std::filesystem::remove(folder / "private/tmp");
  EXPECT_EQ(tree().readSource(kSupport, "a.plist").outcome, Outcome::Failed);
}

/// The stranger's file goes when it is about to be looked at, and another one would come after that.
TEST_F(Copying, ReadDuringWhichAPlantedFileVanishesIsNotTakenForOneThatWasStarted) {
  stage("read-a.plist", "planted");
  int looks = 0;
  observers.beforeLook = [&](const std::string& at) {
    if (at == folder / "private" && ++looks == 2)
      std::filesystem::remove(folder / "private/tmp/read-a.plist");
  };
  EXPECT_EQ(tree().readSource(kSupport, "a.plist").outcome, Outcome::Failed);
  EXPECT_EQ(looks, 2);
}

TEST_F(Copying, SourceThatIsNoFileIsDenied) {
  folder.makeFolder(kTarget);
  expectDenied(tree().readSource(kSupport, "a.plist"), "not a regular file");
  EXPECT_FALSE(exists("private/tmp/read-a.plist"));
}

TEST_F(Copying, RemovalTakesTheUsersAndRootsFiles) {
  for (const uid_t owner : {user, uid_t{0}}) {
    stage("a.plist", "x");
    own(folder / "private/tmp/a.plist", owner);
    expectDone(tree().removeStaging("a.plist"));
    EXPECT_FALSE(exists("private/tmp/a.plist"));
  }
}

// What somebody can plant at a predictable path.
struct Plant {
  std::string name;
  std::string why;
  void (*put)(const std::string& path, const std::string& secret);
};
void PrintTo(const Plant& plant, std::ostream* stream) { *stream << plant.name; }
const Plant kPlants[] = {
    {"LinkToASecret", "symbolic link",
     [](const std::string& path, const std::string& secret) {
       std::filesystem::create_symlink(secret, path);
     }},
    {"DanglingLink", "symbolic link",
     [](const std::string& path, const std::string& secret) {
       std::filesystem::create_symlink(secret + "-new", path);
     }},
    {"HardLinkToASecret", "hard links",
     [](const std::string& path, const std::string& secret) {
       std::filesystem::create_hard_link(secret, path);
     }},
    {"Fifo", "not a regular file",
     [](const std::string& path, const std::string&) { ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0); }},
    {"Folder", "not a regular file",
     [](const std::string& path, const std::string&) { std::filesystem::create_directory(path); }},
};
const Plant kForeignFile{"ForeignFile", "another user", [](const std::string& path, const std::string&) {
                           std::ofstream(path) << "planted";
                           ASSERT_EQ(::chown(path.c_str(), kStranger, kStranger), 0);
                         }};

class Planted : public TreeFixture, public testing::WithParamInterface<Plant> {
 protected:
  Planted() { secret = folder.writeFile("Library/secret", kSecret); }
  void SetUp() override {
    if (GetParam().name != kForeignFile.name) return;
    CORVANE_NEEDS_ROOT();
  }
  void plant(const std::string& relative) {
    GetParam().put(folder / relative, secret);
    before = attributesOf(relative);
  }
  /// The secret is what it was, nothing has come beside it, and the planted thing stands untouched.
  void expectUntouched(const std::string& relative) {
    EXPECT_EQ(folder.readFile("Library/secret"), kSecret);
    EXPECT_FALSE(exists("Library/secret-new"));
    const auto after = attributesOf(relative);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_size, before.st_size);
  }
  std::string secret;
  struct stat before {};
};

TEST_P(Planted, AtTheStagingPathIsNeitherRemovedNorReadThrough) {
  folder.writeFile(kTarget, "old");
  plant("private/tmp/a.plist");
  expectDenied(tree().removeStaging("a.plist"), GetParam().why);
  expectDenied(tree().writeTarget("a.plist", kSupport), GetParam().why);
  EXPECT_EQ(folder.readFile(kTarget), "old");
  expectUntouched("private/tmp/a.plist");
}

TEST_P(Planted, AtTheReadStagingPathIsNotWrittenThrough) {
  folder.writeFile(kTarget, "settings");
  plant("private/tmp/read-a.plist");
  expectDenied(tree().readSource(kSupport, "a.plist"), GetParam().why);
  expectUntouched("private/tmp/read-a.plist");
}

class PlantedAtTheTarget : public Planted {};
TEST_P(PlantedAtTheTarget, IsNotWrittenThrough) {
  stage("a.plist", "new");
  plant(kTarget);
  expectDenied(tree().writeTarget("a.plist", kSupport), GetParam().why);
  expectUntouched(kTarget);
}

std::string nameOfPlant(const testing::TestParamInfo<Plant>& info) { return info.param.name; }
INSTANTIATE_TEST_SUITE_P(Things, Planted, testing::ValuesIn(kPlants), nameOfPlant);
INSTANTIATE_TEST_SUITE_P(Things, PlantedAtTheTarget, testing::ValuesIn(kPlants), nameOfPlant);
INSTANTIATE_TEST_SUITE_P(OfAStranger, Planted, testing::Values(kForeignFile), nameOfPlant);

TEST_F(Copying, LinkAsSourceOfAReadIsDenied) {
  folder.writeFile("Library/secret", kSecret);
  std::filesystem::create_symlink(folder / "Library/secret", folder / kTarget);
  expectDenied(tree().readSource(kSupport, "a.plist"), "not a regular file");
  EXPECT_FALSE(exists("private/tmp/read-a.plist"));
}

TEST_F(Copying, LinksAmongTheFoldersStayInsideThePrefix) {
  const corvane::test::TemporaryFolder outside;
  folder.makeFolder("elsewhere" + outside.path());
  folder.makeFolder("private/var/root");
  std::filesystem::create_symlink("private/var", folder / "var");
  std::filesystem::create_symlink("/elsewhere" + outside.path(), folder / "Library/absolute");
  std::filesystem::create_symlink("../../../../../../../.." + outside.path(), folder / "Library/climbing");
  folder.makeFolder(outside.path().substr(1));
  stage("a.plist", "new");
  expectDone(tree().writeTarget("a.plist", "/var/root"));
  EXPECT_EQ(folder.readFile("private/var/root/a.plist"), "new");
  expectDone(tree().writeTarget("a.plist", "/Library/absolute"));
  EXPECT_EQ(folder.readFile("elsewhere" + outside.path() + "/a.plist"), "new");
  expectDone(tree().writeTarget("a.plist", "/Library/climbing"));
  EXPECT_EQ(folder.readFile(outside.path().substr(1) + "/a.plist"), "new");
  EXPECT_TRUE(std::filesystem::is_empty(outside.path()));
}

TEST_F(Copying, FoldersAreMadeOneBelowTheOther) {
  std::filesystem::create_directories(folder / "private/var");
  std::filesystem::create_symlink("private/var", folder / "var");
  const auto mask = ::umask(022);
  expectDone(tree().makeFolders("/var/root/Library/Preferences"));
  expectDone(tree().makeFolders("/var/root/Library/Preferences"));
  ::umask(mask);
  EXPECT_EQ(attributesOf("private/var/root/Library/Preferences").st_mode & 07777, 0755U);
}

TEST_F(Copying, FoldersAreNotMadeThroughAFileOrADanglingLink) {
  folder.writeFile("var/root/file", "x");
  std::filesystem::create_symlink("/var/none", folder / "var/root/link");
  EXPECT_EQ(tree().makeFolders("/var/root/file/x").exitStatus, 1);
  EXPECT_EQ(tree().makeFolders("/var/root/link/x").exitStatus, 1);
  EXPECT_FALSE(exists("var/none"));
}

// Folders in which somebody else could plant or swap something.
struct Opening {
  std::string name;
  std::string folder;  // relative to the root prefix; empty: the prefix
  uid_t owner;
  mode_t mode;
  bool trusted;
};
void PrintTo(const Opening& opening, std::ostream* stream) { *stream << opening.name; }
class OpenFolder : public TreeFixture, public testing::WithParamInterface<Opening> {};
TEST_P(OpenFolder, DecidesWhetherRootWritesAndRuns) {
  CORVANE_NEEDS_ROOT();
  folder.writeFile(kTarget, "old");
  stage("a.plist", "new");
  folder.writeFile("Library/Corvane/PluginSupport/tool", "#!/bin/sh\n");
  ::chmod((folder / "Library/Corvane/PluginSupport/tool").c_str(), 0755);
  const auto path = GetParam().folder.empty() ? folder.path() : folder / GetParam().folder;
  ASSERT_EQ(::chown(path.c_str(), GetParam().owner, 4713), 0);
  ASSERT_EQ(::chmod(path.c_str(), GetParam().mode), 0);
  const auto written = tree().writeTarget("a.plist", kSupport);
  const auto reset = tree().resetModes();
  const auto program = tree().checkProgram(kSupport, "tool", true);
  if (GetParam().trusted) {
    expectDone(written);
    expectDone(reset);
    expectDone(program);
  } else {
    expectDenied(written, "others than root");
    expectDenied(reset, "others than root");
    expectDenied(program, "others than root");
    EXPECT_EQ(folder.readFile(kTarget), "old");
  }
}
INSTANTIATE_TEST_SUITE_P(
    Folders, OpenFolder,
    testing::Values(Opening{"OfRoot", "Library", 0, 0755, true},
                    Opening{"OfAStranger", "Library", kStranger, 0755, false},
                    Opening{"OfTheUser", "Library/Corvane/PluginSupport", kUser, 0755, false},
                    Opening{"WritableByTheGroup", "Library/Corvane/PluginSupport", 0, 0775, false},
                    Opening{"WritableByOthers", "Library/Corvane", 0, 0757, false},
                    Opening{"StickyOnTheWay", "Library", 0, 01777, true},
                    Opening{"StickyItself", "Library/Corvane/PluginSupport", 0, 01777, false},
                    Opening{"StickyOfAStranger", "Library", kStranger, 01777, false},
                    Opening{"PrefixOfAStranger", "", kStranger, 0755, false},
                    Opening{"PrefixWritableByOthers", "", 0, 0777, false}),
    [](const testing::TestParamInfo<Opening>& value) { return value.param.name; });

TEST_F(Copying, LinkThatAStrangerCanTurnIsNotFollowedByRoot) {
  CORVANE_NEEDS_ROOT();
  folder.makeFolder("Users/stranger");
  std::filesystem::create_directory_symlink("/Library/Corvane/PluginSupport", folder / "Users/stranger/link");
  own(folder / "Users/stranger", kStranger);
  stage("a.plist", "new");
  expectDenied(tree().writeTarget("a.plist", "/Users/stranger/link"), "others than root");
  EXPECT_FALSE(exists(kTarget));
}

TEST_F(Copying, StagingFolderOfAStrangerIsNotUsedByRoot) {
  CORVANE_NEEDS_ROOT();
  own(folder / "private/tmp", kStranger);
  folder.writeFile(kTarget, "x");
  stage("a.plist", "new");
  expectDenied(tree().removeStaging("a.plist"), "others than root");
  expectDenied(tree().writeTarget("a.plist", kSupport), "others than root");
  expectDenied(tree().readSource(kSupport, "a.plist"), "others than root");
}

TEST_F(Copying, PrefixWithBlanksQuotesAndLineBreaksIsJustAFolder) {
  const auto odd = folder.makeFolder("a 'b\" \n$(c)");
  folder.makeFolder("a 'b\" \n$(c)/private/tmp");
  folder.makeFolder("a 'b\" \n$(c)/Library");
  ::chmod((odd + "/private/tmp").c_str(), 01777);
  own(folder.writeFile("a 'b\" \n$(c)/private/tmp/a.plist", "new"), user);
  expectDone(RootTree(odd, user).writeTarget("a.plist", "/Library"));
  EXPECT_EQ(folder.readFile("a 'b\" \n$(c)/Library/a.plist"), "new");
}

}  // namespace
}  // namespace corvane::helper::test
