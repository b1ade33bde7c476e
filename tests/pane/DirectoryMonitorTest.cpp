#include <limits>

#include <gmock/gmock.h>

#include "pane/DirectoryMonitor.h"
#include "support/RecordingTabs.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DirectoryMonitorTest : public ::testing::Test {
 protected:
  DirectoryMonitorTest() {
    platform_.layOutFolders();
    monitor_.start();
  }

  void setDate(const std::string& file, double secondsSince1970) {
    platform_.files.dates[file] = {Date{secondsSince1970}, {}};
  }
  void deliver(const std::vector<std::string>& directories) {
    calls_.clear();
    platform_.directoryEvents.deliver(directories);
  }

  TestPlatform platform_;
  const PathTable& paths_ = platform_.paths;
  TabCalls calls_;
  RecordingConfigurationTab configuration_{calls_};
  RecordingOptionsTab options_{calls_};
  RecordingPluginsTab plugins_{calls_};
  DirectoryMonitor monitor_{platform_.platform,
                            platform_.paths,
                            {configuration_, options_, plugins_,
                             [this] {
                               calls_.emplace_back("pane.refreshClientSettings");
                               if (whileReacting_) whileReacting_();
                             },
                             [this](Reload what) { reloads_.emplace_back(what, calls_.size()); }}};
  std::function<void()> whileReacting_;
  std::vector<std::pair<Reload, std::size_t>> reloads_;  // with how many calls had been made by then
};

TEST_F(DirectoryMonitorTest, WatchesTheEightDirectoriesWithALatencyOfOneSecond) {
  const auto& stream = *platform_.directoryEvents.streams.at(0);
  EXPECT_THAT(stream.directories, ElementsAre(paths_.updaterSupport, paths_.clientData, paths_.installFolder,
                                              paths_.systemConfiguration, paths_.plugins,
                                              paths_.pluginSupport, paths_.localInfo, paths_.volumes));
  EXPECT_EQ(stream.latency, 1.0);
}

TEST_F(DirectoryMonitorTest, EveryTrackedFileStartsAtTheBeginningOf1970) {
  const auto& dates = monitor_.lastChangedDates();
  ASSERT_EQ(dates.size(), 7U) << "the client settings have one entry";
  for (const auto& [file, date] : dates) EXPECT_EQ(date.secondsSince1970, 0) << file;
}

TEST_F(DirectoryMonitorTest, AnEmptyBatchDoesNothing) {
  setDate(paths_.clientSettings, 100);
  deliver({});
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(DirectoryMonitorTest, EachDirectoryCallsOnlyTheAffectedReload) {
  struct Case {
    std::string directory;
    std::string file;
    TabCalls calls;
  };
  const Case cases[] = {
      {paths_.updaterSupport, paths_.updateStatus, {"configuration.updateLastUpdateTime"}},
      {paths_.clientData, paths_.clientSettings, {"configuration.updateLastRunTime"}},
      {paths_.localInfo, paths_.diskJournal, {"options.refreshVolumes"}},
      {paths_.installFolder,
       paths_.clientSettings,
       {"pane.refreshClientSettings", "configuration.refresh", "plugins.refresh"}},
      {paths_.systemConfiguration, paths_.autoDiskMount, {"options.refreshAutomountDisk"}},
      {paths_.plugins, {}, {"plugins.refresh"}},
      {paths_.pluginSupport,
       paths_.rootCapacitySettings,
       {"options.refreshTimeMachine", "options.refreshDiskFree", "plugins.refresh"}},
      {paths_.pluginSupport,
       paths_.volumesSettings,
       {"options.refreshTimeMachine", "plugins.refresh", "options.refreshVolumes"}},
      {paths_.volumes, {}, {"options.refreshVolumes"}},
      {paths_.plugins + "/sub", {}, {}},
  };
  double date = 100;
  for (const Case& given : cases) {
    if (!given.file.empty()) setDate(given.file, ++date);
    deliver({given.directory});
    EXPECT_EQ(calls_, given.calls) << given.directory << " " << given.file;
  }
}

TEST_F(DirectoryMonitorTest, EachReloadIsToldOfOnceItIsDone) {
  using Told = std::vector<std::pair<Reload, std::size_t>>;
  struct Case {
    std::string directory;
    Told told;  // each with the number of calls of which it was the last
  };
  const Case cases[] = {
      {paths_.updaterSupport, {{Reload::LastUpdate, 1}}},
      {paths_.clientData, {{Reload::LastRun, 1}}},
      {paths_.installFolder, {{Reload::ClientSettings, 2}, {Reload::Plugins, 3}}},
      {paths_.systemConfiguration, {{Reload::Automount, 1}}},
      {paths_.plugins, {{Reload::Plugins, 1}}},
      {paths_.pluginSupport,
       {{Reload::TimeMachine, 1}, {Reload::StartupDisk, 2}, {Reload::Plugins, 3}, {Reload::Volumes, 4}}},
      {paths_.localInfo, {{Reload::Volumes, 1}}},
      {paths_.volumes, {{Reload::Volumes, 1}}},
      {paths_.utilities, {}},
  };
  double date = 100;
  for (const Case& given : cases) {
    ++date;
    for (const auto& [file, seen] : monitor_.lastChangedDates()) setDate(file, date);
    reloads_.clear();
    deliver({given.directory});
    EXPECT_EQ(reloads_, given.told) << given.directory;
  }
}

TEST_F(DirectoryMonitorTest, WhatIsNotReadAgainIsNotToldOf) {
  setDate(paths_.updateStatus, 100);
  deliver({paths_.updaterSupport});
  ASSERT_EQ(reloads_.size(), 1U);
  deliver({paths_.updaterSupport, paths_.systemConfiguration});
  EXPECT_EQ(reloads_.size(), 1U);
}

TEST_F(DirectoryMonitorTest, WhereEveryFileIsNewerADirectoryStillCallsNoReloadButItsOwn) {
  const std::pair<std::string, TabCalls> cases[] = {
      {paths_.updaterSupport, {"configuration.updateLastUpdateTime"}},
      {paths_.clientData, {"configuration.updateLastRunTime"}},
      {paths_.installFolder, {"pane.refreshClientSettings", "configuration.refresh", "plugins.refresh"}},
      {paths_.systemConfiguration, {"options.refreshAutomountDisk"}},
      {paths_.plugins, {"plugins.refresh"}},
      {paths_.pluginSupport,
       {"options.refreshTimeMachine", "options.refreshDiskFree", "plugins.refresh",
        "options.refreshVolumes"}},
      {paths_.localInfo, {"options.refreshVolumes"}},
      {paths_.volumes, {"options.refreshVolumes"}},
      {paths_.utilities, {}},
  };
  double date = 100;
  for (const auto& [directory, calls] : cases) {
    ++date;
    for (const auto& [file, seen] : monitor_.lastChangedDates()) setDate(file, date);
    deliver({directory});
    EXPECT_EQ(calls_, calls) << directory;
  }
}

TEST_F(DirectoryMonitorTest, AFileWhoseDateHasNotGrownCausesNoReload) {
  setDate(paths_.updateStatus, 100);
  deliver({paths_.updaterSupport});
  ASSERT_EQ(calls_.size(), 1U);
  deliver({paths_.updaterSupport});
  EXPECT_THAT(calls_, IsEmpty()) << "the same date";
  setDate(paths_.updateStatus, 99);
  deliver({paths_.updaterSupport});
  EXPECT_THAT(calls_, IsEmpty()) << "a date that went back";
  setDate(paths_.updateStatus, 100.001);
  deliver({paths_.updaterSupport});
  EXPECT_EQ(calls_.size(), 1U);
}

TEST_F(DirectoryMonitorTest, DatesBefore1970AreNeverNewerAndDatesInTheFutureAre) {
  setDate(paths_.updateStatus, -1);
  deliver({paths_.updaterSupport});
  EXPECT_THAT(calls_, IsEmpty());
  setDate(paths_.updateStatus, 4e9);
  deliver({paths_.updaterSupport});
  EXPECT_EQ(calls_.size(), 1U);
}

TEST_F(DirectoryMonitorTest, AFileDatedInTheFutureHidesChangesUntilTheirDatesPassItsOwn) {
  setDate(paths_.updateStatus, 4e9);
  deliver({paths_.updaterSupport});
  ASSERT_EQ(calls_.size(), 1U);
  setDate(paths_.updateStatus, 2e9);  // the clock was set right
  deliver({paths_.updaterSupport});
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(monitor_.lastChangedDates().at(paths_.updateStatus).secondsSince1970, 4e9);
  setDate(paths_.updateStatus, 4e9 + 1);
  deliver({paths_.updaterSupport});
  EXPECT_EQ(calls_.size(), 1U);
}

TEST_F(DirectoryMonitorTest, ADateThatIsNoNumberIsNeverNewer) {
  setDate(paths_.updateStatus, std::numeric_limits<double>::quiet_NaN());
  deliver({paths_.updaterSupport});
  EXPECT_THAT(calls_, IsEmpty());
  setDate(paths_.updateStatus, 100);
  deliver({paths_.updaterSupport});
  EXPECT_EQ(calls_.size(), 1U);
}

TEST_F(DirectoryMonitorTest, PathsThatNameNoWatchedDirectoryAreIgnored) {
  setDate(paths_.clientSettings, 100);
  deliver({"", "/", ".", "..", "/../..", "Library/Corvane", paths_.installFolder + "X",
           paths_.installFolder + std::string("\0", 1), paths_.plugins + "/\xff\xfe", paths_.volumes + "/.",
           paths_.updaterSupport + "/../UpdaterSupport/x"});
  EXPECT_THAT(calls_, ElementsAre("options.refreshVolumes")) << "only the folder of the volumes is named";
}

TEST_F(DirectoryMonitorTest, AVeryLargeBatchIsHandledAsOne) {
  std::vector<std::string> directories(65536, paths_.plugins + "/deep");
  for (std::size_t i = 0; i < directories.size(); ++i) directories[i] += std::to_string(i);
  directories.push_back(paths_.plugins);
  deliver(directories);
  EXPECT_THAT(calls_, ElementsAre("plugins.refresh"));
}

TEST_F(DirectoryMonitorTest, ARemovedTimeMachineFileIsShownAndOtherRemovedFilesAreNot) {
  deliver({paths_.updaterSupport, paths_.clientData, paths_.installFolder, paths_.systemConfiguration,
           paths_.localInfo});
  EXPECT_THAT(calls_, IsEmpty());
  deliver({paths_.pluginSupport});
  EXPECT_THAT(calls_, ElementsAre("options.refreshTimeMachine", "plugins.refresh"));
  EXPECT_EQ(monitor_.lastChangedDates().at(paths_.timeMachineSettings).secondsSince1970, 0);
}

TEST_F(DirectoryMonitorTest, ATimeMachineFileThatWasGoneForAWhileIsNewerOnlyWithALaterDate) {
  setDate(paths_.timeMachineSettings, 100);
  deliver({paths_.pluginSupport});
  platform_.files.dates.erase(paths_.timeMachineSettings);
  deliver({paths_.pluginSupport});
  ASSERT_THAT(calls_, ElementsAre("options.refreshTimeMachine", "plugins.refresh"));
  setDate(paths_.timeMachineSettings, 100);
  deliver({paths_.pluginSupport});
  EXPECT_THAT(calls_, ElementsAre("plugins.refresh")) << "nothing was stored while it was gone";
}

TEST_F(DirectoryMonitorTest, AnUnchangedTimeMachineFileIsNotReloaded) {
  setDate(paths_.timeMachineSettings, 100);
  deliver({paths_.pluginSupport});
  EXPECT_THAT(calls_, ElementsAre("options.refreshTimeMachine", "plugins.refresh"));
  deliver({paths_.pluginSupport});
  EXPECT_THAT(calls_, ElementsAre("plugins.refresh"));
}

TEST_F(DirectoryMonitorTest, TheFirstOfTwoDirectoriesTakesTheChangeOfTheClientSettings) {
  setDate(paths_.clientSettings, 100);
  deliver({paths_.installFolder, paths_.clientData});
  EXPECT_THAT(calls_, ElementsAre("configuration.updateLastRunTime"))
      << "whatever their order in the batch: no header, no plug-ins";
}

TEST_F(DirectoryMonitorTest, OneBatchCallsEachReactionOnceAndInOrder) {
  setDate(paths_.updateStatus, 100);
  setDate(paths_.clientSettings, 100);
  setDate(paths_.diskJournal, 100);
  setDate(paths_.autoDiskMount, 100);
  setDate(paths_.timeMachineSettings, 100);
  setDate(paths_.rootCapacitySettings, 100);
  setDate(paths_.volumesSettings, 100);
  deliver({paths_.volumes, paths_.pluginSupport, paths_.plugins, paths_.systemConfiguration,
           paths_.installFolder, paths_.localInfo, paths_.updaterSupport, paths_.plugins});
  EXPECT_THAT(calls_, ElementsAre("configuration.updateLastUpdateTime", "pane.refreshClientSettings",
                                  "configuration.refresh", "options.refreshAutomountDisk",
                                  "options.refreshTimeMachine", "options.refreshDiskFree", "plugins.refresh",
                                  "options.refreshVolumes"));
}

TEST_F(DirectoryMonitorTest, WithoutPluginSupportThePluginsAreRefreshedBeforeTheVolumes) {
  setDate(paths_.diskJournal, 100);
  deliver({paths_.localInfo, paths_.plugins});
  EXPECT_THAT(calls_, ElementsAre("plugins.refresh", "options.refreshVolumes"));
}

TEST_F(DirectoryMonitorTest, PathsAreStandardizedBeforeTheyAreCompared) {
  deliver({paths_.volumes + "/"});
  EXPECT_THAT(calls_, ElementsAre("options.refreshVolumes"));
  deliver({paths_.volumes + "/./x/.."});
  EXPECT_THAT(calls_, ElementsAre("options.refreshVolumes"));
}

TEST_F(DirectoryMonitorTest, AFileThatVanishesDuringItsReactionIsLoggedAndCountsFromTheBeginningAgain) {
  setDate(paths_.clientSettings, 100);
  whileReacting_ = [this] {
    platform_.files.dates[paths_.clientSettings] = {std::nullopt, "No such file or directory"};
  };
  deliver({paths_.installFolder});
  EXPECT_THAT(platform_.log.lines, ElementsAre("Couldn't get modification date of " + paths_.clientSettings +
                                               ": No such file or directory"));
  EXPECT_EQ(monitor_.lastChangedDates().at(paths_.clientSettings).secondsSince1970, 0);
}

TEST_F(DirectoryMonitorTest, TheDateIsStoredAfterTheReaction) {
  setDate(paths_.clientSettings, 100);
  double duringTheReaction = -1;
  whileReacting_ = [&] {
    duringTheReaction = monitor_.lastChangedDates().at(paths_.clientSettings).secondsSince1970;
  };
  deliver({paths_.installFolder});
  EXPECT_EQ(duringTheReaction, 0);
  EXPECT_EQ(monitor_.lastChangedDates().at(paths_.clientSettings).secondsSince1970, 100);
}

TEST_F(DirectoryMonitorTest, AChangeDuringTheReactionIsReloadedWithTheNextBatch) {
  setDate(paths_.clientSettings, 100);
  whileReacting_ = [this] { setDate(paths_.clientSettings, 200); };
  deliver({paths_.installFolder});
  whileReacting_ = nullptr;
  deliver({paths_.installFolder});
  EXPECT_THAT(calls_, ElementsAre("pane.refreshClientSettings", "configuration.refresh", "plugins.refresh"));
}

}  // namespace
}  // namespace corvane::test
