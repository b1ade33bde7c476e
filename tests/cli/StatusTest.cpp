// `status` and `volumes`: what the header, the dates and the list of the window show.
#include <string>

#include <gmock/gmock.h>

#include "Ctl.h"
#include "options/VolumeList.h"
#include "polkit/WholePane.h"

namespace corvane::test {
namespace {

using ::testing::HasSubstr;

class CtlStatus : public CtlTest {};

TEST_F(CtlStatus, TheStatusIsWhatTheWindowShows) {
  WholePane pane(demo.root, QLHELPER_PATH);
  const PaneView& view = pane.assembly.view();
  const Json status = json({"status"});
  EXPECT_EQ(status.at("root"), demo.root);
  EXPECT_EQ(status.at("installed"), true);
  EXPECT_EQ(status.at("version"), view.clientVersionButton.title());
  EXPECT_EQ(status.at("greeting"), view.greetingButton.title());
  EXPECT_EQ(status.at("support"), view.urlButton.title());
  EXPECT_EQ(status.at("lastRun"), pane.assembly.configurationView().lastRunClientField.stringValue());
  EXPECT_EQ(status.at("lastUpdateCheck"),
            pane.assembly.configurationView().lastRunUpdaterField.stringValue());
  EXPECT_EQ(status.at("running"), false);
  EXPECT_EQ(status.at("unreadable"), Json::array());
  EXPECT_EQ(status.at("journalDaemon"), true);
  int missing = 0;
  int duplicate = 0;
  const TableView& table = pane.assembly.optionsView().volumesTable;
  for (int row = 0; row < table.numberOfRows(); ++row) {
    const auto label = std::get<AttributedText>(table.objectValue(table.columns()[0], row)).text;
    missing += label.ends_with("Missing)") ? 1 : 0;
    duplicate += label.find(" (Duplicate") != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(status.at("volumes"),
            Json({{"all", table.numberOfRows()}, {"missing", missing}, {"duplicate", duplicate}}));
  EXPECT_GT(missing, 0);
  EXPECT_GT(duplicate, 0);
  EXPECT_EQ(status.at("plugins"), Json({{"all", 9}, {"disabled", 1}}));
  EXPECT_THAT(good({"status"}), HasSubstr("Version\tVersion 7.3.1\n"));
}

TEST_F(CtlStatus, ARunThatIsInProgressIsTold) {
  std::ofstream(demo.paths.errorLoggerPid) << "1\n";
  EXPECT_EQ(json({"status"}).at("running"), true);
}

TEST_F(CtlStatus, WhatCannotBeReadIsNamed) {
  std::ofstream(demo.paths.clientSettings) << "no property list";
  std::ofstream(demo.paths.timeMachineSettings) << "no property list";
  const Json status = json({"status"});
  EXPECT_EQ(status.at("unreadable"),
            Json({"/Library/Corvane/ClientSettings.plist",
                  "/Library/Corvane/PluginSupport/check_time_machine_settings.plist"}));
  EXPECT_THAT(good({"status"}), HasSubstr("Unreadable\t/Library/Corvane/ClientSettings.plist\n"));
}

TEST_F(CtlStatus, ARemovedClientIsAnAnswer) {
  std::filesystem::remove_all(demo.paths.installFolder);
  const Ended ended = run({"--json", "status"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(Json::parse(ended.output, nullptr, false).at("installed"), false);
  EXPECT_EQ(
      ended.errors,
      "corvanectl: Monitoring Client Error: The monitoring client may have been partially uninstalled\n");
}

class CtlVolumes : public CtlTest {
 protected:
  [[nodiscard]] Json volume(const std::string& path) {
    const Json volumes = json({"volumes"}).at("volumes");
    for (const Json& each : volumes)
      if (each.at("path") == path) return each;
    return {};
  }
};

TEST_F(CtlVolumes, TheListIsWhatTheWindowShowsRowByRow) {
  WholePane pane(demo.root, QLHELPER_PATH);
  OptionsTabView& view = pane.assembly.optionsView();
  const Json volumes = json({"volumes"}).at("volumes");
  ASSERT_EQ(volumes.size(), static_cast<std::size_t>(view.volumesTable.numberOfRows()));
  for (int row = 0; row < view.volumesTable.numberOfRows(); ++row) {
    const Json& told = volumes[static_cast<std::size_t>(row)];
    view.volumesTable.selectRow(row);
    const std::string suffix = told.at("duplicate") == true
                                   ? told.at("present") == true ? " (Duplicate)" : " (Duplicate, Missing)"
                               : told.at("present") == true ? ""
                                                            : " (Missing)";
    EXPECT_EQ(
        std::get<AttributedText>(view.volumesTable.objectValue(view.volumesTable.columns()[0], row)).text,
        told.at("name").get<std::string>() + suffix);
    EXPECT_EQ(told.at("path"), view.volumeOptionPathButton.title());
    EXPECT_EQ(told.at("absence.warn"), view.monitorPresenceCheckbox.state() != ButtonState::Off);
    EXPECT_EQ(told.at("usage.warn"), view.monitorUsageCheckbox.state() != ButtonState::Off);
    EXPECT_EQ(told.at("absence.minutes").dump(), view.monitorPresenceThresholdTextField.stringValue());
    EXPECT_EQ(told.at("usage.percent").dump(), view.monitorUsageThresholdTextField.stringValue());
  }
}

TEST_F(CtlVolumes, TheVolumesOfTheSystemAreShownWhenAskedFor) {
  EXPECT_GT(json({"volumes", "--all"}).at("volumes").size(), json({"volumes"}).at("volumes").size());
}

TEST_F(CtlVolumes, TheAlertsOfAVolumeAreChanged) {
  good({"volumes", "set", "Backup", "absence.warn", "off", "absence.minutes", "59", "usage.warn", "on",
        "usage.percent", "42"});
  const Json backup = volume("/Volumes/Backup");
  EXPECT_EQ(backup.at("absence.warn"), false);
  EXPECT_EQ(backup.at("absence.minutes"), 59);
  EXPECT_EQ(backup.at("usage.warn"), true);
  EXPECT_EQ(backup.at("usage.percent"), 42);
  good({"volumes", "set", "/Volumes/Backup", "usage.percent", "43"});
  EXPECT_EQ(volume("/Volumes/Backup").at("usage.percent"), 43);
}

TEST_F(CtlVolumes, WhatTheBoxDoesNotTakeIsRefused) {
  const auto before = files();
  refused({"volumes", "set", "Backup", "usage.warn", "on", "absence.minutes", "61"}, 65,
          "absence.minutes: \"61\" is refused: expected a whole number from 1 to 60");
  refused({"volumes", "set", "None", "usage.warn", "on"}, 65, "there is no volume \"None\"");
  refused({"volumes", "set", "Archive", "usage.warn", "on"}, 65,
          "more than one volume is called \"Archive\"; name its mount path: /Volumes/Archive, "
          "/Volumes/Archive 1");
  refused({"volumes", "set", "/Volumes/Archive", "usage.warn", "on"}, 65,
          "the alerts of \"/Volumes/Archive\" cannot be changed: it is a duplicate");
  refused({"volumes", "set", "Backup", "usage", "on"}, 65,
          "there is no setting \"usage\" of a volume, only absence.warn, absence.minutes, usage.warn, "
          "usage.percent");
  refused({"volumes", "purge", "Backup"}, 65, "\"Backup\" is mounted and stays in the list");
  EXPECT_EQ(files(), before);
}

TEST_F(CtlVolumes, AMissingVolumeIsForgotten) {
  ASSERT_EQ(volume("/Volumes/Archive").at("present"), false);
  good({"volumes", "purge", "/Volumes/Archive"});
  EXPECT_EQ(volume("/Volumes/Archive"), Json());
}

TEST_F(CtlVolumes, WithoutTheDaemonThereIsNoListAndTheReasonIsThatOfTheWindow) {
  std::filesystem::remove(demo.paths.diskJournalPid);
  const std::string line =
      "An error has been detected. Please contact support, mentioning \"ReasonCode 412\"";
  refused({"volumes"}, 69, line);
  refused({"volumes", "set", "Backup", "usage.warn", "on"}, 69, line);
  refused({"volumes", "purge", "Backup"}, 69, line);
}

}  // namespace
}  // namespace corvane::test
