#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginLists.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using test::kKey;
using test::kStorage;
using test::number;
using test::option;
using test::options;
using test::PluginsTabFixture;
using test::text;
using test::texts;
using test::with;
using Texts = std::vector<std::string>;

constexpr int kRemove = 1000;
constexpr int kCancel = 1001;
constexpr const char* kRemovalFailed =
    "There was an error trying to remove the selected file/folder. Please reload the plugin and try again.";

class PluginListsTest : public PluginsTabFixture {
 protected:
  void storeList(std::initializer_list<const char*> entries) {
    store(Dictionary::make({{kKey, texts(entries)}, {"Other", number(1)}}));
  }
  static Dictionary contentsWith(std::initializer_list<const char*> entries) {
    return Dictionary::make({{kKey, texts(entries)}, {"Other", number(1)}});
  }
  void choose(const std::string& clientPath) {
    platform.dialogs.chosenPaths = {platform.paths.onDisk(clientPath)};
  }
  Array listInMemory() { return optionRow().object().asDictionary().array("FileFolderArray"); }
  const AlertDescription& lastSheet() { return platform.dialogs.sheets.back().alert; }
  /// The cell whose removal waits for its confirmation.
  ButtonCell& clickedCell() { return std::get<ButtonCell>(*outline().selectedCell()); }
  void expectErrorSheet(const std::string& message) {
    ASSERT_FALSE(platform.dialogs.sheets.empty());
    const auto& sheet = platform.dialogs.sheets.back();
    EXPECT_EQ(sheet.window, SheetWindow::PaneWindow);
    EXPECT_EQ(sheet.alert.style, AlertStyle::Warning);
    EXPECT_EQ(sheet.alert.messageText, "An error has occurred");
    EXPECT_EQ(sheet.alert.informativeText, message);
    EXPECT_EQ(sheet.alert.iconPath, "/bundle/Resources/Corvane.icns");
    ASSERT_EQ(sheet.alert.buttons.size(), 1U);
    EXPECT_EQ(sheet.alert.buttons[0].title, "Ok");
    EXPECT_EQ(sheet.alert.buttons[0].keyEquivalent, "\r");
  }
  void expectRemovalFailure(const std::string& reason) {
    EXPECT_EQ(platform.log.lines, Texts{reason});
    expectErrorSheet(kRemovalFailed);
    EXPECT_TRUE(pane.writes.empty());
  }
};

// Adding.

TEST_F(PluginListsTest, AnAddedFileIsSortedIntoTheListWithTheAddRowInFront) {
  storeList({"/tmp/c", "Add a new entry"});
  awakeWith(option("FileArray"));
  countReloads();
  choose("/tmp/b");
  click(valueRow(1));
  ASSERT_EQ(platform.dialogs.openPanels.size(), 1U);
  EXPECT_TRUE(platform.dialogs.openPanels[0].canChooseFiles);
  EXPECT_FALSE(platform.dialogs.openPanels[0].canChooseDirectories);
  EXPECT_FALSE(platform.dialogs.openPanels[0].allowsMultipleSelection);
  EXPECT_EQ(platform.dialogs.openPanels[0].directory, "") << "the add row names no folder";
  EXPECT_EQ(stored(), contentsWith({"Add a new entry", "/tmp/b", "/tmp/c"}));
  EXPECT_EQ(listInMemory(), texts({"Add a new entry", "/tmp/b", "/tmp/c"}));
  EXPECT_EQ(wholeReloads, 1);
  EXPECT_EQ(textsBelow(optionRow()), (Texts{"Add a new entry", "/tmp/b", "/tmp/c"}));
}

TEST_F(PluginListsTest, AnAddedFolderIsSortedIntoTheListWithTheAddRowInFront) {
  storeList({"/tmp/c", "Add a new entry"});
  awakeWith(option("FolderArray"));
  choose("/tmp/b");
  click(valueRow(1));
  ASSERT_EQ(platform.dialogs.openPanels.size(), 1U);
  EXPECT_FALSE(platform.dialogs.openPanels[0].canChooseFiles);
  EXPECT_TRUE(platform.dialogs.openPanels[0].canChooseDirectories);
  EXPECT_EQ(platform.dialogs.openPanels[0].directory, "");
  EXPECT_EQ(stored(), contentsWith({"Add a new entry", "/tmp/b", "/tmp/c"}));
  EXPECT_EQ(listInMemory(), texts({"Add a new entry", "/tmp/b", "/tmp/c"}));
}

TEST_F(PluginListsTest, ACancelledPanelAddsNothing) {
  storeList({"Add a new entry"});
  for (const char* type : {"FileArray", "FolderArray"}) {
    addPlugin("check_x", options({option(type)}));
    awake();
    click(valueRow());
  }
  EXPECT_EQ(platform.dialogs.openPanels.size(), 2U);
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginListsTest, AnOtherAddRowIsSortedAmongThePathsAndStaysAnAddRow) {
  storeList({"Add a new folder", "/z"});
  awakeWith(option("FolderArray"));
  choose("/a");
  click(valueRow(0));
  EXPECT_EQ(stored(), contentsWith({"Add a new entry", "/a", "/z", "Add a new folder"}));
  EXPECT_EQ(cell<ButtonCell>(valueRow(3)).image.typeCode, "fldr");
}

TEST_F(PluginListsTest, APathThatIsInTheListAlreadyIsRefusedWithAMessage) {
  storeList({"Add a new entry", "/tmp/b"});
  for (const char* type : {"FileArray", "FolderArray"}) {
    addPlugin("check_x", options({option(type)}));
    awake();
    choose("/tmp/b");
    click(valueRow(0));
    expectErrorSheet("/tmp/b already exists in the list.");
  }
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginListsTest, PathsAreComparedExactly) {
  storeList({"Add a new entry", "/tmp/B"});
  awakeWith(option("FileArray"));
  choose("/tmp/b");
  click(valueRow(0));
  EXPECT_EQ(stored(), contentsWith({"Add a new entry", "/tmp/B", "/tmp/b"}));
}

TEST_F(PluginListsTest, AFileIsAddedToTheLoadedListAndAFolderToTheStoredOne) {
  for (const char* type : {"FileArray", "FolderArray"}) {
    storeList({"Add a new entry", "/loaded"});
    addPlugin("check_x", options({option(type)}));
    awake();
    storeList({"Add a new entry", "/stored"});
    choose("/new");
    click(valueRow(0));
    const char* kept = std::string_view(type) == "FileArray" ? "/loaded" : "/new";
    const char* last = std::string_view(type) == "FileArray" ? "/new" : "/stored";
    EXPECT_EQ(stored(), contentsWith({"Add a new entry", kept, last})) << type;
    EXPECT_EQ(listInMemory(), texts({"Add a new entry", kept, last})) << type;
  }
}

TEST_F(PluginListsTest, WithoutTheStoredKeyAFileIsAddedAndAFolderIsNot) {
  for (const char* type : {"FileArray", "FolderArray"}) {
    storeList({"Add a new entry"});
    addPlugin("check_x", options({option(type)}));
    awake();
    store(Dictionary::make({{"Other", number(1)}}));
    pane.writes.clear();
    choose("/new");
    click(valueRow(0));
    EXPECT_EQ(pane.writes.size(), std::string_view(type) == "FileArray" ? 1U : 0U) << type;
  }
  EXPECT_TRUE(platform.dialogs.sheets.empty());
}

TEST_F(PluginListsTest, AMissingFileIsCreatedForAnAddedFileWhereThatIsAllowed) {
  storeList({"Add a new entry"});
  awakeWith(option("FileArray"));
  platform.remove(platform.paths.onDisk(kStorage));
  choose("/new");
  click(valueRow(0));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, texts({"Add a new entry", "/new"})}}));
}

TEST_F(PluginListsTest, AMissingFileElsewhereDropsTheAddition) {
  for (const char* type : {"FileArray", "FolderArray"}) {
    const char* path = "/tmp/x.plist";
    store(Dictionary::make({{kKey, texts({"Add a new entry"})}}), path);
    addPlugin("check_x", options({with(option(type), "SettingStoragePath", text(path))}));
    awake();
    platform.remove(platform.paths.onDisk(path));
    platform.log.lines.clear();
    choose("/new");
    click(valueRow(0));
    EXPECT_EQ(platform.log.lines, Texts{"Cannot create file, not in the Corvane Directory."});
  }
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(platform.dialogs.sheets.empty());
}

TEST_F(PluginListsTest, AStoredListThatHoldsMoreThanTextsIsLeftAlone) {
  Array mixed = texts({"Add a new entry"});
  storeList({"Add a new entry"});
  awakeWith(option("FolderArray"));
  mixed.append(number(1));
  store(Dictionary::make({{kKey, mixed}}));
  choose("/new");
  click(valueRow(0));
  EXPECT_TRUE(pane.writes.empty());
}

// Asking before a removal.

TEST_F(PluginListsTest, ARemovalIsAskedForAndReturnCancels) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  ASSERT_EQ(platform.dialogs.sheets.size(), 1U);
  const auto& sheet = platform.dialogs.sheets[0];
  EXPECT_EQ(sheet.window, SheetWindow::PaneWindow);
  EXPECT_EQ(sheet.alert.style, AlertStyle::Critical);
  EXPECT_EQ(sheet.alert.messageText, "Please confirm removal.");
  EXPECT_EQ(sheet.alert.informativeText, "This will remove the entry from the array. Are you sure?");
  EXPECT_EQ(sheet.alert.iconPath, "/bundle/Resources/Corvane.icns");
  ASSERT_EQ(sheet.alert.buttons.size(), 2U);
  EXPECT_EQ(sheet.alert.buttons[0].title, "Remove");
  EXPECT_EQ(sheet.alert.buttons[0].keyEquivalent, "");
  EXPECT_EQ(sheet.alert.buttons[1].title, "Cancel");
  EXPECT_EQ(sheet.alert.buttons[1].keyEquivalent, "\r");
}

TEST_F(PluginListsTest, OnlyRemoveRemoves) {
  storeList({"/a", "/b"});
  awakeWith(option("FileArray"));
  for (const int code : {kCancel, 0, 1, -1000, 1002}) {
    click(valueRow());
    platform.dialogs.endSheet(code);
    EXPECT_TRUE(pane.writes.empty()) << code;
  }
  click(valueRow());
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/b"}));
}

TEST_F(PluginListsTest, ARemovalIsAskedForAgainEachTime) {
  storeList({"/a", "/b"});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.dialogs.endSheet(kCancel);
  click(valueRow());
  ASSERT_EQ(platform.dialogs.sheets.size(), 2U);
  EXPECT_EQ(platform.dialogs.sheets[1].alert.messageText, "Please confirm removal.");
}

TEST_F(PluginListsTest, ARemovalWithoutAClickedCellIsRefused) {
  const PluginPathChooser chooser(platform.dialogs, platform.paths);
  PluginAlerts alerts(platform.dialogs, platform.bundle);
  PluginStorage storage(platform.platform, platform.paths);
  PluginLists lists({outline(), controller->tree(), storage, chooser, alerts, platform.log});
  lists.removeFromFileFolderArray(outline());
  expectErrorSheet("The selected cell could not be removed. Please reload the plugins and try again.");
  EXPECT_TRUE(platform.log.lines.empty());
}

// Removing.

TEST_F(PluginListsTest, ARemovalKeepsTheStoredOrderAndTakesOverTheStoredList) {
  storeList({"/c", "Add a new entry", "/a", "/b"});
  awakeWith(option("FolderArray"));
  countReloads();
  click(valueRow(2));
  storeList({"/z", "/c", "/a", "Add a new entry", "/b"});
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/z", "/c", "Add a new entry", "/b"}));
  EXPECT_EQ(listInMemory(), texts({"/z", "/c", "Add a new entry", "/b"}));
  EXPECT_EQ(wholeReloads, 1);
  EXPECT_EQ(textsBelow(optionRow()), (Texts{"/z", "/c", "Add a new entry", "/b"}));
  EXPECT_EQ(platform.dialogs.sheets.size(), 1U);
}

TEST_F(PluginListsTest, AnEntryThatOccursTwiceIsRemovedTwice) {
  storeList({"/a", "/b", "/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/b"}));
}

TEST_F(PluginListsTest, OnlyTheOneBlankOfTheTitleIsTakenAway) {
  storeList({" /a", "/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
}

TEST_F(PluginListsTest, TheLastEntryLeavesAnEmptyList) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({}));
  EXPECT_EQ(outline().childrenOfItem(optionRow()).size(), 0U);
}

TEST_F(PluginListsTest, TwoRemovalsThatWaitForTheirSheetsRemoveTheLastClickedEntryOnce) {
  storeList({"/a", "/b"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  click(valueRow(1));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
  pane.writes.clear();
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("removeFileFolderArrayCell == nil)");
}

TEST_F(PluginListsTest, AnEntryWithoutTextCanNotBeRemoved) {
  storeList({""});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize removeTitle");
}

TEST_F(PluginListsTest, ACellWithoutATitleCanNotBeRemoved) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  clickedCell().title = AttributedText();
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize removeTitle");
}

TEST_F(PluginListsTest, ATitleOfOneCharacterBeyondTheBasicPlaneLeavesNoEntry) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  clickedCell().title = AttributedText("\xF0\x9F\x98\x80");
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot chop removeTitle");
}

TEST_F(PluginListsTest, ARemovalWithoutASelectedRowFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  controller->refresh();  // nothing of the former tree survives
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize parent");
}

TEST_F(PluginListsTest, ARemovalWithAPluginRowSelectedFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  outline().selectRow(0);
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize parent");
}

TEST_F(PluginListsTest, ARemovalWithAnOptionRowSelectedFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  outline().selectRow(1);
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize destination");
}

TEST_F(PluginListsTest, ARemovalFromAMissingFileFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.remove(platform.paths.onDisk(kStorage));
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize dict");
  EXPECT_FALSE(existsOnClient(kStorage));
}

TEST_F(PluginListsTest, ARemovalFromAFileWithoutTheListFails) {
  for (const PropertyList& list : {PropertyList(), text("/a"), PropertyList(Dictionary::make())}) {
    storeList({"/a"});
    addPlugin("check_x", options({option("FileArray")}));
    awake();
    platform.log.lines.clear();
    click(valueRow());
    Dictionary contents = Dictionary::make();
    contents.set(kKey, list);
    store(contents);
    platform.dialogs.endSheet(kRemove);
    expectRemovalFailure("Cannot initialize list");
    platform.dialogs.endSheet(kRemove);  // dismissing the error does nothing further
  }
}

TEST_F(PluginListsTest, AFailedRemovalForgetsTheClickedCell) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  click(valueRow());
  clickedCell().title = AttributedText();
  platform.dialogs.endSheet(kRemove);
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(platform.log.lines,
            (Texts{"Cannot initialize removeTitle", "removeFileFolderArrayCell == nil)"}));
}

TEST_F(PluginListsTest, TheSelectionAtConfirmationTellsTheList) {
  store(Dictionary::make({{kKey, texts({"/a", "/b"})}, {"Second", texts({"/a", "/c"})}}));
  addPlugin("check_x",
            options({option("FileArray"), with(option("FileArray"), "SettingStorageKey", text("Second"))}));
  awake();
  click(valueRow(0));
  outline().selectRow(outline().rowForItem(outline().childrenOfItem(optionRow(1)).at(1)));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), Dictionary::make({{kKey, texts({"/a", "/b"})}, {"Second", texts({"/c"})}}));
}

TEST_F(PluginListsTest, NothingIsRemovedWhenTheLockWasClosedMeanwhile) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  pane.setUnlocked(false);
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
  EXPECT_EQ(listInMemory(), texts({"/a"}));
}

TEST_F(PluginListsTest, ASheetThatEndsAfterTheTabIsGoneDoesNothing) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  controller.reset();
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
}

}  // namespace
}  // namespace corvane
