#include "pane/CorvanePref.h"

#include "pane/PaneAlerts.h"
#include "values/Text.h"

namespace corvane {
namespace {

/// How long after the loss of the client settings the pane locks itself, in seconds.
constexpr double kLockDelay = 5.0;
constexpr const char* kAnotherPane =
    "Another pane is open on %@; where both change a file, what was written last counts";

}  // namespace

CorvanePref::CorvanePref(Platform& platform, const PathTable& paths, Outlets outlets)
    : platform_(platform),
      paths_(paths),
      outlets_(outlets),
      execution_(platform, outlets.view.authView),
      rootFiles_(platform, paths, execution_),
      status_(paths, outlets.view.statusField),
      header_(platform, paths, outlets.view),
      quorlen_(platform, paths.clientSettings),
      quorlenBackup_(platform, paths.clientSettingsBackup),
      monitor_(platform, paths,
               {outlets.configurationTabViewController, outlets.optionsTabViewController,
                outlets.pluginsTabViewController, [this] { refreshClientSettings(); },
                [this](Reload what) { didReload(what); }}) {
  outlets_.view.urlButton.action = [this](Button&) { header_.urlButtonAction(); };
  outlets_.view.quorlenIconButton.action = [this](Button&) { header_.quorlenIconButtonAction(); };
}

CorvanePref::~CorvanePref() {
  for (const auto& watcher : {watcherClientSettings_, watcherClientLaunchDaemon_}) {
    if (watcher) watcher->endWatching();
  }
  outlets_.view.authView.setDelegate(nullptr);
  outlets_.view.urlButton.action = nullptr;
  outlets_.view.quorlenIconButton.action = nullptr;
}

void CorvanePref::awakeFromNib() {
  quorlen_.setDelegate(this);
  if (watchInstallFolder()) watchClientSettings();
}

bool CorvanePref::watchInstallFolder() {
  const bool exists = platform_.files.exists(paths_.installFolder);
  if (!watcherClientLaunchDaemon_ && exists) {
    watcherClientLaunchDaemon_ = QLCFileWatcher::createWithPathWatchForWriteOnly(
        platform_.fileEventQueues, platform_.log, paths_.installFolder, false);
    if (watcherClientLaunchDaemon_) {
      watcherClientLaunchDaemon_->setDelegate(this);
      uninstalled_ = false;
    }
  } else if (!exists) {
    uninstalled_ = true;
    return false;
  }
  return true;
}

void CorvanePref::watchClientSettings() {
  const bool exists = platform_.files.exists(paths_.clientSettings);
  if (!watcherClientSettings_ && exists) {
    watcherClientSettings_ = QLCFileWatcher::createWithPathWatchForWriteOnly(
        platform_.fileEventQueues, platform_.log, paths_.clientSettings, false);
    clientSettingsReadError_ = watcherClientSettings_ == nullptr;
    if (clientSettingsReadError_) {
      outlets_.tabViewController.setClientSettingsReadError(true);
      return;
    }
    watcherClientSettings_->setDelegate(this);
    refresh();
  } else if (exists) {
    refresh();
  } else {
    clientSettingsReadError_ = true;
  }
}

void CorvanePref::mainViewDidLoad() {
  if (!platform_.files.exists(paths_.installFolder)) {
    platform_.log.write(formatText("Could not open %@", {paths_.installFolder}));
    platform_.dialogs.runModalAlert(
        warningAlert("Monitoring Client Error", "The monitoring client may have been partially uninstalled"));
  }
  claimTree();
  if (claim_.isTaken) platform_.log.write(formatText(kAnotherPane, {paths_.installFolder}));
  monitor_.start();
  outlets_.view.tabView.selectTabViewItemAtIndex(0);
  AuthorizationView& lock = outlets_.view.authView;
  lock.setAuthorizationRights(std::string(kAdministratorRight));
  lock.setDelegate(this);
  lock.updateStatus();
  refreshClientSettings();
}

void CorvanePref::setUnlocked(bool unlocked) {
  if (uninstalled_) {
    storeUnlocked(false);
    displayRemovedAlert();
    return;
  }
  storeUnlocked(unlocked);
  if (unlocked) {
    prepareUnlockedPane();
  } else if (clientSettingsReadError_) {
    displayPermissionsWrongAlert();
  }
}

void CorvanePref::storeUnlocked(bool unlocked) {
  unlocked_ = unlocked;
  // A pane that has locked itself keeps no rights.
  if (!unlocked) outlets_.view.authView.close();
  const auto observers = unlockedObservers_;
  for (UnlockedObserver* observer : observers) observer->unlockedDidChange();
}

void CorvanePref::claimTree() {
  claim_ = platform_.files.claimTree(paths_.installFolder);
  status_.setCaution(claim_.isTaken ? formatText(kAnotherPane, {paths_.onClient(paths_.installFolder)}) : "");
}

void CorvanePref::prepareUnlockedPane() {
  if (claim_.isTaken) claimTree();  // the other pane may have gone
  const bool error = outlets_.configurationTabViewController.errorLoadingPlists() ||
                     outlets_.optionsTabViewController.errorLoadingPlists();
  rootFiles_.checkPermissions();
  rootFiles_.convertBinaryFiles();
  if (error) displayErrorLoadingAlert();
  refresh();
}

void CorvanePref::refresh() {
  outlets_.configurationTabViewController.refresh();
  outlets_.optionsTabViewController.refresh();
  outlets_.pluginsTabViewController.refresh();
}

void CorvanePref::refreshClientSettings() {
  quorlen_.refresh();
  quorlenBackup_.refresh();
  header_.showClientSettings(quorlen_.store(), quorlenBackup_.store());
}

void CorvanePref::addUnlockedObserver(UnlockedObserver& observer) {
  unlockedObservers_.push_back(&observer);
  observer.unlockedDidChange();
}

void CorvanePref::setPlistFileValues(const std::string& path, const PropertyList& values) {
  status_.fileWasWritten(path, rootFiles_.setPlistFileValues(path, values));
}

Dictionary CorvanePref::readRootFile(const std::string& path) { return rootFiles_.readRootFile(path); }

void CorvanePref::executeQLHelperArguments(const std::string& program,
                                           const std::vector<std::string>& arguments) {
  const Result started = execution_.executeQLHelperArguments(program, arguments);
  if (!arguments.empty()) status_.scriptWasStarted(arguments.front(), started);
}

std::optional<std::string> CorvanePref::validatePluginWithArguments(
    const std::string& plugin, const std::vector<std::string>& arguments) {
  return execution_.validatePluginWithArguments(plugin, arguments);
}

void CorvanePref::authorizationViewDidAuthorize(AuthorizationView& /*view*/) { setUnlocked(true); }

void CorvanePref::authorizationViewDidDeauthorize(AuthorizationView& /*view*/) { setUnlocked(false); }

void CorvanePref::fileWatcherFileHasDisappeared(QLCFileWatcher& watcher, const std::string& /*path*/) {
  if (&watcher == watcherClientLaunchDaemon_.get()) {
    installFolderHasGone();
  } else if (&watcher == watcherClientSettings_.get()) {
    clientSettingsHaveGone();
  }
}

void CorvanePref::installFolderHasGone() {
  uninstalled_ = true;
  setUnlocked(false);
  outlets_.tabViewController.setUninstalled(true);
  watcherClientLaunchDaemon_->endWatching();
  watcherClientLaunchDaemon_.reset();
  didReload(Reload::Removed);
}

void CorvanePref::clientSettingsHaveGone() {
  clientSettingsReadError_ = true;
  lockTimer_ = platform_.runLoop.scheduleTimer(kLockDelay, false, [this] { setUnlocked(false); });
  outlets_.tabViewController.setClientSettingsReadError(true);
}

void CorvanePref::displayRemovedAlert() {
  showAlert(removedAlert(platform_.bundle.name()), SheetWindow::PaneWindow);
}

void CorvanePref::displayPermissionsWrongAlert() {
  if (!platform_.files.exists(paths_.installFolder)) return;
  showAlert(settingsUnreadableAlert(), SheetWindow::ApplicationMainWindow);
}

void CorvanePref::displayErrorLoadingAlert() {
  showAlert(warningAlert(
                "Error Reading Preferences",
                "Some preferences could not be read. Please restart System Preferences to retry, or contact "
                "support.\n(ReasonCode 415)"),
            SheetWindow::ApplicationMainWindow);
}

void CorvanePref::showAlert(const AlertDescription& alert, SheetWindow window) {
  platform_.dialogs.beginSheet(alert, window, [](const AlertResult&) {});
}

}  // namespace corvane
