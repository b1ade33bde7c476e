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
  [[nodiscard]] std::string writeStaging(std::string_view target) const;
  [[nodiscard]] std::string readStaging(std::string_view source) const;

 private:
  std::string rootPrefix_;

 public:
  const std::string installFolder;
  const std::string clientSettings;
  const std::string clientSettingsBackup;
  const std::string clientData;
  const std::string localInfo;
  const std::string diskJournal;
  const std::string diskJournalPid;
  const std::string errorLoggerPid;
  const std::string pluginSupport;
  const std::string volumesSettings;
  const std::string timeMachineSettings;
  const std::string rootCapacitySettings;
  const std::string plugins;
  const std::string utilities;
  const std::string updaterSupport;
  const std::string updateStatus;
  const std::string runClient;
  const std::string runUpdater;
  const std::string systemConfiguration;
  const std::string autoDiskMount;
  const std::string volumes;
};

}  // namespace corvane
