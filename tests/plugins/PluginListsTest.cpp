// Adding a chosen path to a file or folder list.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginListsFixture.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class PluginListsTest : public PluginListsFixture {
 protected:
  void choose(const std::string& clientPath) {
    platform.dialogs.chosenPaths = {platform.paths.onDisk(clientPath)};
  }
};

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

TEST_F(PluginListsTest, WhatIsNoTextInAListIsNotShownAndStaysInTheFile) {
  for (const char* type : {"FileArray", "FolderArray"}) {
    const Array mixed = Array::make({text("/b"), number(1), text("Add a new entry"), flag(true), text("/a")});
    store(Dictionary::make({{kKey, mixed}}));
    addPlugin("check_x", options({option(type)}));
    awake();
    EXPECT_EQ(textsBelow(optionRow()), (Texts{"/b", "Add a new entry", "/a"})) << type;
    choose("/c");
    click(valueRow(1));
    EXPECT_EQ(stored().value(kKey), Array::make({text("Add a new entry"), number(1), flag(true), text("/a"),
                                                 text("/b"), text("/c")}))
        << type;
    EXPECT_EQ(textsBelow(optionRow()), (Texts{"Add a new entry", "/a", "/b", "/c"})) << type;
  }
}

}  // namespace
}  // namespace corvane
