// A Mac's volume with its client on a machine with polkit, and how its files must be after an administrator's
// session.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "AdministratorFiles.h"
#include "MacVolume.h"
#include "PolkitMachine.h"

namespace corvane::test::administrator {

inline constexpr const char* kClientSettings = "/Library/Corvane/ClientSettings.plist";
inline constexpr const char* kJournal = "/Library/Corvane/ClientData/LocalInfo/diskjournald.plist";
inline constexpr const char* kJournalPid = "/Library/Corvane/ClientData/LocalInfo/diskjournald.pid";
inline constexpr const char* kVolumes = "/Library/Corvane/PluginSupport/check_volumes_settings.plist";
inline constexpr const char* kTimeMachine =
    "/Library/Corvane/PluginSupport/check_time_machine_settings.plist";
inline constexpr const char* kRootCapacity =
    "/Library/Corvane/PluginSupport/check_root_capacity_settings.plist";
inline constexpr const char* kAutoDiskMount = "/Library/Preferences/SystemConfiguration/autodiskmount.plist";
inline constexpr const char* kPluginSettings = "/Library/Corvane/PluginSupport/check_web_settings.plist";
inline constexpr const char* kPluginStorage = "/Library/Corvane/PluginSupport/check_web.plist";
inline constexpr const char* kUpdateStatus = "/Library/Corvane/Utilities/UpdaterSupport/UpdateStatus.plist";
inline constexpr const char* kDefinition = "/Library/Corvane/Plugins/check_web.plist";
inline constexpr const char* kProgram = "/Library/Corvane/Plugins/check_web";
inline constexpr const char* kRootHomeStorage = "/private/var/root/Library/Preferences/check_web.plist";

inline void layOutClient(const MacVolume& volume) {
  volume.file(kClientSettings, kClientSettingsBefore);
  volume.file(kJournal, kDiskJournal);
  volume.file(kJournalPid, std::to_string(::getpid()) + "\n");
  volume.file(kVolumes, kVolumesBefore, 0644, MacVolume::kAdministrators);
  volume.file(kTimeMachine, kTimeMachineBefore);
  volume.file(kRootCapacity, kRootCapacityBefore);
  volume.file(kPluginSettings, kPluginSettingsBefore);
  volume.file(kPluginStorage, kPluginStorageBefore, 0600);
  volume.file(kUpdateStatus, kUpdateStatusContents);
  volume.file(kDefinition, pluginDefinition());
  volume.file(kProgram, kPluginProgram, 0755);
}

struct Expected {
  const char* path;
  std::string contents;
  const char* rights;
};
/// The part of the files that the session with the window changes.
inline std::vector<Expected> filesAfterTheWindowsSession() {
  return {{kClientSettings, kClientSettingsAfter, "0:0 644"},
          {kVolumes, kVolumesAfter, "0:80 644"},
          {kTimeMachine, std::string(kTimeMachineBefore), "0:0 644"},
          {kRootCapacity, kRootCapacityAfter, "0:0 644"},
          {kAutoDiskMount, kAutoDiskMountAfter, "0:0 644"},
          {kPluginStorage, kPluginStorageBefore, "0:0 644"}};
}

inline void expectFiles(const MacVolume& volume, const std::vector<Expected>& files) {
  for (const Expected& file : files) {
    EXPECT_EQ(volume.contents(file.path), file.contents) << file.path;
    EXPECT_EQ(volume.rights(file.path), file.rights) << file.path;
  }
}

}  // namespace corvane::test::administrator
