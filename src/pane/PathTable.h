// The single table of the paths that the pane touches: the client's files and folders and the system folders,
// each below one root prefix, and the system tools, which are never prefixed. With an empty prefix (on the
// Mac itself) the paths are the fixed ones; with a prefix the same tree is looked for below it (a demo, a
// staging tree, a mounted volume).
//
// Absolute paths that stand in the client's files are paths of the client's own system. They are mapped below
// the prefix with `onDisk` when a file is read or written, and back with `onClient` when one is stored or
// shown; rules about how a path begins look at the path on the client.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

namespace tool {
inline constexpr const char* kMkdir = "/bin/mkdir";
inline constexpr const char* kCp = "/bin/cp";
inline constexpr const char* kRm = "/bin/rm";
inline constexpr const char* kSh = "/bin/sh";
inline constexpr const char* kBash = "/bin/bash";
}  // namespace tool

/// Beginnings of paths on the client, compared without regard to case.
inline constexpr std::string_view kInstallFolderPrefix = "/Library/Corvane/";
inline constexpr std::string_view kRootHomePrefix = "/var/root/";

/// Places of system volumes; mount points in the disk journal are compared with them as they stand.
namespace system_volume {
inline constexpr std::string_view kRoot = "/";
inline constexpr std::string_view kSystemVolumesPrefix = "/System/Volumes/";
inline constexpr std::string_view kVm = "/private/var/vm";
inline constexpr std::string_view kPreboot = "/Volumes/Preboot";
inline constexpr std::string_view kRecovery = "/Volumes/Recovery";
}  // namespace system_volume

class PathTable {
 public:
  /// `rootPrefix` is an absolute path or empty; "/" counts as empty.
  explicit PathTable(std::string_view rootPrefix = {});

  [[nodiscard]] const std::string& rootPrefix() const { return rootPrefix_; }
  /// Where a path of the client's system lies here. ".." parts never lead above the prefix. A relative or
  /// empty path has no place here: the answer is empty.
  [[nodiscard]] std::string onDisk(std::string_view clientPath) const;
  /// The path as the client's system knows it; a path outside the prefix stays as it is.
  [[nodiscard]] std::string onClient(std::string_view diskPath) const;

  /// "/private/tmp/%@" and "/private/tmp/read-%@" with the last path component of the target or the source.
  /// Root's side spells them anew (helper/CommandShapes.h); a test compares both.
  [[nodiscard]] std::string writeStaging(std::string_view target) const;
  [[nodiscard]] std::string readStaging(std::string_view source) const;

 private:
  std::string rootPrefix_;

 public:
  const std::string installFolder = rootPrefix_ + "/Library/Corvane";
  const std::string clientSettings = rootPrefix_ + "/Library/Corvane/ClientSettings.plist";
  const std::string clientSettingsBackup =
      rootPrefix_ + "/Library/Corvane/ClientData/ClientSettingsBackup.plist";
  const std::string clientData = rootPrefix_ + "/Library/Corvane/ClientData";
  const std::string localInfo = rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo";
  const std::string diskJournal = rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/diskjournald.plist";
  const std::string diskJournalPid = rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/diskjournald.pid";
  const std::string errorLoggerPid =
      rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/corvane_error_logger.pid";
  const std::string pluginSupport = rootPrefix_ + "/Library/Corvane/PluginSupport";
  const std::string volumesSettings =
      rootPrefix_ + "/Library/Corvane/PluginSupport/check_volumes_settings.plist";
  const std::string timeMachineSettings =
      rootPrefix_ + "/Library/Corvane/PluginSupport/check_time_machine_settings.plist";
  const std::string rootCapacitySettings =
      rootPrefix_ + "/Library/Corvane/PluginSupport/check_root_capacity_settings.plist";
  const std::string plugins = rootPrefix_ + "/Library/Corvane/Plugins";
  const std::string utilities = rootPrefix_ + "/Library/Corvane/Utilities";
  const std::string updaterSupport = rootPrefix_ + "/Library/Corvane/Utilities/UpdaterSupport";
  const std::string updateStatus =
      rootPrefix_ + "/Library/Corvane/Utilities/UpdaterSupport/UpdateStatus.plist";
  const std::string runClient = rootPrefix_ + "/Library/Corvane/RunClient";
  const std::string runUpdater = rootPrefix_ + "/Library/Corvane/RunUpdater";
  const std::string systemConfiguration = rootPrefix_ + "/Library/Preferences/SystemConfiguration";
  const std::string autoDiskMount =
      rootPrefix_ + "/Library/Preferences/SystemConfiguration/autodiskmount.plist";
  const std::string volumes = rootPrefix_ + "/Volumes";
};

}  // namespace corvane
