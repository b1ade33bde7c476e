// The modes of the client's property lists, which are reset whenever the lock opens: of the listed files and
// of nothing that somebody has put in their place.
#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TreeFixture.h"
#include "platform/Housekeeping.h"
#include "support/OtherUser.h"

namespace corvane::helper::test {
namespace {

namespace fs = std::filesystem;
using corvane::test::OtherUser;

constexpr const char* kListed[] = {
    "Library/Corvane/ClientSettings.plist", "Library/Corvane/PluginSupport/a b.plist",
    "Library/Corvane/PluginSupport/x.plist", "Library/Corvane/Utilities/UpdaterSupport/x.plist"};

class Housekeeping : public TreeFixture {
 protected:
  Housekeeping() {
    folder.makeFolder("Library/Corvane/Utilities/UpdaterSupport");
    for (const char* file : kListed) close(file);
  }
  void close(const std::string& relative) { ::chmod(folder.writeFile(relative, "<plist/>").c_str(), 0600); }
  mode_t modeOf(const std::string& relative) { return attributesOf(relative).st_mode & 07777; }
};

TEST_F(Housekeeping, ResetsTheModesOfTheListedFilesAndOfNoOther) {
  const char* others[] = {"Library/Corvane/Other.plist", "Library/Corvane/PluginSupport/.hidden.plist",
                          "Library/Corvane/PluginSupport/x.plist.old",
                          "Library/Corvane/PluginSupport/sub/x.plist"};
  for (const char* file : others) close(file);
  ::chmod((folder / kListed[0]).c_str(), 06755);
  expectDone(tree().resetModes());
  for (const char* file : kListed) EXPECT_EQ(modeOf(file), 0644U) << file;
  for (const char* file : others) EXPECT_EQ(modeOf(file), 0600U) << file;
}

TEST_F(Housekeeping, FileWithTheModeIsNotTouched) {
  ::chmod((folder / kListed[0]).c_str(), 0644);
  const auto before = attributesOf(kListed[0]).st_ctim;
  expectDone(tree().resetModes());
  const auto after = attributesOf(kListed[0]).st_ctim;
  EXPECT_EQ(before.tv_sec, after.tv_sec);
  EXPECT_EQ(before.tv_nsec, after.tv_nsec);
}

TEST_F(Housekeeping, WhatIsMissingIsNothingToReport) {
  for (const char* file : kListed) fs::remove(folder / file);
  expectDone(tree().resetModes());
  fs::remove_all(folder / "Library/Corvane/Utilities");
  expectDone(tree().resetModes());
  fs::remove_all(folder / "Library");
  expectDone(tree().resetModes());
}

TEST_F(Housekeeping, FileThatOnlyItsOwnerCouldOpenIsReset) {
  ::chmod((folder / kListed[1]).c_str(), 0);
  expectDone(tree().resetModes());
  EXPECT_EQ(modeOf(kListed[1]), 0644U);
}

TEST_F(Housekeeping, FolderThatOthersCanChangeIsLeftAloneAndTheOthersAreDone) {
  CORVANE_NEEDS_ROOT();
  ::chmod((folder / "Library/Corvane/PluginSupport").c_str(), 0777);
  const auto reply = tree().resetModes();
  EXPECT_EQ(reply.outcome, Outcome::Denied);
  EXPECT_EQ(reply.message,
            folder.path() + "/Library/Corvane/PluginSupport: others than root can change the folder");
  EXPECT_EQ(modeOf(kListed[0]), 0644U);
  EXPECT_EQ(modeOf(kListed[1]), 0600U);
  EXPECT_EQ(modeOf(kListed[3]), 0644U);
}

TEST_F(Housekeeping, ModeThatCannotBeChangedIsAFailureAndTheOthersAreDone) {
  CORVANE_NEEDS_ROOT();
  for (const char* relative :
       {"", "Library", "Library/Corvane", "Library/Corvane/PluginSupport", "private/tmp"})
    own(folder / relative, kUser);
  own(folder / kListed[0], kUser);
  const OtherUser owner(kUser);
  const auto reply = tree().resetModes();
  EXPECT_EQ(reply.outcome, Outcome::Failed);
  EXPECT_EQ(reply.message, folder / kListed[1] + ": Operation not permitted");
  EXPECT_EQ(modeOf(kListed[0]), 0644U);
}

/// What stands where a listed file should, and why it is left alone.
struct Planted {
  std::string name;
  std::string why;
  std::function<void(const std::string& path, const std::string& secret)> put;
};
void PrintTo(const Planted& planted, std::ostream* stream) { *stream << planted.name; }
class PlantedFile : public Housekeeping, public testing::WithParamInterface<Planted> {
 protected:
  PlantedFile() {
    ::chmod(folder.writeFile("secret/x.plist", "secret").c_str(), 04700);
    ::chmod((folder / "secret").c_str(), 0700);
  }
  /// Nothing but the other listed files has another mode than before.
  void expectOnlyTheOthersReset(const char* planted) {
    fs::remove(folder / planted);
    GetParam().put(folder / planted, folder / "secret/x.plist");
    const auto reply = tree().resetModes();
    EXPECT_EQ(reply.outcome, Outcome::Denied);
    EXPECT_EQ(reply.message, folder / planted + ": " + GetParam().why);
    EXPECT_EQ(modeOf("secret/x.plist"), 04700U);
    EXPECT_EQ(modeOf("secret"), 0700U);
    EXPECT_FALSE(exists("secret/new"));
    for (const char* file : kListed) {
      if (file == planted) continue;
      EXPECT_EQ(modeOf(file), 0644U) << file;
    }
  }
};
TEST_P(PlantedFile, IsLeftAloneInThePlaceOfTheClientsSettings) { expectOnlyTheOthersReset(kListed[0]); }
TEST_P(PlantedFile, IsLeftAloneAmongTheSettingsOfThePlugins) { expectOnlyTheOthersReset(kListed[2]); }
INSTANTIATE_TEST_SUITE_P(
    Things, PlantedFile,
    testing::Values(Planted{"Link", "a symbolic link stands in the way",
                            [](const std::string& path, const std::string& secret) {
                              fs::create_symlink(secret, path);
                            }},
                    Planted{"RelativeLink", "a symbolic link stands in the way",
                            [](const std::string& path, const std::string& secret) {
                              fs::create_symlink(fs::relative(secret, fs::path(path).parent_path()), path);
                            }},
                    Planted{"DanglingLink", "a symbolic link stands in the way",
                            [](const std::string& path, const std::string& secret) {
                              fs::create_symlink(fs::path(secret).parent_path() / "new", path);
                            }},
                    Planted{"LinkToAFolder", "a symbolic link stands in the way",
                            [](const std::string& path, const std::string& secret) {
                              fs::create_symlink(fs::path(secret).parent_path(), path);
                            }},
                    Planted{"HardLink", "the file has further hard links",
                            [](const std::string& path, const std::string& secret) {
                              fs::create_hard_link(secret, path);
                            }},
                    Planted{"Folder", "what stands there is not a regular file",
                            [](const std::string& path, const std::string&) { fs::create_directory(path); }},
                    Planted{"Fifo", "what stands there is not a regular file",
                            [](const std::string& path, const std::string&) {
                              ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
                            }}),
    [](const testing::TestParamInfo<Planted>& value) { return value.param.name; });

TEST_F(Housekeeping, LinkInThePlaceOfAFolderOfTheListIsFollowedOnlyWhereOnlyRootCanTurnIt) {
  CORVANE_NEEDS_ROOT();
  fs::rename(folder / "Library/Corvane/PluginSupport", folder / "Library/support");
  fs::create_directory_symlink("../support", folder / "Library/Corvane/PluginSupport");
  own(folder / "Library/Corvane/PluginSupport", kStranger);
  expectDenied(tree().resetModes(), "others than root can turn the symbolic link");
  EXPECT_EQ(modeOf("Library/support/x.plist"), 0600U);
  own(folder / "Library/Corvane/PluginSupport", 0);
  expectDone(tree().resetModes());
  EXPECT_EQ(modeOf("Library/support/x.plist"), 0644U);
}

/// A colleague of the user's, who may write into one folder of the user's own tree.
TEST_F(Housekeeping, LinkOfAColleagueDoesNotReachTheUsersOwnFiles) {
  CORVANE_NEEDS_ROOT();
  for (const auto& entry : fs::recursive_directory_iterator(folder.path())) own(entry.path(), kUser);
  own(folder.path(), kUser);
  const std::string key = folder.writeFile("home/key", "the user's");
  own(key, kUser);
  ::chmod(key.c_str(), 0600);
  ::chmod((folder / "Library/Corvane/PluginSupport").c_str(), 0775);
  fs::create_symlink(key, folder / "Library/Corvane/PluginSupport/y.plist");
  own(folder / "Library/Corvane/PluginSupport/y.plist", kStranger);
  const OtherUser owner(kUser);
  expectDenied(tree().resetModes(), "PluginSupport: others than you can change the folder");
  EXPECT_EQ(modeOf("home/key"), 0600U);
}

}  // namespace
}  // namespace corvane::helper::test
