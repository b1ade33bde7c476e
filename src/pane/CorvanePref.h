// The pane controller: owns the lock state, the header, the settings stores of the pane, the watchers that
// notice the client's removal and the loss of its settings, and the monitor of the client's directories. It
// is the one object through which the tabs reach root. The assembly creates it and plays the host's life
// cycle: construct, `awakeFromNib`, `mainViewDidLoad`.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/AuthorizationView.h"
#include "pane/ClientHeader.h"
#include "pane/DirectoryMonitor.h"
#include "pane/MyTabViewController.h"
#include "pane/PaneServices.h"
#include "pane/PaneStatus.h"
#include "pane/PaneView.h"
#include "pane/PathTable.h"
#include "pane/QLCFileWatcher.h"
#include "pane/SettingsFile.h"
#include "pane/Tabs.h"
#include "platform/Platform.h"
#include "privileged/PrivilegedExecution.h"
#include "privileged/RootFileOperations.h"

namespace corvane {

class CorvanePref final : public PaneServices,
                          private AuthorizationViewDelegate,
                          private QLCFileWatcherDelegate {
 public:
  /// The objects that the interface connects to the pane; all must outlive it.
  struct Outlets {
    PaneView& view;
    MyTabViewController& tabViewController;
    ConfigurationTab& configurationTabViewController;
    OptionsTab& optionsTabViewController;
    PluginsTab& pluginsTabViewController;
  };

  /// Reads the client settings and their backup.
  CorvanePref(Platform& platform, const PathTable& paths, Outlets outlets);
  CorvanePref(const CorvanePref&) = delete;
  CorvanePref& operator=(const CorvanePref&) = delete;
  ~CorvanePref() override;

  // The host's life cycle.
  void awakeFromNib();
  void mainViewDidLoad();

  /// Opens or closes the pane for editing; an uninstalled client can't be opened again.
  void setUnlocked(bool unlocked);
  /// Refreshes the Configuration, Options and Plugins tabs, in this order.
  void refresh();
  /// Reads the client settings again and draws the header.
  void refreshClientSettings();

  // PaneServices
  [[nodiscard]] bool unlocked() const override { return unlocked_; }
  void addUnlockedObserver(UnlockedObserver& observer) override;
  void setPlistFileValues(const std::string& path, const PropertyList& values) override;
  [[nodiscard]] Dictionary readRootFile(const std::string& path) override;
  void executeQLHelperArguments(const std::string& program,
                                const std::vector<std::string>& arguments) override;
  [[nodiscard]] std::optional<std::string> validatePluginWithArguments(
      const std::string& plugin, const std::vector<std::string>& arguments) override;

  /// Hears of everything that the pane shows anew because a file has changed, once it is done.
  std::function<void(Reload)> onReload;

  /// Whether something was tried and has not been done since. The status field tells what.
  [[nodiscard]] bool hasFailures() const { return status_.hasFailures(); }
  [[nodiscard]] bool uninstalled() const { return uninstalled_; }
  [[nodiscard]] bool clientSettingsReadError() const { return clientSettingsReadError_; }

 private:
  void authorizationViewDidAuthorize(AuthorizationView& view) override;
  void authorizationViewDidDeauthorize(AuthorizationView& view) override;
  void fileWatcherFileHasDisappeared(QLCFileWatcher& watcher, const std::string& path) override;

  /// False when loading must stop.
  bool watchInstallFolder();
  void watchClientSettings();
  void storeUnlocked(bool unlocked);
  /// The pane says so as long as it knows of another one on the same tree.
  void claimTree();
  void prepareUnlockedPane();
  void installFolderHasGone();
  void clientSettingsHaveGone();
  void didReload(Reload what) const {
    if (onReload) onReload(what);
  }

  void displayRemovedAlert();
  void displayPermissionsWrongAlert();
  void displayErrorLoadingAlert();
  void showAlert(const AlertDescription& alert, SheetWindow window);

  Platform& platform_;
  const PathTable& paths_;
  Outlets outlets_;
  PrivilegedExecution execution_;
  RootFileOperations rootFiles_;
  Files::Held claim_;  // of the tree, while this pane is open on it
  PaneStatus status_;
  ClientHeader header_;
  SettingsFile quorlen_;
  SettingsFile quorlenBackup_;  // without a delegate: never written
  DirectoryMonitor monitor_;
  bool unlocked_ = false;
  std::vector<UnlockedObserver*> unlockedObservers_;
  bool clientSettingsReadError_ = false;
  std::shared_ptr<QLCFileWatcher> watcherClientSettings_;
  bool uninstalled_ = false;
  std::shared_ptr<QLCFileWatcher> watcherClientLaunchDaemon_;  // watches the install folder
  std::unique_ptr<RunLoop::Source> lockTimer_;
};

}  // namespace corvane
