// The Configuration tab: shows when the client last ran and when its updater last checked, edits the run
// interval and the group, runs the client or its updater at once and removes the client. The assembly creates
// it, the pane controller refreshes it; all that it changes goes through the pane.
//
// The buttons and the editable fields are enabled only while the pane is unlocked. The run button is
// disabled, besides, from a click until the run has ended, and for as long as a run that somebody else has
// started holds the client's marker file; the update button from a click until the update time is shown
// again. A change of the lock enables a button anew, also one that waits for a run that never came about.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "configuration/ConfigurationTabView.h"
#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "pane/QLCFileWatcher.h"
#include "pane/SettingsFile.h"
#include "pane/Tabs.h"
#include "platform/LateCalls.h"
#include "platform/Platform.h"

namespace corvane {

class ConfigurationTabViewController final : public ConfigurationTab,
                                             private UnlockedObserver,
                                             private QLCFileWatcherDelegate {
 public:
  /// Reads the client settings. All references must outlive the controller.
  ConfigurationTabViewController(Platform& platform, const PathTable& paths, ConfigurationTabView& view);
  ConfigurationTabViewController(const ConfigurationTabViewController&) = delete;
  ConfigurationTabViewController& operator=(const ConfigurationTabViewController&) = delete;
  ~ConfigurationTabViewController() override;

  /// Sets the view up and refreshes it; called once. The pane is not owned and is asked from now on.
  void awakeFromNib(PaneServices& quorlenPrefPane);

  // ConfigurationTab
  void refresh() override;
  [[nodiscard]] bool errorLoadingPlists() override;
  void updateLastRunTime() override;
  void updateLastUpdateTime() override;

  /// The files that could not be read, as absolute paths.
  [[nodiscard]] std::vector<std::string> unreadableFiles() const;
  /// Whether a client run is in progress: the timer's action.
  void checkForFile();
  [[nodiscard]] bool clientRuns() const;

  // Actions of the buttons.
  void runUpdaterNow();
  void runClientNow();
  /// Asks for a confirmation, in a sheet.
  void uninstall();

 private:
  void unlockedDidChange() override;
  void fileWatcherFileHasDisappeared(QLCFileWatcher& watcher, const std::string& path) override;

  [[nodiscard]] bool unlocked() const;
  void alertDidEndReturnCodeContextInfo(const AlertResult& result);
  /// Runs one of the client's scripts as root.
  void runScript(const std::string& script, std::vector<std::string> arguments);

  Platform& platform_;
  const PathTable& paths_;
  ConfigurationTabView& view_;
  SettingsFile quorlen_;
  PaneServices* quorlenPrefPane_ = nullptr;
  std::unique_ptr<RunLoop::Source> timerClientPID_;
  std::shared_ptr<QLCFileWatcher> watcherClientPID_;  // while a client run holds its marker
  LateCalls calls_;
};

}  // namespace corvane
