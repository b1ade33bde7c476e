#include "pane/DirectoryMonitor.h"

#include <set>
#include <utility>

#include "values/Text.h"

namespace corvane {
namespace {

/// How long changes are gathered before they are reported, in seconds: a client run writes many files in a
/// burst.
constexpr double kLatency = 1.0;
constexpr Date kBeginning{0};

}  // namespace

DirectoryMonitor::DirectoryMonitor(Platform& platform, const PathTable& paths, Reactions reactions)
    : platform_(platform), paths_(paths), reactions_(std::move(reactions)) {
  // The client settings have one entry, shared by two directories: when both come in one batch the first
  // check takes the change. This is intended.
  for (const std::string& file :
       {paths.updateStatus, paths.clientSettings, paths.diskJournal, paths.autoDiskMount,
        paths.timeMachineSettings, paths.rootCapacitySettings, paths.volumesSettings}) {
    lastChangedDates_[file] = kBeginning;
  }
}

DirectoryMonitor::~DirectoryMonitor() {
  if (!stream_) return;
  stream_->stop();
  stream_->unscheduleFromRunLoop();
}

void DirectoryMonitor::start() {
  stream_ = platform_.directoryEvents.createStream(
      {paths_.updaterSupport, paths_.clientData, paths_.installFolder, paths_.systemConfiguration,
       paths_.plugins, paths_.pluginSupport, paths_.localInfo, paths_.volumes},
      kLatency,
      [this](const auto& directories) { fileSystemEventStreamSawChangesInDirectories(directories); });
  stream_->scheduleWithRunLoop();
  stream_->start();
}

DirectoryMonitor::Newer DirectoryMonitor::reactIfNewer(const std::string& file,
                                                       const std::function<void()>& reaction) {
  const auto before = platform_.files.modificationDate(file);
  if (!before.date) return Newer::Unreadable;
  if (!(lastChangedDates_[file] < *before.date)) return Newer::No;
  reaction();
  // The date from before the reaction is stored, so that a change during the reaction counts as newer once
  // more.
  const auto after = platform_.files.modificationDate(file);
  if (!after.date) {
    platform_.log.write(formatText("Couldn't get modification date of %@: %@", {file, after.error}));
  }
  lastChangedDates_[file] = after.date ? *before.date : kBeginning;
  return Newer::Yes;
}

void DirectoryMonitor::fileSystemEventStreamSawChangesInDirectories(
    const std::vector<std::string>& directories) {
  if (directories.empty()) return;
  std::set<std::string> listed;
  for (const std::string& directory : directories) listed.insert(standardizingPath(directory));
  const auto isListed = [&listed](const std::string& directory) { return listed.contains(directory); };

  if (isListed(paths_.updaterSupport)) {
    reactIfNewer(paths_.updateStatus, [this] {
      reactions_.configuration.updateLastUpdateTime();
      didReload(Reload::LastUpdate);
    });
  }
  if (isListed(paths_.clientData)) {
    reactIfNewer(paths_.clientSettings, [this] {
      reactions_.configuration.updateLastRunTime();
      didReload(Reload::LastRun);
    });
  }
  bool volumesChanged = isListed(paths_.localInfo) && reactIfNewer(paths_.diskJournal, [] {}) == Newer::Yes;
  const bool settingsChanged = isListed(paths_.installFolder) && reactIfNewer(paths_.clientSettings, [this] {
                                                                   reactions_.refreshClientSettings();
                                                                   reactions_.configuration.refresh();
                                                                   didReload(Reload::ClientSettings);
                                                                 }) == Newer::Yes;
  if (isListed(paths_.systemConfiguration)) {
    reactIfNewer(paths_.autoDiskMount, [this] {
      reactions_.options.refreshAutomountDisk();
      didReload(Reload::Automount);
    });
  }
  const bool pluginsChanged = isListed(paths_.plugins);
  if (isListed(paths_.pluginSupport)) {
    volumesChanged = reactToPluginSupport() || volumesChanged;
    reloadPlugins();
  } else if (settingsChanged || pluginsChanged) {
    reloadPlugins();
  }
  if (volumesChanged || isListed(paths_.volumes)) {
    reactions_.options.refreshVolumes();
    didReload(Reload::Volumes);
  }
}

void DirectoryMonitor::reloadTimeMachine() {
  reactions_.options.refreshTimeMachine();
  didReload(Reload::TimeMachine);
}

void DirectoryMonitor::reloadPlugins() {
  reactions_.plugins.refresh();
  didReload(Reload::Plugins);
}

bool DirectoryMonitor::reactToPluginSupport() {
  const auto refreshTimeMachine = [this] { reloadTimeMachine(); };
  // A removed Time Machine file is shown too, unlike the others; nothing is stored. This is intended.
  if (reactIfNewer(paths_.timeMachineSettings, refreshTimeMachine) == Newer::Unreadable) refreshTimeMachine();
  reactIfNewer(paths_.rootCapacitySettings, [this] {
    reactions_.options.refreshDiskFree();
    didReload(Reload::StartupDisk);
  });
  return reactIfNewer(paths_.volumesSettings, [] {}) == Newer::Yes;
}

}  // namespace corvane
