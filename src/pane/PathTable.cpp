#include "pane/PathTable.h"

#include "values/Text.h"

namespace corvane {
namespace {

std::string normalizedPrefix(std::string_view prefix) {
  std::string result = standardizingPath(prefix);
  return result == "/" ? std::string() : result;
}

}  // namespace

PathTable::PathTable(std::string_view rootPrefix)
    : rootPrefix_(normalizedPrefix(rootPrefix)),
      installFolder(rootPrefix_ + "/Library/Corvane"),
      clientSettings(rootPrefix_ + "/Library/Corvane/ClientSettings.plist"),
      clientSettingsBackup(rootPrefix_ + "/Library/Corvane/ClientData/ClientSettingsBackup.plist"),
      clientData(rootPrefix_ + "/Library/Corvane/ClientData"),
      localInfo(rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo"),
      diskJournal(rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/diskjournald.plist"),
      diskJournalPid(rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/diskjournald.pid"),
      errorLoggerPid(rootPrefix_ + "/Library/Corvane/ClientData/LocalInfo/corvane_error_logger.pid"),
      pluginSupport(rootPrefix_ + "/Library/Corvane/PluginSupport"),
      volumesSettings(rootPrefix_ + "/Library/Corvane/PluginSupport/check_volumes_settings.plist"),
      timeMachineSettings(rootPrefix_ + "/Library/Corvane/PluginSupport/check_time_machine_settings.plist"),
      rootCapacitySettings(rootPrefix_ + "/Library/Corvane/PluginSupport/check_root_capacity_settings.plist"),
      plugins(rootPrefix_ + "/Library/Corvane/Plugins"),
      utilities(rootPrefix_ + "/Library/Corvane/Utilities"),
      updaterSupport(rootPrefix_ + "/Library/Corvane/Utilities/UpdaterSupport"),
      updateStatus(rootPrefix_ + "/Library/Corvane/Utilities/UpdaterSupport/UpdateStatus.plist"),
      runClient(rootPrefix_ + "/Library/Corvane/RunClient"),
      runUpdater(rootPrefix_ + "/Library/Corvane/RunUpdater"),
      systemConfiguration(rootPrefix_ + "/Library/Preferences/SystemConfiguration"),
      autoDiskMount(rootPrefix_ + "/Library/Preferences/SystemConfiguration/autodiskmount.plist"),
      volumes(rootPrefix_ + "/Volumes") {}

std::string PathTable::onDisk(std::string_view clientPath) const {
  if (!clientPath.starts_with('/')) return {};
  // Without a prefix the path is the system's own and is used exactly as it stands.
  return rootPrefix_.empty() ? std::string(clientPath) : rootPrefix_ + standardizingPath(clientPath);
}

std::string PathTable::onClient(std::string_view diskPath) const {
  if (rootPrefix_.empty() || !diskPath.starts_with(rootPrefix_)) return std::string(diskPath);
  const std::string_view rest = diskPath.substr(rootPrefix_.size());
  if (rest.empty()) return "/";
  return std::string(rest.starts_with('/') ? rest : diskPath);
}

std::string PathTable::writeStaging(std::string_view target) const {
  return rootPrefix_ + formatText("/private/tmp/%@", {lastPathComponent(target)});
}

std::string PathTable::readStaging(std::string_view source) const {
  return rootPrefix_ + formatText("/private/tmp/read-%@", {lastPathComponent(source)});
}

}  // namespace corvane
