// Removing an entry from a file or folder list: the question before it, and what can go wrong.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginLists.h"
#include "plugins/PluginListsFixture.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

constexpr int kRemove = 1000;
constexpr int kCancel = 1001;
constexpr const char* kRemovalFailed =
    "There was an error trying to remove the selected file/folder. Please reload the plugin and try again.";

class PluginListRemovalTest : public PluginListsFixture {
 protected:
  /// The cell whose removal waits for its confirmation.
  ButtonCell& clickedCell() { return std::get<ButtonCell>(*outline().selectedCell()); }
  void expectRemovalFailure(const std::string& reason) {
    EXPECT_EQ(platform.log.lines, Texts{reason});
    expectErrorSheet(kRemovalFailed);
    EXPECT_TRUE(pane.writes.empty());
  }
};

// Asking before a removal.

TEST_F(PluginListRemovalTest, ARemovalIsAskedForAndReturnCancels) {
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
  EXPECT_TRUE(sheet.alert.buttons[1].cancels && !sheet.alert.buttons[0].cancels);
}

TEST_F(PluginListRemovalTest, OnlyRemoveRemoves) {
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

TEST_F(PluginListRemovalTest, ARemovalIsAskedForAgainEachTime) {
  storeList({"/a", "/b"});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.dialogs.endSheet(kCancel);
  click(valueRow());
  ASSERT_EQ(platform.dialogs.sheets.size(), 2U);
  EXPECT_EQ(platform.dialogs.sheets[1].alert.messageText, "Please confirm removal.");
}

TEST_F(PluginListRemovalTest, ARemovalWithoutAClickedCellIsRefused) {
  const PluginPathChooser chooser(platform.dialogs, platform.paths);
  PluginAlerts alerts(platform.dialogs, platform.bundle);
  PluginStorage storage(platform.platform, platform.paths);
  PluginLists lists({outline(), controller->catalogue(), controller->tree(), storage, chooser, alerts,
                     platform.log, platform.texts});
  lists.removeFromFileFolderArray(outline());
  expectErrorSheet("The selected cell could not be removed. Please reload the plugins and try again.");
  EXPECT_TRUE(platform.log.lines.empty());
}

// Removing.

TEST_F(PluginListRemovalTest, ARemovalKeepsTheStoredOrderAndTakesOverTheStoredList) {
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

TEST_F(PluginListRemovalTest, AnEntryThatOccursTwiceIsRemovedTwice) {
  storeList({"/a", "/b", "/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/b"}));
}

TEST_F(PluginListRemovalTest, WhatIsNoTextStaysInTheList) {
  store(Dictionary::make({{kKey, Array::make({number(1), text("/a"), text("/b")})}}));
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored().value(kKey), Array::make({number(1), text("/b")}));
  EXPECT_EQ(textsBelow(optionRow()), Texts{"/b"});
}

TEST_F(PluginListRemovalTest, OnlyTheOneBlankOfTheTitleIsTakenAway) {
  storeList({" /a", "/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
}

TEST_F(PluginListRemovalTest, TheLastEntryLeavesAnEmptyList) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow(0));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({}));
  EXPECT_EQ(outline().childrenOfItem(optionRow()).size(), 0U);
}

TEST_F(PluginListRemovalTest, TwoRemovalsThatWaitForTheirSheetsRemoveTheLastClickedEntryOnce) {
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

TEST_F(PluginListRemovalTest, AnEntryWithoutTextCanNotBeRemoved) {
  storeList({""});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize removeTitle");
}

TEST_F(PluginListRemovalTest, ACellWithoutATitleCanNotBeRemoved) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  clickedCell().title = AttributedText();
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize removeTitle");
}

TEST_F(PluginListRemovalTest, ATitleOfOneCharacterBeyondTheBasicPlaneLeavesNoEntry) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  clickedCell().title = AttributedText("\xF0\x9F\x98\x80");
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot chop removeTitle");
}

TEST_F(PluginListRemovalTest, ARemovalWithoutASelectedRowFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  outline().deselectAll();
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize parent");
}

TEST_F(PluginListRemovalTest, ARemovalWithAPluginRowSelectedFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  outline().selectRow(0);
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize parent");
}

TEST_F(PluginListRemovalTest, ARemovalWithAnOptionRowSelectedFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  outline().selectRow(1);
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize destination");
}

TEST_F(PluginListRemovalTest, ARemovalFromAMissingFileFails) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  platform.remove(platform.paths.onDisk(kStorage));
  platform.dialogs.endSheet(kRemove);
  expectRemovalFailure("Cannot initialize dict");
  EXPECT_FALSE(existsOnClient(kStorage));
}

TEST_F(PluginListRemovalTest, ARemovalFromAFileWithoutTheListFails) {
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

TEST_F(PluginListRemovalTest, AFailedRemovalForgetsTheClickedCell) {
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

TEST_F(PluginListRemovalTest, TheSelectionAtConfirmationTellsTheList) {
  store(Dictionary::make({{kKey, texts({"/a", "/b"})}, {"Second", texts({"/a", "/c"})}}));
  addPlugin("check_x",
            options({option("FileArray"), with(option("FileArray"), "SettingStorageKey", text("Second"))}));
  awake();
  click(valueRow(0));
  outline().selectRow(outline().rowForItem(outline().childrenOfItem(optionRow(1)).at(1)));
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), Dictionary::make({{kKey, texts({"/a", "/b"})}, {"Second", texts({"/c"})}}));
}

TEST_F(PluginListRemovalTest, NothingIsRemovedWhenTheLockWasClosedMeanwhile) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  pane.setUnlocked(false);
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
  EXPECT_EQ(listInMemory(), texts({"/a"}));
}

TEST_F(PluginListRemovalTest, ASheetThatEndsAfterTheTabIsGoneDoesNothing) {
  storeList({"/a"});
  awakeWith(option("FileArray"));
  click(valueRow());
  controller.reset();
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored(), contentsWith({"/a"}));
}

}  // namespace
}  // namespace corvane
