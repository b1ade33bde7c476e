#include <gtest/gtest.h>

#include "pane/PathTable.h"

namespace corvane {
namespace {

TEST(PathTable, WithoutAPrefixThePathsAreTheFixedOnes) {
  const PathTable paths;
  const std::pair<std::string, std::string> expected[] = {
      {paths.installFolder, "/Library/Corvane"},
      {paths.clientSettings, "/Library/Corvane/ClientSettings.plist"},
      {paths.clientSettingsBackup, "/Library/Corvane/ClientData/ClientSettingsBackup.plist"},
      {paths.clientData, "/Library/Corvane/ClientData"},
      {paths.localInfo, "/Library/Corvane/ClientData/LocalInfo"},
      {paths.diskJournal, "/Library/Corvane/ClientData/LocalInfo/diskjournald.plist"},
      {paths.diskJournalPid, "/Library/Corvane/ClientData/LocalInfo/diskjournald.pid"},
      {paths.errorLoggerPid, "/Library/Corvane/ClientData/LocalInfo/corvane_error_logger.pid"},
      {paths.pluginSupport, "/Library/Corvane/PluginSupport"},
      {paths.volumesSettings, "/Library/Corvane/PluginSupport/check_volumes_settings.plist"},
      {paths.timeMachineSettings, "/Library/Corvane/PluginSupport/check_time_machine_settings.plist"},
      {paths.rootCapacitySettings, "/Library/Corvane/PluginSupport/check_root_capacity_settings.plist"},
      {paths.plugins, "/Library/Corvane/Plugins"},
      {paths.utilities, "/Library/Corvane/Utilities"},
      {paths.updaterSupport, "/Library/Corvane/Utilities/UpdaterSupport"},
      {paths.updateStatus, "/Library/Corvane/Utilities/UpdaterSupport/UpdateStatus.plist"},
      {paths.runClient, "/Library/Corvane/RunClient"},
      {paths.runUpdater, "/Library/Corvane/RunUpdater"},
      {paths.systemConfiguration, "/Library/Preferences/SystemConfiguration"},
      {paths.autoDiskMount, "/Library/Preferences/SystemConfiguration/autodiskmount.plist"},
      {paths.volumes, "/Volumes"},
  };
  for (const auto& [path, fixed] : expected) EXPECT_EQ(path, fixed);
  EXPECT_EQ(paths.onDisk("/var/root/x.plist"), "/var/root/x.plist");
}

TEST(PathTable, SlashAndAnEmptyTextAreTheSamePrefix) {
  EXPECT_EQ(PathTable("/").installFolder, "/Library/Corvane");
  EXPECT_EQ(PathTable("").installFolder, "/Library/Corvane");
  EXPECT_EQ(PathTable("/mnt/mac/").installFolder, "/mnt/mac/Library/Corvane");
}

TEST(PathTable, StagingNamesComeFromTheLastPathComponent) {
  EXPECT_EQ(PathTable().writeStaging("/var/root/Library/a b.plist"), "/private/tmp/a b.plist");
  EXPECT_EQ(PathTable().readStaging("/var/root/Library/a.plist"), "/private/tmp/read-a.plist");
  EXPECT_EQ(PathTable("/mnt").writeStaging("/mnt/Library/Corvane/x.plist"), "/mnt/private/tmp/x.plist");
  EXPECT_EQ(PathTable("/mnt").readStaging("/mnt/var/root/x.plist"), "/mnt/private/tmp/read-x.plist");
}

TEST(PathTable, PathsOfTheClientAreMappedBelowThePrefixAndBack) {
  const PathTable paths("/mnt/mac");
  EXPECT_EQ(paths.onDisk("/var/root/x.plist"), "/mnt/mac/var/root/x.plist");
  EXPECT_EQ(paths.onClient("/mnt/mac/var/root/x.plist"), "/var/root/x.plist");
  EXPECT_EQ(paths.onClient("/mnt/mac"), "/");
  EXPECT_EQ(paths.onClient("/mnt/machine/x"), "/mnt/machine/x")
      << "only whole components count as the prefix";
  EXPECT_EQ(paths.onClient("/elsewhere/x"), "/elsewhere/x");
}

TEST(PathTable, ParentPartsNeverLeadAboveThePrefix) {
  const PathTable paths("/mnt/mac");
  EXPECT_EQ(paths.onDisk("/Library/Corvane/../../../../etc/passwd"), "/mnt/mac/etc/passwd");
  EXPECT_EQ(paths.onDisk("/.."), "/mnt/mac/");
}

TEST(PathTable, ARelativeOrEmptyPathHasNoPlace) {
  EXPECT_EQ(PathTable("/mnt").onDisk(""), "");
  EXPECT_EQ(PathTable("/mnt").onDisk("x.plist"), "");
  EXPECT_EQ(PathTable().onDisk("x.plist"), "");
}

}  // namespace
}  // namespace corvane
