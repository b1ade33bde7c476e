// The command line beside the open window of the same client: both show the same, and each shows what the
// other has changed. What the window shows is read from its widgets.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "GuiFixture.h"
#include "Person.h"
#include "cli/RunningCtl.h"
#include "support/DemoClient.h"
#include "widgets/LabelButton.h"

namespace corvane::test {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kBesideTheWindow =
    "corvanectl: Another pane is open on /Library/Corvane; where both change a file, what was written last "
    "counts\n";

class BesideTheCommandLine : public GuiTest {
 protected:
  void SetUp() override {}  // the demo lays the client out
  void openPane() {
    open(demo.root);
    openLock();
    person = std::make_unique<MousePerson>(window());
    person->chooseTab(2);
    person->press("button Continue");
  }

  [[nodiscard]] Ended ctl(Words words) const {
    words.insert(words.begin(), {"--root", demo.root});
    return RunningCtl(words).end();
  }
  [[nodiscard]] Json json(Words words) const {
    words.insert(words.begin(), "--json");
    const Ended ended = ctl(words);
    EXPECT_EQ(ended.status, 0) << ended.errors;
    return Json::parse(ended.output, nullptr, false);
  }
  void set(const Words& words) const {
    const Ended ended = ctl(words);
    EXPECT_EQ(ended.status, 0) << testing::PrintToString(words) << ended.errors;
    EXPECT_EQ(ended.errors, kBesideTheWindow) << "that the window is open is said";
  }

  // What the window shows, in the words of the command line.
  [[nodiscard]] static Json number(const QString& text) {
    return text.isEmpty() ? Json() : Json(text.toInt());
  }
  [[nodiscard]] Json number(const char* field) { return number(widget<QLineEdit>(field).text()); }
  [[nodiscard]] Json state(const char* box) { return widget<QCheckBox>(box).isChecked(); }
  [[nodiscard]] Json settings() {
    return {{"run-interval", number("runIntervalTextField")},
            {"group", widget<QLineEdit>("clientGroupTextField").text().toStdString()},
            {"startup-disk.warn", state("bootVolumeWarningCheckbox")},
            {"startup-disk.percent", number("bootVolumeFullTextField")},
            {"time-machine.warn", state("timeMachineWarningCheckbox")},
            {"time-machine.days", number("timeMachineInactiveTextField")},
            {"automount", state("automountCheckbox")}};
  }
  /// The other settings, which are shown in a sheet.
  [[nodiscard]] Json settingsInSheet() {
    const QWidget& shown = *sheet();
    return {{"time-machine.backup-days", number(find<QLineEdit>(shown, "manuallyTriggerTextField").text())},
            {"time-machine.backup-hour", number(find<QLineEdit>(shown, "timeOfDayTextField").text())},
            {"time-machine.backup-half", find<QComboBox>(shown, "amPmButton").currentText().toStdString()},
            {"time-machine.removal-warn", find<QCheckBox>(shown, "timeMachineRemovalWarning").isChecked()}};
  }
  [[nodiscard]] std::vector<std::string> volumes() {
    std::vector<std::string> rows;
    const QAbstractItemModel& model = *widget<QTableView>("volumesTable").model();
    for (int row = 0; row < model.rowCount(); ++row)
      rows.push_back(model.index(row, 0).data().toString().toStdString());
    return rows;
  }
  /// The value of an option, from the row and those below it.
  [[nodiscard]] static Json valueIn(const QModelIndex& option, const std::string& type) {
    const auto isOn = [](const QModelIndex& row) {
      return row.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    };
    const QModelIndex parent = option.siblingAtColumn(0);
    std::vector<QModelIndex> rows;
    for (int row = 0; row < option.model()->rowCount(parent); ++row)
      rows.push_back(option.model()->index(row, 1, parent));
    const auto textOf = [](const QModelIndex& row) { return row.data().toString().trimmed().toStdString(); };
    if (type == "Checkbox") return isOn(option);
    if (type == "PluginValidation" || type == "DisplayOnly") return {};
    if (type == "Checkboxes") {
      Json names = Json::object();
      for (const QModelIndex& row : rows)
        if (row.data(Qt::CheckStateRole).isValid()) names[textOf(row)] = isOn(row);
      return names;
    }
    if (type == "FileArray" || type == "FolderArray") {
      Json entries = Json::array();
      for (const QModelIndex& row : rows)
        if (textOf(row).starts_with('/')) entries.push_back(textOf(row));
      return entries;
    }
    if (rows.empty()) return {};
    if (type == "NumberPicker") return number(rows.front().data().toString());
    if (type == "PasswordField") return textOf(rows.front()).starts_with("•") ? "********" : "";
    if (type == "PopUpMenu" && textOf(rows.front()).empty()) return {};
    return textOf(rows.front());
  }
  /// The plug-ins of the tree as `plugins show` has them; of their options type and name are taken from
  /// there.
  [[nodiscard]] Json plugins(const Json& told) {
    const QAbstractItemModel& model = *widget<qt::OutlineTree>("pluginsTable").model();
    Json all = told;
    if (static_cast<std::size_t>(model.rowCount()) != told.size()) return {};
    for (int row = 0; row < model.rowCount(); ++row) {
      const QModelIndex plugin = model.index(row, 0);
      Json& shown = all[static_cast<std::size_t>(row)];
      shown["title"] = plugin.siblingAtColumn(1).data().toString().trimmed().toStdString();
      shown["enabled"] = plugin.data(Qt::CheckStateRole).toInt() == Qt::Checked;
      if (static_cast<std::size_t>(model.rowCount(plugin)) != shown["options"].size()) return {};
      for (int place = 0; place < model.rowCount(plugin); ++place) {
        Json& option = shown["options"][static_cast<std::size_t>(place)];
        const Json value = valueIn(model.index(place, 1, plugin), option["type"]);
        // A field without a text shows what belongs there.
        if (option["value"] != "") option["value"] = value;
      }
    }
    return all;
  }

  /// Everything that both show is the same, once the window has heard of the last change.
  void expectSame() {
    Json told = json({"get"}).at("settings");
    for (const char* inSheet : {"time-machine.backup-days", "time-machine.backup-hour",
                                "time-machine.backup-half", "time-machine.removal-warn"})
      told.erase(inSheet);
    EXPECT_TRUE(eventually([&] { return settings() == told; })) << settings() << "\n" << told;
    const Json shown = json({"plugins", "show"}).at("plugins");
    EXPECT_GT(shown.size(), 0U);
    EXPECT_TRUE(eventually([&] { return plugins(shown) == shown; }));
    const Json seen = plugins(shown);
    for (std::size_t i = 0; i < std::min(seen.size(), shown.size()); ++i) EXPECT_EQ(seen[i], shown[i]);
    std::vector<std::string> names;
    const Json listed = json({"volumes"}).at("volumes");
    for (const Json& volume : listed) {
      const bool isPresent = volume.at("present");
      const bool isDuplicate = volume.at("duplicate");
      names.push_back(volume.at("name").get<std::string>() +
                      (isDuplicate ? isPresent ? " (Duplicate)" : " (Duplicate, Missing)"
                       : isPresent ? ""
                                   : " (Missing)"));
    }
    EXPECT_TRUE(eventually([&] { return volumes() == names; }))
        << testing::PrintToString(volumes()) << testing::PrintToString(names);
  }

  DemoClient demo{"0"};
  std::unique_ptr<Person> person;
};

TEST_F(BesideTheCommandLine, BothShowTheSameOfTheSameClient) {
  openPane();
  expectSame();
  const Json status = json({"status"});
  EXPECT_EQ(status.at("version"), widget<qt::LabelButton>("clientVersionButton").text().toStdString());
  EXPECT_EQ(status.at("greeting"), widget<qt::LabelButton>("greetingButton").text().toStdString());
  EXPECT_EQ(status.at("support"), widget<qt::LabelButton>("urlButton").text().toStdString());
  EXPECT_EQ(status.at("lastRun"), widget<QLabel>("lastRunClientField").text().toStdString());
  EXPECT_EQ(status.at("lastUpdateCheck"), widget<QLabel>("lastRunUpdaterField").text().toStdString());
  EXPECT_EQ(status.at("running"), !widget("runClientButton").isEnabled());

  person->chooseTab(1);
  person->press("advancedButton");
  const Json told = json({"get"}).at("settings");
  const Json inSheet = settingsInSheet();
  for (const auto& [name, value] : inSheet.items()) EXPECT_EQ(told.at(name), value) << name;
}

TEST_F(BesideTheCommandLine, TheWindowShowsWhatTheCommandLineHasSet) {
  std::filesystem::create_directories(demo.root + "/etc");
  for (const char* file : {"/etc/hosts", "/etc/ntp.conf"}) std::ofstream(demo.root + file) << "text";
  openPane();
  const Json before = json({"plugins", "show"});
  set({"set", "run-interval", "4", "group", "Sales 2", "startup-disk.warn", "off", "startup-disk.percent",
       "81"});
  set({"set", "time-machine.warn", "off", "time-machine.days", "9", "automount", "on"});
  set({"volumes", "purge", "Old Library"});
  set({"plugins", "enable", "check_printers"});
  // Each type that can be set.
  set({"plugins", "set", "check_web_sites", "Watch_Company_Site", "off"});
  set({"plugins", "set", "check_web_sites", "Site_Address", "intranet.example.com"});
  set({"plugins", "set", "check_web_sites", "Slow_After_Seconds", "7"});
  set({"plugins", "set", "check_web_sites", "Method", "Ask for the headers"});
  set({"plugins", "set", "check_services", "Services", "Backup agent=off", "sshd=on"});
  set({"plugins", "set", "check_file_server", "User", "backup"});
  set({"plugins", "set", "check_file_server", "Password", "pa55"});
  set({"plugins", "set", "check_files", "Configuration_File", "/etc/ntp.conf"});
  set({"plugins", "set", "check_files", "Log_Folder", "/etc"});
  set({"plugins", "add", "check_files", "Required_Files", "/etc/ntp.conf"});
  set({"plugins", "add", "check_files", "Empty_Folders", "/etc"});
  EXPECT_NE(json({"plugins", "show"}), before);
  expectSame();
}

TEST_F(BesideTheCommandLine, TheCommandLineShowsWhatWasSetInTheWindow) {
  openPane();
  person->actOn({"Printers"}, Spot::Tick);
  person->actOn({"Web Sites", "Watch the company web site"});
  person->fillCell({"Web Sites", "Address", 0}, "intranet.example.com");
  person->pickInCell({"Web Sites", "Seconds until a site counts as slow", 0}, "7");
  person->pickInCell({"Web Sites", "Method", 0}, "Ask for the headers");
  person->fillCell({"File Server", "User", 0}, "backup");
  person->chooseTab(0);
  person->fill("runIntervalTextField", "5");
  person->confirm();
  person->fill("clientGroupTextField", "Sales 2");
  person->confirm();
  person->chooseTab(1);
  person->press("bootVolumeWarningCheckbox");
  person->fill("timeMachineInactiveTextField", "14");
  person->confirm();
  person->press("automountCheckbox");
  person->selectRow("volumesTable", "Backup");
  person->fill("monitorUsageThresholdTextField", "44");
  person->confirm();

  expectSame();
  const Json told = json({"get"}).at("settings");
  EXPECT_EQ(told.at("run-interval"), 5);
  EXPECT_EQ(told.at("group"), "Sales 2");
  EXPECT_EQ(told.at("startup-disk.warn"), false);
  EXPECT_EQ(told.at("time-machine.days"), 14);
  EXPECT_EQ(told.at("automount"), true);
  const Json listed = json({"volumes"}).at("volumes");
  const auto backup =
      std::ranges::find(listed, Json("Backup"), [](const Json& each) { return each.at("name"); });
  ASSERT_NE(backup, listed.end());
  EXPECT_EQ(backup->at("usage.percent"), 44);
  EXPECT_EQ(json({"plugins", "show", "check_printers"}).at("plugins").at(0).at("enabled"), true);
  const Json web = json({"plugins", "show", "check_web_sites"}).at("plugins").at(0).at("options");
  const auto value = [&](const char* option) {
    return std::ranges::find(web, Json(option), [](const Json& each) { return each.at("option"); })
        ->at("value");
  };
  EXPECT_EQ(value("Watch_Company_Site"), false);
  EXPECT_EQ(value("Site_Address"), "intranet.example.com");
  EXPECT_EQ(value("Slow_After_Seconds"), 7);
  EXPECT_EQ(value("Request_Method"), "Ask for the headers");
}

}  // namespace
}  // namespace corvane::test
