// An administrator's session with the whole pane: a Mac's volume on this machine, which belongs to root,
// opened by an ordinary user, the lock opened through the real polkit, something changed on every tab, and
// every file compared byte for byte with what a Mac would have written.
#include <array>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "AdministratorFixture.h"
#include "WholePane.h"
#include "plugins/PluginsTabView.h"
#include "support/Patience.h"

namespace corvane {
namespace {

using namespace test::administrator;
using test::MacVolume;
using test::PolkitMachine;
using test::WholePane;
using ::testing::IsEmpty;
using Texts = std::vector<std::string>;

void enter(TextField& field, const std::string& text) {
  EXPECT_TRUE(field.enabled());
  EXPECT_TRUE(field.typeText(text));
  field.endEditing();
}

class Administrator : public testing::Test {
 protected:
  PolkitMachine machine;
};

/// What the administrator does, tab by tab.
class Session {
 public:
  Session(const MacVolume& volume, const std::string& helper)
      : volume_(volume), pane(volume.root(), helper), options(pane.assembly.optionsView()) {}

  void editConfiguration() {
    ConfigurationTabView& view = pane.assembly.configurationView();
    enter(view.clientGroupTextField, "R&D <lab>");
    enter(view.runIntervalTextField, "4");
  }

  void editVolumes() {
    pane.assembly.view().tabView.selectTabViewItemAtIndex(1);
    ASSERT_EQ(options.volumesTable.numberOfRows(), 3);
    options.volumesTable.clickRow(0);
    options.monitorPresenceCheckbox.click();
    enter(options.monitorPresenceThresholdTextField, "15");
    options.monitorUsageCheckbox.click();
    enter(options.monitorUsageThresholdTextField, "80");
  }

  void editWarnings() {
    options.timeMachineWarningCheckbox.click();
    enter(options.timeMachineInactiveTextField, "21");
    options.advancedButton.click();
    enter(options.manuallyTriggerTextField, "5");
    enter(options.timeOfDayTextField, "7");
    options.amPmButton.choose(1);
    options.timeMachineRemovalWarning.click();
    options.sheetOkButton.click();
    enter(options.bootVolumeFullTextField, "85");
    options.automountCheckbox.click();
  }

  void openPluginsTab() {
    TabView& tabs = pane.assembly.view().tabView;
    tabs.selectTabViewItemAtIndex(2);
    pane.dialogs.endSheet(kAlertFirstButtonReturn);
    ASSERT_EQ(tabs.indexOfSelectedItem(), 2);
    outline.expandItem({}, true);
    ASSERT_EQ(outline.childrenOfItem(plugin()).size(), std::size(kOptions));
  }

  void editPlugin() {
    clickCell(option(0));
    edit(value(1), PropertyList::integer(2));
    edit(value(2), PropertyList::string("7"));
    edit(value(3), PropertyList::string("https://intern.example.com/?a=1&b=2"));
    clickCell(value(4));
    pane.dialogs.chosenPaths = {volume_ / "/Users/admin/hosts.txt"};
    clickCell(value(5));
    edit(value(6), PropertyList::string("s3cr&t"));
    outline.clickCell(plugin(), outline.columns()[0]);  // switches it off
  }

  [[nodiscard]] std::string shownPassword() {
    const PreparedCell prepared = outline.preparedCell(outline.columns()[1], value(6));
    const auto* cell = std::get_if<SecureTextFieldCell>(prepared.cell.get());
    return cell != nullptr ? cell->text : "(no such cell)";
  }

  void validate() {
    const std::size_t before = pane.dialogs.sheets.size();
    clickCell(value(7));
    ASSERT_EQ(pane.dialogs.sheets.size(), before + 1);
    EXPECT_EQ(pane.dialogs.sheets.back().alert.messageText, "Plugin Validation Succeeded");
    EXPECT_EQ(pane.dialogs.sheets.back().alert.informativeText,
              "uid 0, arguments --verbose --test-mode, mask 0022");
    pane.dialogs.endSheet(kAlertFirstButtonReturn);
  }

  void closeLock() {
    const auto helperEnds = test::watchProcess(test::onlyChild());
    ASSERT_TRUE(helperEnds);
    pane.closeLock();
    EXPECT_TRUE(test::readableSoon(helperEnds.get())) << "the helper outlives the lock";
    EXPECT_TRUE(pane.runLoop.runUntil(test::hasNoChild, test::kHangSeconds));
  }

  /// The same acts with the lock closed.
  void tryToEditLocked() {
    for (const Control* control : std::initializer_list<const Control*>{
             &pane.assembly.configurationView().clientGroupTextField,
             &pane.assembly.configurationView().runIntervalTextField, &options.monitorPresenceCheckbox,
             &options.monitorPresenceThresholdTextField, &options.timeMachineWarningCheckbox,
             &options.advancedButton, &options.automountCheckbox, &outline}) {
      EXPECT_FALSE(control->enabled());
    }
    options.timeMachineWarningCheckbox.click();
    options.monitorPresenceCheckbox.click();
    clickCell(option(0));
    edit(value(3), PropertyList::string("locked"));
  }

 private:
  OutlineItem plugin() { return outline.childrenOfItem({}).at(0); }
  OutlineItem option(std::size_t index) { return outline.childrenOfItem(plugin()).at(index); }
  OutlineItem value(std::size_t index) { return outline.childrenOfItem(option(index)).at(0); }
  void clickCell(const OutlineItem& item) { outline.clickCell(item, outline.columns()[1]); }
  void edit(const OutlineItem& item, const PropertyList& value) {
    outline.editCell(item, outline.columns()[1], value);
  }
  const MacVolume& volume_;

 public:
  WholePane pane;
  OptionsTabView& options;
  OutlineView& outline = pane.assembly.pluginsView().pluginsTable;
};

std::vector<Expected> filesAfterTheSession() {
  return {{kClientSettings, kClientSettingsAfter, "0:0 644"},
          {kVolumes, kVolumesAfter, "0:80 644"},
          {kTimeMachine, kTimeMachineAfter, "0:0 644"},
          {kRootCapacity, kRootCapacityAfter, "0:0 644"},
          {kAutoDiskMount, kAutoDiskMountAfter, "0:0 644"},
          {kPluginSettings, kPluginSettingsAfter, "0:0 644"},
          {kPluginStorage, kPluginStorageAfter, "0:0 644"},  // reset when the lock was opened
          {kRootHomeStorage, kRootHomeStorageAfter, "0:0 644"},
          // What the pane only reads.
          {kDefinition, pluginDefinition(), "0:0 644"},
          {kProgram, std::string(kPluginProgram), "0:0 755"},
          {kUpdateStatus, kUpdateStatusContents, "0:0 644"},
          {kJournal, kDiskJournal, "0:0 644"}};
}

void expectFolders(const MacVolume& volume) {
  const std::array<std::array<const char*, 2>, 7> folders = {
      {{"/private/tmp", "0:0 1777"},
       {"/private/var/root", "0:0 700"},
       {"/private/var/root/Library", "0:0 755"},
       {"/private/var/root/Library/Preferences", "0:0 755"},
       {"/Library/Corvane", "0:0 755"},
       {"/Library/Corvane/PluginSupport", "0:0 755"},
       {"/var", "0:0 777"}}};
  for (const auto& [path, rights] : folders) EXPECT_EQ(volume.rights(path), rights) << path;
  // The copy of what only root can read stays, for its user alone; of the writes nothing is left.
  Texts staged;
  for (const auto& entry : std::filesystem::directory_iterator(volume / "/private/tmp")) {
    staged.push_back(entry.path().filename());
  }
  EXPECT_EQ(staged, Texts{"read-check_web.plist"});
  EXPECT_EQ(volume.rights("/private/tmp/read-check_web.plist"),
            std::to_string(PolkitMachine::kUser) + ":0 600");
}

TEST_F(Administrator, ChangesSomethingOnEveryTabOfAMacsVolume) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const MacVolume volume(machine.base() / "Macintosh HD's copy");
  layOutClient(volume);
  machine.asUser([&] {
    ::umask(0077);
    Session session(volume, machine.helper());
    session.tryToEditLocked();
    ASSERT_TRUE(session.pane.openLock());
    session.editConfiguration();
    session.editVolumes();
    session.editWarnings();
    session.openPluginsTab();
    session.editPlugin();
    EXPECT_EQ(session.shownPassword(), "s3cr&t");
    session.validate();
    session.closeLock();
    session.tryToEditLocked();
    EXPECT_THAT(session.pane.log.lines, IsEmpty());
    EXPECT_EQ(session.pane.dialogs.sheets.size(), 2U) << "the caution and the validation";
    EXPECT_THAT(session.pane.dialogs.modalAlerts, IsEmpty());
  });
  expectFiles(volume, filesAfterTheSession());
  expectFolders(volume);
}

#ifdef WINDOW_SESSION_PATH
TEST_F(Administrator, ChangesSettingsOfAMacsVolumeInTheWindow) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const MacVolume volume(machine.base() / "Macintosh HD");
  layOutClient(volume);
  // Beside the helper, where an installed pane finds it.
  const std::string window = machine.base() / "opt/window_session";
  std::filesystem::copy_file(WINDOW_SESSION_PATH, window);
  const std::string runtime = machine.base() / "runtime";
  std::filesystem::create_directory(runtime);
  ASSERT_EQ(::chown(runtime.c_str(), PolkitMachine::kUser, PolkitMachine::kUser), 0);
  ASSERT_EQ(::chmod(runtime.c_str(), 0700), 0);
  const std::string runtimeVariable = "XDG_RUNTIME_DIR=" + runtime;
  machine.asUser([&] {
    const char* const arguments[] = {window.c_str(), volume.root().c_str(), nullptr};
    const char* const environment[] = {"QT_QPA_PLATFORM=offscreen", "LANG=C.UTF-8", "HOME=/nonexistent",
                                       runtimeVariable.c_str(), nullptr};
    ::execve(window.c_str(), const_cast<char**>(arguments), const_cast<char**>(environment));
    ADD_FAILURE() << "the program with the window does not start";
  });
  expectFiles(volume, filesAfterTheWindowsSession());
  EXPECT_TRUE(std::filesystem::is_empty(volume / "/private/tmp"));
}

#endif

}  // namespace
}  // namespace corvane
