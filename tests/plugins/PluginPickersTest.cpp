#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/BusyDialogs.h"
#include "plugins/PluginPickers.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;

class PluginPickersTest : public PluginsTabFixture {
 protected:
  std::string onDisk(const std::string& path) const { return platform.paths.onDisk(path); }
  const OpenPanelDescription& panel() { return platform.dialogs.openPanels.at(0); }
};

TEST_F(PluginPickersTest, AFilePickerStoresTheChosenFileAsTheClientKnowsIt) {
  store(Dictionary::make({{"Other", number(1)}, {kKey, text("/Users/Shared/old.txt")}}));
  awakeWith(option("FilePicker"));
  countReloads();
  platform.dialogs.chosenPaths = {onDisk("/Users/Shared/new.txt"), onDisk("/Users/Shared/ignored.txt")};
  click(valueRow());
  ASSERT_EQ(platform.dialogs.openPanels.size(), 1U);
  EXPECT_TRUE(panel().canChooseFiles);
  EXPECT_FALSE(panel().canChooseDirectories);
  EXPECT_FALSE(panel().allowsMultipleSelection);
  EXPECT_EQ(panel().directory, onDisk("/Users/Shared"));
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(pane.writes[0].path, onDisk(kStorage));
  EXPECT_EQ(pane.writes[0].values,
            Dictionary::make({{"Other", number(1)}, {kKey, text("/Users/Shared/new.txt")}}));
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{valueRow()});
  EXPECT_EQ(cell<ButtonCell>(valueRow()).title.text, "/Users/Shared/new.txt");
}

TEST_F(PluginPickersTest, AFolderPickerStoresTheChosenFolderAndStartsInTheOldOne) {
  store(Dictionary::make({{kKey, text("/Users/Shared")}}));
  awakeWith(option("FolderPicker"));
  platform.dialogs.chosenPaths = {onDisk("/Users/New")};
  click(valueRow());
  EXPECT_FALSE(panel().canChooseFiles);
  EXPECT_TRUE(panel().canChooseDirectories);
  EXPECT_FALSE(panel().allowsMultipleSelection);
  EXPECT_EQ(panel().directory, onDisk("/Users/Shared"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("/Users/New")}}));
}

TEST_F(PluginPickersTest, AnEmptyPickerLeavesTheStartFolderToThePlatform) {
  addPlugin("check_x", options({option("FilePicker"), option("FolderPicker")}));
  awake();
  click(outline().childrenOfItem(optionRow(0)).at(0));
  click(outline().childrenOfItem(optionRow(1)).at(0));
  ASSERT_EQ(platform.dialogs.openPanels.size(), 2U);
  EXPECT_EQ(platform.dialogs.openPanels[0].directory, "");
  EXPECT_EQ(platform.dialogs.openPanels[1].directory, "");
}

TEST_F(PluginPickersTest, ACancelledPanelChangesNothing) {
  store(Dictionary::make({{kKey, text("/old")}}));
  awakeWith(option("FilePicker"));
  countReloads();
  click(valueRow());
  EXPECT_EQ(platform.dialogs.openPanels.size(), 1U);
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(reloadedItems.empty());
}

TEST_F(PluginPickersTest, AMissingStorageFileIsCreatedWhereThatIsAllowed) {
  awakeWith(option("FilePicker"));
  platform.dialogs.chosenPaths = {onDisk("/a")};
  click(valueRow());
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("/a")}}));
}

TEST_F(PluginPickersTest, AMissingStorageFileElsewhereDropsTheChoiceWithoutAMessage) {
  awakeWith(with(option("FilePicker"), "SettingStoragePath", text("/tmp/x.plist")));
  platform.dialogs.chosenPaths = {onDisk("/a")};
  click(valueRow());
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(platform.dialogs.sheets.empty());
  EXPECT_EQ(platform.log.lines,
            std::vector<std::string>{"Cannot create file, not in the Corvane Directory."});
}

TEST_F(PluginPickersTest, APathOutsideTheRootPrefixIsStoredAsItIs) {
  awakeWith(option("FilePicker"));
  platform.dialogs.chosenPaths = {"/elsewhere/a"};
  click(valueRow());
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("/elsewhere/a")}}));
}

class PluginPickersMeanwhileTest : public PluginPickersTest {
 protected:
  PluginPickersMeanwhileTest() {
    platform.dialogs.chosenPaths = {onDisk("/chosen")};
    controller = std::make_unique<PluginsTabViewController>(*busyPlatform, platform.paths, view);
  }
  BusyDialogs dialogs{platform.dialogs};
  std::unique_ptr<Platform> busyPlatform = withDialogs(platform, dialogs);
};

TEST_F(PluginPickersMeanwhileTest, AChoiceForARowThatIsNotSelectedAnyMoreIsDropped) {
  awakeWith(option("FilePicker"));
  dialogs.meanwhile = [&] { outline().deselectAll(); };
  click(valueRow());
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginPickersMeanwhileTest, AChoiceIsDroppedWhenTheLockWasClosedMeanwhile) {
  store(Dictionary::make({{kKey, texts({"Add a new entry"})}}));
  addPlugin("check_x", options({option("FilePicker"), option("FileArray"), option("FolderArray")}));
  awake();
  for (const std::size_t index : {0U, 1U, 2U}) {
    pane.setUnlocked(true);
    dialogs.meanwhile = [&] { pane.setUnlocked(false); };
    click(outline().childrenOfItem(optionRow(index)).at(0));
  }
  EXPECT_TRUE(pane.writes.empty());
}

}  // namespace
}  // namespace corvane
