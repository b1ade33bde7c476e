// What the demo lays out, as the product's own code reads it.
#include <algorithm>
#include <chrono>
#include <map>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/DemoClient.h"
#include "values/Text.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using test::DemoClient;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// The paths below the folder, relative to it, of every property list.
std::vector<std::string> propertyListsBelow(const std::string& folder) {
  std::vector<std::string> found;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().extension() == ".plist")
      found.push_back(entry.path().lexically_relative(folder).string());
  }
  std::sort(found.begin(), found.end());
  return found;
}

double secondsSince1970() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

class DemoFiles : public ::testing::Test {
 protected:
  [[nodiscard]] Dictionary read(const std::string& path) { return DemoClient::plist(path).asDictionary(); }
  DemoClient demo_;
};

TEST_F(DemoFiles, EveryPropertyListButTheOneThatIsBrokenOnPurposeIsRead) {
  std::vector<std::string> unreadable;
  const auto all = propertyListsBelow(demo_.root);
  for (const std::string& path : all) {
    if (!DemoClient::plist(demo_.root + "/" + path)) unreadable.push_back(path);
  }
  EXPECT_GT(all.size(), 40U);
  EXPECT_THAT(unreadable, ElementsAre("Library/Corvane/Plugins/broken/not_a_property_list.plist"));
}

TEST_F(DemoFiles, EveryPropertyListIsWrittenAsTheProductWouldWriteIt) {
  for (const std::string& path : propertyListsBelow(demo_.root)) {
    const std::string contents = DemoClient::contents(demo_.root + "/" + path);
    const PropertyList value = readPropertyList(contents);
    if (!value) continue;
    EXPECT_EQ(writeXmlPropertyList(value), contents) << path;
  }
}

TEST_F(DemoFiles, TheStagingFolderIsOpenToAllAndRootsHomeToNobodyElse) {
  struct stat attributes {};
  ASSERT_EQ(::stat((demo_.root + "/private/tmp").c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_mode & 07777U, 01777U);
  ASSERT_EQ(::stat((demo_.root + "/var/root").c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_mode & 07777U, 0700U);
}

TEST_F(DemoFiles, TheSystemFoldersThatThePaneWatchesExist) {
  for (const std::string& folder :
       {demo_.paths.systemConfiguration, demo_.paths.volumes, demo_.paths.localInfo,
        demo_.paths.pluginSupport, demo_.paths.updaterSupport}) {
    EXPECT_TRUE(fs::is_directory(folder)) << folder;
  }
  EXPECT_FALSE(fs::exists(demo_.paths.autoDiskMount)) << "the system makes it when the setting is changed";
}

TEST_F(DemoFiles, TheDatesAreCountedFromTheMomentOfTheLayingOut) {
  const auto lastRun = read(demo_.paths.clientSettings).value("Date_Client_Run").asDate();
  const auto lastCheck = read(demo_.paths.updateStatus).value("Date_Last_Checked").asDate();
  ASSERT_TRUE(lastRun.has_value());
  ASSERT_TRUE(lastCheck.has_value());
  EXPECT_NEAR(lastRun->secondsSince1970, secondsSince1970() - 47 * 60, test::kHangSeconds);
  EXPECT_NEAR(lastCheck->secondsSince1970, secondsSince1970() - 24 * 3600, test::kHangSeconds);
}

TEST_F(DemoFiles, TheClientSettingsHoldWhatTheHeaderAndTheTabShow) {
  const Dictionary settings = read(demo_.paths.clientSettings);
  const std::map<const char*, const char*> texts = {
      {"Branding_PrefPane_Greeting", "Need help with this Mac? Write to"},
      {"Support_Address", "mailto:support@example.com"},
      {"Server_Address", "demo.reports.example.com"}};
  for (const auto& [key, text] : texts) EXPECT_EQ(settings.value(key), PropertyList::string(text)) << key;
  for (const char* key : {"Client_Version", "QuorlenID", "ClientGroup"}) {
    EXPECT_TRUE(settings.value(key).asString() != nullptr) << key;
  }
  EXPECT_EQ(settings.value("Run_Interval"), PropertyList::integer(2));
  EXPECT_EQ(read(demo_.paths.clientSettingsBackup), settings);
}

TEST_F(DemoFiles, EveryMountedDeviceStandsInTheJournalAndEverySystemLocationIsThere) {
  const Dictionary journal = read(demo_.paths.diskJournal);
  const Dictionary devices = journal.dictionary("Devices");
  for (const PropertyList& device : journal.array("CurrentlyMountedVolumeDevices").elements()) {
    ASSERT_TRUE(device.asString() != nullptr);
    EXPECT_TRUE(devices.contains(*device.asString())) << *device.asString();
  }
  std::set<std::string> paths;
  std::set<std::string> kinds;
  for (const auto& [device, descriptions] : devices.entries()) {
    const Dictionary last = descriptions.asArray().last().asDictionary();
    if (const auto* path = last.string("DAVolumePath")) paths.insert(*path);
    if (const auto* kind = last.string("DAVolumeKind")) kinds.insert(*kind);
  }
  for (const char* path : {"/", "/Volumes/Preboot", "/Volumes/Recovery", "/private/var/vm",
                           "/System/Volumes/Data", "/Volumes/Backup"}) {
    EXPECT_THAT(paths, Contains(path));
  }
  for (const char* kind : {"acfs", "apfs", "exfat", "hfs", "msdos", "zfs", "ntfs", "smbfs"}) {
    EXPECT_THAT(kinds, Contains(kind));
  }
}

TEST_F(DemoFiles, TheDefinitionsUseEverySettingTypeAndEveryProgramExists) {
  std::set<std::string> types;
  for (const std::string& path : propertyListsBelow(demo_.paths.plugins)) {
    if (path.starts_with("broken/")) continue;
    const Dictionary definition = read(demo_.paths.plugins + "/" + path);
    for (const PropertyList& option : definition.array("PluginOptions").elements()) {
      const auto* type = option.asDictionary().dictionary("SettingType").string("Type");
      if (type != nullptr) types.insert(*type);
    }
    const Array program = definition.array("ProgramArguments");
    if (program.empty()) continue;
    const std::string executable = demo_.paths.plugins + "/" + *program.at(0).asString();
    EXPECT_EQ(::access(executable.c_str(), X_OK), 0) << executable;
  }
  for (const char* type :
       {"Checkbox", "FolderPicker", "FilePicker", "PopUpMenu", "Checkboxes", "NumberPicker", "TextField",
        "UsernameField", "PasswordField", "DisplayOnly", "PluginValidation", "FileArray", "FolderArray"}) {
    EXPECT_THAT(types, Contains(type));
  }
}

TEST_F(DemoFiles, MakingItAgainKeepsWhatWasChanged) {
  std::ofstream(demo_.paths.clientSettings, std::ios::trunc) << "changed";
  EXPECT_EQ(demo_.make(), 0);
  EXPECT_EQ(DemoClient::contents(demo_.paths.clientSettings), "changed");
}

TEST(MakeDemo, RefusesAFolderThatHoldsSomethingElse) {
  const test::TemporaryFolder folder;
  folder.writeFile("letter.txt", "Dear Sir");
  EXPECT_NE(test::runToEnd({DemoClient::script(), folder.path()}), 0);
  EXPECT_FALSE(fs::exists(folder / "Library"));
  EXPECT_EQ(folder.readFile("letter.txt"), "Dear Sir");
}

/// As with sudo in an ordinary user's checkout: the pane that root then opens trusts nothing of that user's.
TEST(MakeDemo, WhatRootLaysOutIsRootsAloneWhoeverTheSourcesBelongTo) {
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root, to act as several users";
  const test::TemporaryFolder checkout;
  fs::copy(CORVANE_DEMO_FOLDER, checkout / "demo", fs::copy_options::recursive);
  for (const auto& entry : fs::recursive_directory_iterator(checkout.path())) {
    ASSERT_EQ(::lchown(entry.path().c_str(), 4712, 4712), 0);
    fs::permissions(entry.path(), fs::perms::group_write, fs::perm_options::add);
  }
  const DemoClient demo("0", "demo", checkout / "demo/make-demo");
  ASSERT_TRUE(fs::exists(demo.paths.runClient));
  for (const auto& entry : fs::recursive_directory_iterator(demo.root)) {
    struct stat attributes {};
    ASSERT_EQ(::lstat(entry.path().c_str(), &attributes), 0);
    EXPECT_EQ(attributes.st_uid, 0U) << entry.path();
    const bool isSticky = (attributes.st_mode & S_ISVTX) != 0;
    EXPECT_TRUE(isSticky || entry.is_symlink() || (attributes.st_mode & (S_IWGRP | S_IWOTH)) == 0)
        << entry.path();
  }
}

TEST(MakeDemo, RefusesWrongArguments) {
  const test::TemporaryFolder folder;
  const std::string target = folder / "demo";
  const std::vector<std::vector<std::string>> commandLines = {
      {},   {""}, {"--run-seconds", "soon", target}, {"--run-seconds"}, {"--fresh", target}, {target, target},
      {"/"}};
  for (auto arguments : commandLines) {
    arguments.insert(arguments.begin(), DemoClient::script());
    EXPECT_NE(test::runToEnd(arguments), 0) << ::testing::PrintToString(arguments);
  }
  EXPECT_FALSE(fs::exists(target));
}

TEST(MakeDemo, WorksInAFolderWithAnyName) {
  const DemoClient demo("0", "a demo's $(folder) \"für\" alle");
  EXPECT_TRUE(DemoClient::isAlive(demo.daemonPid()));
  EXPECT_EQ(test::runToEnd(DemoClient::bash(demo.paths.runClient, {"--force"})), 0);
  EXPECT_THAT(demo.log(), HasSubstr("ended"));
}

}  // namespace
}  // namespace corvane
