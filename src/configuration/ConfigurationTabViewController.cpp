#include "configuration/ConfigurationTabViewController.h"

#include <utility>

#include "configuration/StatusDate.h"
#include "formatters/MyNumberFormatter.h"
#include "pane/ClientKeys.h"
#include "pane/PaneAlerts.h"
#include "values/Text.h"

namespace corvane {
namespace {

/// How often the run marker is looked for, in seconds.
constexpr double kMarkerInterval = 1.0;

// Hours from one run of the client to the next.
constexpr std::int32_t kShortestRunInterval = 1;
constexpr std::int32_t kLongestRunInterval = 6;
constexpr std::int32_t kDefaultRunInterval = 1;

constexpr std::string_view kRemoveText = "Removes %@ from this computer";
constexpr std::string_view kClientName = "the client";

// What the client's scripts are told: on whose behalf they run, and what to do. Root's side has its own list
// of these command lines (helper/CommandShapes.cpp); a test compares both.
constexpr const char* kLogParent = "--log-parent";
constexpr const char* kForce = "--force";
constexpr const char* kRemove = "--remove";
constexpr const char* kQuiet = "--quiet";

// The misspelling is part of the text and intended.
constexpr const char* kUninstallText =
    "This will permenantly remove the client software and report its removal.";

}  // namespace

ConfigurationTabViewController::ConfigurationTabViewController(Platform& platform, const PathTable& paths,
                                                               ConfigurationTabView& view)
    : platform_(platform), paths_(paths), view_(view), quorlen_(platform, paths.clientSettings) {
  quorlen_.bind(view_.runIntervalTextField, client_key::kRunInterval, SettingsBinding::Kind::Integer);
  quorlen_.bind(view_.clientGroupTextField, client_key::kClientGroup, SettingsBinding::Kind::Text);
  view_.runClientButton.action = [this](Button&) { runClientNow(); };
  view_.updateClientNowButton.action = [this](Button&) { runUpdaterNow(); };
  view_.uninstallButton.action = [this](Button&) { uninstall(); };
}

ConfigurationTabViewController::~ConfigurationTabViewController() {
  if (watcherClientPID_) watcherClientPID_->endWatching();
  for (Button* button : {&view_.runClientButton, &view_.updateClientNowButton, &view_.uninstallButton}) {
    button->action = nullptr;
  }
}

void ConfigurationTabViewController::awakeFromNib(PaneServices& quorlenPrefPane) {
  quorlenPrefPane_ = &quorlenPrefPane;
  quorlen_.setDelegate(quorlenPrefPane_);
  timerClientPID_ = platform_.runLoop.scheduleTimer(kMarkerInterval, true, [this] { checkForFile(); });
  const bool hasUpdater = platform_.files.exists(paths_.utilities);
  view_.lastRunUpdaterLabel.setHidden(!hasUpdater);
  view_.lastRunUpdaterField.setHidden(!hasUpdater);
  view_.updateClientNowButton.setHidden(!hasUpdater);
  view_.removeClientField.setStringValue(formatText(kRemoveText, {kClientName}));
  view_.runIntervalTextField.setFormatter(
      std::make_shared<MyNumberFormatter>(kShortestRunInterval, kLongestRunInterval, kDefaultRunInterval));
  quorlenPrefPane_->addUnlockedObserver(*this);
  refresh();
}

void ConfigurationTabViewController::refresh() {
  quorlen_.refresh();
  updateLastUpdateTime();
  updateLastRunTime();
}

std::vector<std::string> ConfigurationTabViewController::unreadableFiles() const {
  return quorlen_.validValues() ? std::vector<std::string>() : std::vector{quorlen_.file()};
}

bool ConfigurationTabViewController::errorLoadingPlists() { return !unreadableFiles().empty(); }

void ConfigurationTabViewController::updateLastUpdateTime() {
  const Dictionary status = platform_.propertyLists.read(paths_.updateStatus).asDictionary();
  const auto text = statusDateText(status.value(client_key::kDateLastChecked));
  if (!text) return;  // the field keeps what it showed
  view_.updateClientNowButton.setEnabled(unlocked());
  view_.lastRunUpdaterField.setStringValue(*text);
}

void ConfigurationTabViewController::updateLastRunTime() {
  const Dictionary settings = platform_.propertyLists.read(paths_.clientSettings).asDictionary();
  const auto text = statusDateText(settings.value(client_key::kDateClientRun));
  if (text) view_.lastRunClientField.setStringValue(*text);
}

void ConfigurationTabViewController::runUpdaterNow() {
  view_.updateClientNowButton.setEnabled(false);
  runScript(paths_.runUpdater, {kLogParent, "prefpane-updater", kForce});
}

void ConfigurationTabViewController::runClientNow() {
  view_.runClientButton.setEnabled(false);
  runScript(paths_.runClient, {kLogParent, "prefpane-client", kForce});
}

void ConfigurationTabViewController::uninstall() {
  AlertDescription alert = removalAlert(platform_.bundle, kUninstallText, "Uninstall");
  alert.accessory = AlertCheckBox{"Allow client to report removal.", 200, 40, true, true};
  platform_.dialogs.beginSheet(alert, SheetWindow::PaneWindow, calls_.wrap([this](const AlertResult& result) {
    alertDidEndReturnCodeContextInfo(result);
  }));
}

void ConfigurationTabViewController::alertDidEndReturnCodeContextInfo(const AlertResult& result) {
  if (result.returnCode != kAlertFirstButtonReturn) return;
  std::vector<std::string> arguments = {kLogParent, "prefpane-remove", kRemove};
  if (!result.accessoryOn) arguments.emplace_back(kQuiet);
  runScript(paths_.runClient, std::move(arguments));
}

void ConfigurationTabViewController::runScript(const std::string& script,
                                               std::vector<std::string> arguments) {
  if (quorlenPrefPane_ == nullptr) return;
  arguments.insert(arguments.begin(), script);
  quorlenPrefPane_->executeQLHelperArguments(tool::kBash, arguments);
}

bool ConfigurationTabViewController::clientRuns() const {
  return platform_.files.exists(paths_.errorLoggerPid);
}

void ConfigurationTabViewController::checkForFile() {
  if (watcherClientPID_ || !clientRuns()) return;
  watcherClientPID_ = QLCFileWatcher::createWithPathWatchForWriteOnly(
      platform_.fileEventQueues, platform_.log, paths_.errorLoggerPid, false);
  if (!watcherClientPID_) return;  // gone meanwhile, perhaps; the next tick tries again
  view_.runClientButton.setEnabled(false);
  view_.showRun(true);
  watcherClientPID_->setDelegate(this);
}

void ConfigurationTabViewController::fileWatcherFileHasDisappeared(QLCFileWatcher& watcher,
                                                                   const std::string& /*path*/) {
  if (&watcher != watcherClientPID_.get()) return;
  view_.showRun(false);
  view_.runClientButton.setEnabled(unlocked());
  watcherClientPID_->endWatching();  // each run has a watcher of its own; none may stay behind
  watcherClientPID_.reset();
}

void ConfigurationTabViewController::unlockedDidChange() {
  const bool open = unlocked();
  view_.runIntervalTextField.setEnabled(open);
  view_.clientGroupTextField.setEnabled(open);
  view_.uninstallButton.setEnabled(open);
  view_.updateClientNowButton.setEnabled(open);
  view_.runClientButton.setEnabled(open && !watcherClientPID_);
}

bool ConfigurationTabViewController::unlocked() const {
  return quorlenPrefPane_ != nullptr && quorlenPrefPane_->unlocked();
}

}  // namespace corvane
