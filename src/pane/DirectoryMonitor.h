// Follows the client's directories while the pane is open: compares the modification dates of the files that
// matter with those seen last and calls only the affected reload operation of a tab. Part of the pane
// controller, which creates the stream when its main view is loaded and ends it at its destruction.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "pane/PathTable.h"
#include "pane/Tabs.h"
#include "platform/Platform.h"

namespace corvane {

/// What of the pane is shown anew because a file has changed.
enum class Reload {
  LastUpdate,
  LastRun,
  ClientSettings,
  Automount,
  TimeMachine,
  StartupDisk,
  Plugins,
  Volumes,
  Removed,  // the client has gone
};

class DirectoryMonitor {
 public:
  struct Reactions {
    ConfigurationTab& configuration;
    OptionsTab& options;
    PluginsTab& plugins;
    std::function<void()> refreshClientSettings;
    /// Hears of each of them, once it is done.
    std::function<void(Reload)> didReload = {};
  };

  /// Every tracked file starts with the date of 1 January 1970, so that its first change counts as newer.
  DirectoryMonitor(Platform& platform, const PathTable& paths, Reactions reactions);
  DirectoryMonitor(const DirectoryMonitor&) = delete;
  DirectoryMonitor& operator=(const DirectoryMonitor&) = delete;
  ~DirectoryMonitor();

  /// Creates, schedules and starts the stream over the watched directories.
  void start();
  /// Handles one batch of directories in which something changed.
  void fileSystemEventStreamSawChangesInDirectories(const std::vector<std::string>& directories);

  /// The last date seen of each tracked file.
  [[nodiscard]] const std::map<std::string, Date>& lastChangedDates() const { return lastChangedDates_; }

 private:
  enum class Newer { Yes, No, Unreadable };
  /// Performs the reaction and stores the file's date when the file is newer than the date stored.
  Newer reactIfNewer(const std::string& file, const std::function<void()>& reaction);
  bool reactToPluginSupport();
  void reloadTimeMachine();
  void reloadPlugins();
  void didReload(Reload what) const {
    if (reactions_.didReload) reactions_.didReload(what);
  }

  Platform& platform_;
  const PathTable& paths_;
  Reactions reactions_;
  std::map<std::string, Date> lastChangedDates_;
  std::unique_ptr<DirectoryEventStream> stream_;
};

}  // namespace corvane
