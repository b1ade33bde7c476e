// An administrator's session from the first look to the removal of the client, in which every control of the
// window is used; lived through with the mouse, with the keyboard alone, and with assistive technology.
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <fstream>
#include <optional>
#include <set>

#include "InterfaceFile.h"
#include "StoryFixture.h"
#include "plugins/SettingTypes.h"
#include "support/StoryEnd.h"
#include "widgets/LabelButton.h"
#include "widgets/LockButton.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

class Story : public StoryTest {
 protected:
  void SetUp() override {
    StoryTest::SetUp();
    for (const char* folder : {"/etc", "/private/var/log/Old Logs"})
      std::filesystem::create_directories(demo.root + folder);
    for (const char* file : {"/etc/hosts", "/etc/ntp.conf"}) std::ofstream(demo.root + file) << "text";
    for (const std::string& path :
         {demo.paths.clientSettings, demo.paths.timeMachineSettings, demo.paths.rootCapacitySettings,
          settingsOf("check_printers"), settingsOf("check_web_sites"), settingsOf("check_services"),
          settingsOf("check_file_server"), settingsOf("check_files"), settingsOf("check_test_mode")}) {
      remember(path);
    }
    end.emplace(demo);
  }

  void lookAround();
  void openTheLock();
  void useConfiguration();
  void useVolumes();
  void useWarnings();
  void waitForTheReloadAfterTheLastWrite();
  void useTimeMachineSheet();
  void enterPlugins();
  void useSwitches();
  void useFields();
  void useFiles();
  void useFolders();
  void runTests();
  void removeTheClient();
  void expectThatNothingWasLeftOut();

  /// Acts on a value row and remembers which kind of setting that was.
  void use(const char* type, const TreeRow& row, Spot spot = Spot::Control) {
    usedTypes.insert(type);
    person->actOn(row, spot);
  }
  /// Acts on a row and chooses this entry in the open panel that comes.
  void choose(const char* type, const TreeRow& row, const char* entry) {
    usedTypes.insert(type);
    const bool seen = answerPanel<QFileDialog>([&] { person->actOn(row); },
                                               [&](QFileDialog& panel) {
                                                 picture("open panel");
                                                 person->chooseEntry(panel, entry);
                                               });
    EXPECT_TRUE(seen) << "no panel has opened for " << row.option;
  }
  /// The saved settings of a volume; empty when there are none.
  [[nodiscard]] PropertyList volume(const char* path) const {
    const Array volumes = readPlist(demo.paths.volumesSettings).asArray();
    for (std::size_t i = 0; i < volumes.size(); ++i) {
      if (volumes.at(i).asDictionary().value("VolumePath") == text(path)) return volumes.at(i);
    }
    return {};
  }
  [[nodiscard]] static Array list(std::initializer_list<const char*> entries) {
    Array array = Array::make();
    for (const char* entry : entries) array.append(text(entry));
    return array;
  }

  std::set<std::string> usedTypes;
  std::optional<StoryEnd> end;
};

void Story::lookAround() {
  picture("configuration locked");
  EXPECT_FALSE(widget("runClientButton").isEnabled());
  person->press("urlButton");
  picture("support link");
  person->press("quorlenIconButton", Qt::ControlModifier);
  EXPECT_EQ(openedUrls.list, (std::vector<std::string>{"mailto:support@example.com",
                                                       "https://demo.www.example.com/computers/48213"}));
  person->chooseTab(1);
  picture("options locked");
  person->chooseTab(0);
}

void Story::openTheLock() {
  person->press("authView");
  EXPECT_TRUE(widget<qt::LockButton>("authView").isOpen());
  EXPECT_TRUE(widget("runClientButton").isEnabled());
  picture("configuration unlocked");
}

void Story::useConfiguration() {
  person->fill("runIntervalTextField", "5");
  person->confirm();
  expectChanged(demo.paths.clientSettings, {{"Run_Interval", number(5)}});
  person->fill("clientGroupTextField", "Sales 2");
  picture("typing the group");
  person->confirm();
  expectChanged(demo.paths.clientSettings, {{"ClientGroup", text("Sales 2")}});
  const auto logs = [this](const char* line) {
    return eventually([&] { return demo.log().find(line) != std::string::npos; });
  };
  person->press("runClientButton");
  EXPECT_FALSE(widget("runClientButton").isEnabled());
  picture("client runs");
  EXPECT_TRUE(logs("RunClient for prefpane-client: ended"));
  person->press("updateClientNowButton");
  EXPECT_TRUE(logs("RunUpdater for prefpane-updater: ended"));
  person->press("uninstallButton");
  picture("uninstall");
  EXPECT_EQ(message(), QStringLiteral("Please confirm removal."));
  person->press("button Cancel");
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(std::filesystem::exists(demo.paths.runClient));
}

void Story::useVolumes() {
  person->chooseTab(1);
  picture("options");
  person->selectRow("volumesTable", "Backup");
  picture("volume selected");
  person->press("monitorPresenceCheckbox");
  person->fill("monitorPresenceThresholdTextField", "5");
  person->press("monitorUsageCheckbox");
  person->fill("monitorUsageThresholdTextField", "7");
  picture("volume changed");
  EXPECT_EQ(volume("/Volumes/Backup"), PropertyList(Dictionary::make({{"VolumeName", text("Backup")},
                                                                      {"VolumePath", text("/Volumes/Backup")},
                                                                      {"MonitorPresence", flag(false)},
                                                                      {"PresenceThreshold", number(5)},
                                                                      {"MonitorUsage", flag(false)},
                                                                      {"UsageThreshold", number(7)},
                                                                      {"Owner", text("Backup team")}})));
  person->press("showAllVolumeTypesButton");
  EXPECT_EQ(widget<QPushButton>("showAllVolumeTypesButton").text(), QStringLiteral("Hide System Volumes"));
  picture("system volumes");
  person->selectRow("volumesTable", "Pool");
  picture("long names");
  person->selectRow("volumesTable", "Archive");
  picture("duplicate volume");
  ASSERT_TRUE(volume("/Volumes/Old Library"));
  // A press of assistive technology takes a moment, and a reload selects the first volume, on purpose.
  waitForTheReloadAfterTheLastWrite();
  person->selectRow("volumesTable", "Old Library");
  picture("missing volume");
  person->press("purgeButton");
  EXPECT_FALSE(volume("/Volumes/Old Library"));
}

void Story::useWarnings() {
  person->press("bootVolumeWarningCheckbox");
  expectChanged(demo.paths.rootCapacitySettings, {{"Plugin_Enabled", flag(false)}});
  // The text beside it is for the mouse.
  person->press(GetParam() == Means::Mouse ? "bootVolumeWarningTrailingButton" : "bootVolumeWarningCheckbox");
  expectChanged(demo.paths.rootCapacitySettings, {{"Plugin_Enabled", flag(true)}});
  person->fill("bootVolumeFullTextField", "80");
  person->confirm();
  expectChanged(demo.paths.rootCapacitySettings, {{"Capacity_Threshold", number(80)}});
  person->press("timeMachineWarningCheckbox");
  expectChanged(demo.paths.timeMachineSettings, {{"Plugin_Enabled", flag(false)}});
  // The text beside it is for the mouse.
  person->press(GetParam() == Means::Mouse ? "timeMachineWarningTrailingButton"
                                           : "timeMachineWarningCheckbox");
  expectChanged(demo.paths.timeMachineSettings, {{"Plugin_Enabled", flag(true)}});
  person->fill("timeMachineInactiveTextField", "14");
  person->confirm();
  expectChanged(demo.paths.timeMachineSettings, {{"Days_Until_Warning", number(14)}});
  person->press("automountCheckbox");
  expectChanged(demo.paths.autoDiskMount, {{"AutomountDisksWithoutUserLogin", flag(true)}});
}

// The reload after the last write comes a second late and fills the sheet anew, on purpose. It is over when
// one that comes later has made the plug-ins' rows anew.
void Story::waitForTheReloadAfterTheLastWrite() {
  OutlineView& plugins = pane->assembly().pluginsView().pluginsTable;
  const OutlineItem before = plugins.itemAtRow(0);
  std::ofstream(demo.paths.pluginSupport + "/note.txt") << "changed";
  EXPECT_TRUE(eventually([&] { return plugins.rowForItem(before) < 0; }));
}

void Story::useTimeMachineSheet() {
  waitForTheReloadAfterTheLastWrite();
  person->press("advancedButton");
  ASSERT_NE(sheet(), nullptr);
  picture("time machine sheet");
  person->fill("manuallyTriggerTextField", "4");
  person->fill("timeOfDayTextField", "7");
  person->pick("amPmButton", "AM");
  person->press("timeMachineRemovalWarning");
  picture("time machine sheet changed");
  person->press("sheetOkButton");
  EXPECT_EQ(sheet(), nullptr);
  expectChanged(demo.paths.timeMachineSettings, {{"Manual_Run_Hour", text("7")},
                                                 {"Days_Until_Manual_Run", number(4)},
                                                 {"Enable_On_Removal", flag(true)}});
  person->press("advancedButton");
  person->fill("manuallyTriggerTextField", "9");
  person->press("sheetCancelButton");
  EXPECT_EQ(sheet(), nullptr);
  expectChanged(demo.paths.timeMachineSettings, {});
}

void Story::enterPlugins() {
  person->chooseTab(2);
  ASSERT_NE(sheet(), nullptr);
  picture("caution");
  person->press("button Cancel");
  EXPECT_EQ(window().tabs().shownTab(), 1);
  person->chooseTab(2);
  person->press("button Continue");
  EXPECT_EQ(window().tabs().shownTab(), 2);
  picture("plugins");
}

void Story::useSwitches() {
  person->actOn({"Printers"}, Spot::Tick);
  expectChanged(settingsOf("check_printers"), {{"Plugin_Enabled", flag(true)}});
  use("Checkbox", {"Web Sites", "Watch the company web site"});
  expectChanged(settingsOf("check_web_sites"), {{"Watch_Company_Site", flag(false)}});
  picture("web sites");
  use("Checkboxes", {"Services", "Services that must run", 3});
  expectChanged(settingsOf("check_services"), {{"Services", Dictionary::make({{"Backup agent", flag(false)},
                                                                              {"cupsd", flag(true)},
                                                                              {"ntpd", flag(true)},
                                                                              {"sshd", flag(true)}})}});
  picture("services");
  use("DisplayOnly", {"Services", "Further reading", 0});
  EXPECT_EQ(openedUrls.list.back(), "http://www.example.com/checks/reading");
}

void Story::useFields() {
  usedTypes.insert({"TextField", "UsernameField", "PasswordField", "NumberPicker", "PopUpMenu"});
  person->fillCell({"Web Sites", "Address", 0}, "intranet.example.com");
  expectChanged(settingsOf("check_web_sites"), {{"Site_Address", text("intranet.example.com")}});
  person->pickInCell({"Web Sites", "Seconds until a site counts as slow", 0}, "7");
  expectChanged(settingsOf("check_web_sites"), {{"Slow_After_Seconds", number(7)}});
  person->pickInCell({"Web Sites", "Method", 0}, "Ask for the headers");
  expectChanged(settingsOf("check_web_sites"), {{"Request_Method", number(1)}});
  picture("fields");
  const std::string ofRoot = demo.root + "/var/root/Library/Preferences/com.example.file_server_check.plist";
  person->fillCell({"File Server", "User", 0}, "backup");
  expectChanged(ofRoot, {{"User", text("backup")}});
  person->fillCell({"File Server", "Password", 0}, "pa55 & word");
  expectChanged(ofRoot, {{"Password", text("pa55 & word")}});
  picture("file server");
}

void Story::useFiles() {
  const TreeRow add{"Files and Folders", "Files that must exist", 0};
  const TreeRow hosts{"Files and Folders", "Files that must exist", 1};
  choose("FilePicker", {"Files and Folders", "Configuration file", 0}, "ntp.conf");
  expectChanged(settingsOf("check_files"), {{"Configuration_File", text("/etc/ntp.conf")}});
  // The panel opens where the last one was left.
  choose("FileArray", add, "ntp.conf");
  expectChanged(
      settingsOf("check_files"),
      {{"Required_Files", list({"Add a new entry", "/etc/hosts", "/etc/ntp.conf", "/etc/services"})}});
  choose("FileArray", add, "ntp.conf");
  ASSERT_NE(sheet(), nullptr);
  picture("already in the list");
  EXPECT_EQ(explanation(), QStringLiteral("/etc/ntp.conf already exists in the list."));
  person->press("button Ok");
  use("FileArray", hosts, Spot::Trash);
  ASSERT_NE(sheet(), nullptr);
  picture("remove an entry");
  EXPECT_EQ(explanation(), QStringLiteral("This will remove the entry from the array. Are you sure?"));
  person->press("button Remove");
  expectChanged(settingsOf("check_files"),
                {{"Required_Files", list({"Add a new entry", "/etc/ntp.conf", "/etc/services"})}});
}

void Story::useFolders() {
  choose("FolderPicker", {"Files and Folders", "Log folder", 0}, "Old Logs");
  expectChanged(settingsOf("check_files"), {{"Log_Folder", text("/private/var/log/Old Logs")}});
  choose("FolderArray", {"Files and Folders", "Folders that must be empty", 0}, "Old Logs");
  expectChanged(settingsOf("check_files"),
                {{"Empty_Folders", list({"Add a new entry", "/private/tmp/My Folder 🗂",
                                         "/private/var/log/Old Logs", "/Users/Shared/Drop Box"})}});
  picture("lists");
}

void Story::runTests() {
  const TreeRow outcome{"Test Mode", "What the test does", 0};
  const TreeRow test{"Test Mode", "Run the test", 0};
  person->pickInCell(outcome, "Hangs");
  expectChanged(settingsOf("check_test_mode"), {{"Outcome", number(7)}});
  const bool seen = answerPanel<QDialog>([&] { use("PluginValidation", test); },
                                         [&](QDialog& panel) {
                                           picture("test runs");
                                           person->cancelPanel(panel);
                                         });
  EXPECT_TRUE(seen) << "nothing says that the test runs";
  ASSERT_NE(sheet(), nullptr);
  picture("test failed");
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Failed"));
  person->press("button OK");
  person->pickInCell(outcome, "Succeeds");
  expectChanged(settingsOf("check_test_mode"), {{"Outcome", number(0)}});
  use("PluginValidation", test);
  ASSERT_NE(sheet(), nullptr);
  picture("test succeeded");
  EXPECT_EQ(message(), QStringLiteral("Plugin Validation Succeeded"));
  EXPECT_EQ(explanation(), QStringLiteral("All settings valid"));
  person->press("button OK");
}

void Story::removeTheClient() {
  person->chooseTab(0);
  person->press("uninstallButton");
  person->switchAccessory();
  EXPECT_TRUE(eventually([this] { return !find<QCheckBox>(*sheet(), "accessory").isChecked(); }));
  picture("uninstall without a report");
  person->press("button Uninstall");
  ASSERT_TRUE(eventually([this] { return sheet() != nullptr; }));
  picture("removed");
  EXPECT_EQ(message(), QStringLiteral("Monitoring Client Removed"));
  EXPECT_NE(demo.log().find("RunClient for prefpane-remove: removed without a report"), std::string::npos);
  person->press("button OK");
  picture("after the removal");
  EXPECT_FALSE(widget<qt::LockButton>("authView").isOpen());
  person->chooseTab(1);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Monitoring Client Removed"));
  person->press("button OK");
  EXPECT_EQ(window().tabs().shownTab(), 0);
}

/// Labels, and buttons that are labels here, take no acts.
bool takesActs(const qt::PaneWindow& window, const std::string& name, const std::string& kind) {
  for (const char* text :
       {"QLabel", "corvane::qt::BusyBar", "corvane::qt::FittedLabel", "corvane::qt::StatusLabel"}) {
    if (kind == text) return false;
  }
  if (kind != "corvane::qt::LabelButton") return true;
  return find(window, name.c_str()).focusPolicy() != Qt::NoFocus;
}

void Story::expectThatNothingWasLeftOut() {
  const bool byMouse = GetParam() == Means::Mouse;
  const std::set<std::string>& used = byMouse                          ? uses.clicked
                                      : GetParam() == Means::Assistive ? uses.assisted
                                                                       : uses.typedIn;
  for (const QString& file : interfaceFiles()) {
    if (file.contains(QStringLiteral("StartPage"))) continue;  // a window of its own, before any pane
    for (const auto& [name, kind] : widgetsOfInterfaceFile(file)) {
      if (!takesActs(window(), name, kind)) continue;
      EXPECT_TRUE(used.contains(name)) << name << " was never used";
    }
  }
  for (const char* button :
       {"button Cancel", "button Continue", "button Ok", "button OK", "button Remove", "button Uninstall"}) {
    EXPECT_TRUE(used.contains(button)) << button << " was never used";
  }
  for (const std::string_view type : setting_type::kAll) {
    EXPECT_TRUE(usedTypes.contains(std::string(type))) << "no " << type << " was ever used";
  }
  EXPECT_TRUE(byMouse || uses.clicked.empty()) << *uses.clicked.begin() << " was clicked";
}

TEST_P(Story, EveryControlIsUsedAndChangesWhatItStandsForAndNothingElse) {
  openPane();
  lookAround();
  openTheLock();
  useConfiguration();
  useVolumes();
  useWarnings();
  useTimeMachineSheet();
  enterPlugins();
  useSwitches();
  useFields();
  useFiles();
  useFolders();
  runTests();
  end->expect();
  removeTheClient();
  expectThatNothingWasLeftOut();
}

INSTANTIATE_TEST_SUITE_P(By, Story, ::testing::Values(Means::Mouse, Means::Keyboard, Means::Assistive),
                         [](const auto& story) { return ::testing::PrintToString(story.param); });

}  // namespace
}  // namespace corvane::test
