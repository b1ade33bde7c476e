// An administrator's session from the first look to the removal of the client, in which every kind of control
// and of setting is used; lived through with the mouse and with the keyboard. What it leaves in the files is
// what the same session leaves in the Linux window.
#include <fstream>

#import "OpenedUrls.h"
#import "PaneFixture.h"
#import "Text.h"
#include "plugins/PluginKeys.h"
#include "support/StoryEnd.h"
#import "widgets/LockButton.h"
#import "widgets/OutlineTree.h"

namespace corvane::test {
namespace {

enum class Means { Mouse, Keyboard };

/// A row of the Plugins tab: a plug-in, one of its options, or a value row of that option.
struct TreeRow {
  const char* plugin;
  const char* option = nullptr;
  int value = -1;
};

class AppKitStory : public AppKitPaneTest, public ::testing::WithParamInterface<Means> {
 protected:
  AppKitStory() {
    for (const char* folder : {"/etc", "/private/var/log/Old Logs"})
      std::filesystem::create_directories(demo.root + folder);
    for (const char* file : {"/etc/hosts", "/etc/ntp.conf"}) std::ofstream(demo.root + file) << "text";
    end = std::make_unique<StoryEnd>(demo);
    openedUrls().clear();
  }

  void lookAround();
  void useConfiguration();
  void useVolumes();
  void useWarnings();
  void useTimeMachineSheet();
  void enterPlugins();
  void useSwitches();
  void useFields();
  void useFilesAndFolders();
  void runTest();
  void removeTheClient();

  // Acts with the means of the story.
  [[nodiscard]] static bool byMouse() { return GetParam() == Means::Mouse; }
  /// Goes on with the Tab key until the view has the keyboard.
  void tabTo(NSView* wanted) {
    constexpr int kOnceRound = 60;
    for (int step = 0; step < kOnceRound; ++step) {
      if (keyboardOwner([wanted window]) == wanted) return;
      test::press([wanted window], kTab);
    }
    ADD_FAILURE() << "the Tab key does not reach " << textOf(wanted) << " "
                  << [[[wanted class] description] UTF8String];
  }
  static NSView* keyboardOwner(NSWindow* window) {
    NSResponder* first = [window firstResponder];
    if (isTyping(window)) return static_cast<NSView*>([static_cast<NSText*>(first) delegate]);
    return [first isKindOfClass:[NSView class]] ? static_cast<NSView*>(first) : nil;
  }
  void use(const Control& control) {
    if (byMouse()) {
      press(control);
    } else {
      tabTo(view(control));
      test::press([view(control) window], " ");
    }
  }
  /// The mouse has them too; the keyboard has the box.
  void useWordsBeside(const Button& words, const Button& box) { use(byMouse() ? words : box); }
  void put(const TextField& field, const std::string& text) {
    if (byMouse()) {
      fill(field, text);
    } else {
      tabTo(view(field));
      type([view(field) window], text);  // the Tab key has selected what stood there
    }
  }
  void putAndConfirm(const TextField& field, const std::string& text) {
    put(field, text);
    test::press([view(field) window], kReturn);
  }
  void goToTab(int index) {
    if (byMouse()) {
      clickTab(index);
      return;
    }
    tabTo(view(paneView().tabView));
    while (shownTab() != index) {
      const int before = shownTab();
      test::press(window(), index > before ? kRight : kLeft);
      if (shownTab() == before) return;  // something stands before it
    }
  }
  /// Presses the button of an alert: with the keyboard, going to it.
  static Answer button(const char* title) {
    return [title](NSWindow* sheet) {
      NSButton* wanted = buttonTitled([sheet contentView], title);
      ASSERT_NE(wanted, nil) << textsIn([sheet contentView]);
      for (int step = 0; !byMouse() && step < 10 && [sheet firstResponder] != wanted; ++step)
        test::press(sheet, kTab);
      if (byMouse()) {
        click(wanted);
      } else {
        EXPECT_EQ([sheet firstResponder], wanted) << "the Tab key does not reach " << title;
        test::press(sheet, " ");
      }
    };
  }
  static void expectText(NSWindow* sheet, const char* text) {
    const std::string texts = textsIn([sheet contentView]);
    EXPECT_NE(texts.find(text), std::string::npos) << texts;
  }

  /// Goes with the arrow keys from row to row.
  template <typename Rows>
  void stepTo(const Rows& rows, int row) {
    for (int before = -2; rows.selectedRow() != row && rows.selectedRow() != before;) {
      before = rows.selectedRow();
      test::press(window(), before < row ? kDown : kUp);
    }
    EXPECT_EQ(rows.selectedRow(), row) << "the arrow keys do not reach the row";
  }

  /// What a write leads to comes a second late, and selects another row or fills the sheet anew, on purpose.
  /// It is over when a change that came later has made the plug-ins' rows anew.
  void waitForTheReloadAfterTheLastWrite() {
    const OutlineItem before = tree().itemAtRow(0);
    std::ofstream(demo.paths.pluginSupport + "/note.txt") << "changed";
    EXPECT_TRUE(eventually([&] { return tree().itemAtRow(0) != before; }));
  }

  // The rows of the Plugins tab.
  [[nodiscard]] OutlineView& tree() { return plugins().pluginsTable; }
  [[nodiscard]] CorvaneOutlineTree* treeView() { return view<CorvaneOutlineTree>(tree()); }
  [[nodiscard]] std::string firstLine(const OutlineItem& item) {
    const PreparedCell cell = tree().preparedCell(tree().columns()[1], item);
    std::string all;
    if (const auto* button = std::get_if<ButtonCell>(cell.cell.get())) all = button->title.text;
    if (const auto* styled = std::get_if<AttributedText>(&cell.value)) all = styled->text;
    all = all.substr(0, all.find('\n'));
    return all.substr(std::min(all.size(), all.find_first_not_of(' ')));
  }
  [[nodiscard]] OutlineItem childCalled(const OutlineItem& parent, const char* name) {
    for (const OutlineItem& child : tree().childrenOfItem(parent)) {
      if (firstLine(child) == name) return child;
    }
    ADD_FAILURE() << "there is no row " << name;
    return {};
  }
  /// Brings the row up, its plug-in opened, and answers with its number.
  int rowOf(const TreeRow& wanted) {
    waitForTheReloadAfterTheLastWrite();
    OutlineItem item = childCalled({}, wanted.plugin);
    if (wanted.option != nullptr) {
      if (!tree().isItemExpanded(item)) open(item);
      item = childCalled(item, wanted.option);
      if (wanted.value >= 0) item = tree().childOfItem(item, static_cast<std::size_t>(wanted.value));
    }
    const int row = tree().rowForItem(item);
    EXPECT_GE(row, 0) << wanted.plugin;
    [treeView() scrollRowToVisible:row];
    return row;
  }
  using AppKitPaneTest::open;
  void open(const OutlineItem& plugin) {
    const int row = tree().rowForItem(plugin);
    [treeView() scrollRowToVisible:row];
    if (byMouse()) {
      const NSRect triangle = [treeView() frameOfOutlineCellAtRow:row];
      click(treeView(), NSMakePoint(NSMidX(triangle), NSMidY(triangle)));
    } else {
      goDownTo(row);
      test::press(window(), kRight);
    }
  }
  void goDownTo(int row) {
    tabTo(treeView());
    stepTo(tree(), row);
  }
  /// `column` 0 is the check box of a plug-in.
  void actOn(const TreeRow& wanted, int column = 1) {
    const int row = rowOf(wanted);
    if (byMouse()) {
      const NSRect cell = [treeView() frameOfCellAtColumn:column row:row];
      click(treeView(), NSMakePoint(NSMinX(cell) + MIN(12, NSWidth(cell) / 2), NSMidY(cell)));
    } else {
      goDownTo(row);
      test::press(window(), " ");
    }
  }
  void fillCell(const TreeRow& wanted, const std::string& text) {
    actOn(wanted);
    ASSERT_TRUE(isTyping(window())) << wanted.option;
    type(window(), text);
    test::press(window(), kReturn);
  }
  /// A menu follows the real pointer, which posted events do not move: by its keys.
  void pickInCell(const TreeRow& wanted, int item) {
    const int row = rowOf(wanted);
    goDownTo(row);
    const CellReference cell = tree().preparedCell(tree().columns()[1], tree().itemAtRow(row)).cell;
    const int now = std::get<PopUpButtonCell>(*cell).selectedIndex;
    test::press(window(), " ");
    for (int step = now; step != item; step += now < item ? 1 : -1)
      test::press(window(), now < item ? kDown : kUp);
    test::press(window(), kReturn);
  }
  /// Goes to the folder of the path, types its name and presses Return.
  static Answer choice(const std::filesystem::path& path) {
    return [path](NSWindow* window) {
      auto* panel = static_cast<NSOpenPanel*>(window);
      ASSERT_TRUE([panel isKindOfClass:[NSOpenPanel class]]);
      picture(panel, "open panel");
      [panel setDirectory:appkit::toNSString(path.parent_path().string())];
      if (isTyping(panel)) [static_cast<NSText*>([panel firstResponder]) selectAll:nil];
      type(panel, path.filename().string());
      test::press(panel, kReturn);
      // A folder is entered; what is chosen then is the folder itself.
      if (std::filesystem::is_directory(path)) [buttonTitled([panel contentView], "OK") performClick:nil];
    };
  }
  void choose(const TreeRow& wanted, const std::string& path) {
    EXPECT_TRUE(answering([&] { actOn(wanted); }, choice(path))) << wanted.option;
  }

  std::unique_ptr<StoryEnd> end;
};

void AppKitStory::lookAround() {
  use(paneView().urlButton);
  press(paneView().quorlenIconButton, NSControlKeyMask);
  EXPECT_EQ(openedUrls(), (std::vector<std::string>{"mailto:support@example.com",
                                                    "https://demo.www.example.com/computers/48213"}));
  goToTab(1);
  EXPECT_EQ(shownTab(), 1);
  goToTab(0);
}

void AppKitStory::useConfiguration() {
  use(paneView().authView);
  EXPECT_TRUE([view<CorvaneLockButton>(paneView().authView) isOpen]);
  putAndConfirm(configuration().runIntervalTextField, "5");
  EXPECT_EQ(stored(demo.paths.clientSettings, "Run_Interval"), number(5));
  putAndConfirm(configuration().clientGroupTextField, "Sales 2");
  EXPECT_EQ(stored(demo.paths.clientSettings, "ClientGroup"), text("Sales 2"));
  const auto logs = [this](const char* line) {
    return eventually([&] { return demo.log().find(line) != std::string::npos; });
  };
  use(configuration().runClientButton);
  EXPECT_TRUE(logs("RunClient for prefpane-client: ended"));
  use(configuration().updateClientNowButton);
  EXPECT_TRUE(logs("RunUpdater for prefpane-updater: ended"));
  EXPECT_TRUE(answering([&] { use(configuration().uninstallButton); }, button("Cancel")));
  waitForSheets();
  EXPECT_TRUE(std::filesystem::exists(demo.paths.runClient));
}

void AppKitStory::useVolumes() {
  goToTab(1);
  auto* table = view<NSTableView>(options().volumesTable);
  const auto select = [&](const std::string& name) {
    id source = [table dataSource];
    for (int row = 0; row < options().volumesTable.numberOfRows(); ++row) {
      id value = [source tableView:table
          objectValueForTableColumn:[[table tableColumns] objectAtIndex:0]
                                row:row];
      if (appkit::fromNSString([value string]).rfind(name, 0) != 0) continue;
      [table scrollRowToVisible:row];
      if (byMouse()) {
        click(table, NSMakePoint(20, NSMidY([table rectOfRow:row])));
      } else {
        tabTo(table);
        stepTo(options().volumesTable, row);
      }
      EXPECT_EQ(options().volumesTable.selectedRow(), row);
      return;
    }
    FAIL() << "no volume is called " << name;
  };
  const auto volume = [this](const char* path) {
    const Array volumes = DemoClient::plist(demo.paths.volumesSettings).asArray();
    for (std::size_t i = 0; i < volumes.size(); ++i) {
      if (volumes.at(i).asDictionary().value("VolumePath") == text(path)) return volumes.at(i);
    }
    return PropertyList();
  };
  // A threshold is stored with each key.
  for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{
           [&] { use(options().monitorPresenceCheckbox); },
           [&] { put(options().monitorPresenceThresholdTextField, "5"); },
           [&] { use(options().monitorUsageCheckbox); },
           [&] { put(options().monitorUsageThresholdTextField, "7"); }}) {
    select("Backup");
    act();
    waitForTheReloadAfterTheLastWrite();
  }
  EXPECT_EQ(volume("/Volumes/Backup"), PropertyList(Dictionary::make({{"VolumeName", text("Backup")},
                                                                      {"VolumePath", text("/Volumes/Backup")},
                                                                      {"MonitorPresence", flag(false)},
                                                                      {"PresenceThreshold", number(5)},
                                                                      {"MonitorUsage", flag(false)},
                                                                      {"UsageThreshold", number(7)},
                                                                      {"Owner", text("Backup team")}})));
  use(options().showAllVolumeTypesButton);
  EXPECT_EQ(textOf(view(options().showAllVolumeTypesButton)), "Hide System Volumes");
  ASSERT_TRUE(volume("/Volumes/Old Library"));
  select("Old Library");
  use(options().purgeButton);
  EXPECT_FALSE(volume("/Volumes/Old Library"));
}

void AppKitStory::useWarnings() {
  use(options().bootVolumeWarningCheckbox);
  EXPECT_EQ(stored(demo.paths.rootCapacitySettings, "Plugin_Enabled"), flag(false));
  useWordsBeside(options().bootVolumeWarningTrailingButton, options().bootVolumeWarningCheckbox);
  putAndConfirm(options().bootVolumeFullTextField, "80");
  use(options().timeMachineWarningCheckbox);
  EXPECT_EQ(stored(demo.paths.timeMachineSettings, "Plugin_Enabled"), flag(false));
  useWordsBeside(options().timeMachineWarningTrailingButton, options().timeMachineWarningCheckbox);
  putAndConfirm(options().timeMachineInactiveTextField, "14");
  use(options().automountCheckbox);
  EXPECT_EQ(stored(demo.paths.autoDiskMount, "AutomountDisksWithoutUserLogin"), flag(true));
}

void AppKitStory::useTimeMachineSheet() {
  waitForTheReloadAfterTheLastWrite();
  EXPECT_TRUE(answering([&] { use(options().advancedButton); },
                        [&](NSWindow* sheet) {
                          put(options().manuallyTriggerTextField, "4");
                          put(options().timeOfDayTextField, "7");
                          tabTo(view(options().amPmButton));
                          if (options().amPmButton.indexOfSelectedItem() != 0) {
                            test::press(sheet, " ");
                            test::press(sheet, kUp);
                            test::press(sheet, " ");
                          }
                          EXPECT_EQ(options().amPmButton.indexOfSelectedItem(), 0);
                          use(options().timeMachineRemovalWarning);
                          use(options().sheetOkButton);
                        }));
  waitForSheets();
  EXPECT_EQ(stored(demo.paths.timeMachineSettings, "Days_Until_Manual_Run"), number(4));
  EXPECT_TRUE(answering([&] { use(options().advancedButton); },
                        [&](NSWindow*) {
                          put(options().manuallyTriggerTextField, "9");
                          use(options().sheetCancelButton);
                        }));
  waitForSheets();
}

void AppKitStory::enterPlugins() {
  EXPECT_TRUE(answering([&] { goToTab(2); }, button("Cancel")));
  waitForSheets();
  EXPECT_EQ(shownTab(), 1);
  EXPECT_TRUE(answering([&] { goToTab(2); }, button("Continue")));
  waitForSheets();
  EXPECT_EQ(shownTab(), 2);
  picture(window(), "plugins");
}

void AppKitStory::useSwitches() {
  actOn({"Printers"}, 0);
  actOn({"Web Sites", "Watch the company web site"});
  picture(window(), "web sites");
  actOn({"Services", "Services that must run", 3});
  picture(window(), "services");
  actOn({"Services", "Further reading", 0});
  EXPECT_EQ(openedUrls().back(), "http://www.example.com/checks/reading");
}

void AppKitStory::useFields() {
  fillCell({"Web Sites", "Address", 0}, "intranet.example.com");
  fillCell({"Web Sites", "Seconds until a site counts as slow", 0}, "7");
  pickInCell({"Web Sites", "Method", 0}, 1);
  picture(window(), "fields");
  fillCell({"File Server", "User", 0}, "backup");
  fillCell({"File Server", "Password", 0}, "pa55 & word");
  picture(window(), "file server");
}

void AppKitStory::useFilesAndFolders() {
  const std::string etc = demo.root + "/etc/ntp.conf";
  const std::string logs = demo.root + "/private/var/log/Old Logs";
  choose({"Files and Folders", "Configuration file", 0}, etc);
  choose({"Files and Folders", "Files that must exist", 0}, etc);
  EXPECT_TRUE(answering(
      [&] {
        actOn({"Files and Folders", "Files that must exist", 0});
      },
      {choice(etc), [](NSWindow* sheet) {
         expectText(sheet, "/etc/ntp.conf already exists in the list.");
         button("Ok")(sheet);
       }}));
  waitForSheets();
  EXPECT_TRUE(answering(
      [&] {
        actOn({"Files and Folders", "Files that must exist", 1});
      },
      [](NSWindow* sheet) {
        expectText(sheet, "This will remove the entry from the array. Are you sure?");
        button("Remove")(sheet);
      }));
  waitForSheets();
  choose({"Files and Folders", "Log folder", 0}, logs);
  choose({"Files and Folders", "Folders that must be empty", 0}, logs);
  picture(window(), "lists");
}

void AppKitStory::runTest() {
  pickInCell({"Test Mode", "What the test does", 0}, 0);
  EXPECT_TRUE(answering(
      [&] {
        actOn({"Test Mode", "Run the test", 0});
      },
      [](NSWindow* sheet) {
        expectText(sheet, "Plugin Validation Succeeded");
        expectText(sheet, "All settings valid");
        picture(sheet, "test succeeded");
        button("OK")(sheet);
      }));
  waitForSheets();
}

void AppKitStory::removeTheClient() {
  goToTab(0);
  EXPECT_TRUE(answering([&] { use(configuration().uninstallButton); },
                        {[](NSWindow* sheet) {
                           // It never has the keyboard.
                           click(buttonTitled([sheet contentView], "Allow client to report removal."));
                           button("Uninstall")(sheet);
                         },
                         [](NSWindow* sheet) {
                           expectText(sheet, "Monitoring Client Removed");
                           button("OK")(sheet);
                         }}));
  waitForSheets();
  EXPECT_NE(demo.log().find("RunClient for prefpane-remove: removed without a report"), std::string::npos);
  EXPECT_FALSE([view<CorvaneLockButton>(paneView().authView) isOpen]);
  EXPECT_TRUE(answering([&] { goToTab(1); }, button("OK")));
  waitForSheets();
  EXPECT_EQ(shownTab(), 0);
}

TEST_P(AppKitStory, EverythingIsUsedAndTheFilesEndAsAfterTheSameSessionInTheLinuxWindow) {
  open();
  lookAround();
  useConfiguration();
  useVolumes();
  useWarnings();
  useTimeMachineSheet();
  enterPlugins();
  useSwitches();
  useFields();
  useFilesAndFolders();
  runTest();
  end->expect();
  removeTheClient();
}

INSTANTIATE_TEST_SUITE_P(By, AppKitStory, ::testing::Values(Means::Mouse, Means::Keyboard),
                         [](const auto& story) {
                           return story.param == Means::Mouse ? "Mouse" : "Keyboard";
                         });

}  // namespace
}  // namespace corvane::test
