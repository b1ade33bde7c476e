#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginsTabFixture.h"
#include "plugins/PluginsTabViewController.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class PluginsTabViewControllerTest : public PluginsTabFixture {};

TEST_F(PluginsTabViewControllerTest, TheOutlineHasItsTwoColumnsAndAnAccessibleName) {
  ASSERT_EQ(outline().columns().size(), 2U);
  EXPECT_EQ(enabledColumn().title, "Enabled");
  EXPECT_TRUE(enabledColumn().checkBox);
  EXPECT_EQ(pluginColumn().title, "Plugin");
  EXPECT_FALSE(pluginColumn().checkBox);
  EXPECT_FALSE(outline().accessibleName().empty());
  EXPECT_TRUE(view.pluginsLabel.accessibleName().empty()) << "the text of a label speaks for itself";
  EXPECT_FALSE(view.pluginsLabel.stringValue().empty());
}

TEST_F(PluginsTabViewControllerTest, WakingUpFillsTheOutlineAndNeverHighlightsItsRows) {
  addPlugin("check_x", options({option("Checkbox")}));
  EXPECT_TRUE(outline().highlightsSelection());
  controller->awakeFromNib(pane);
  EXPECT_FALSE(outline().highlightsSelection());
  EXPECT_EQ(outline().numberOfRows(), 1);
}

TEST_F(PluginsTabViewControllerTest, NothingIsReadBeforeWakingUp) {
  addPlugin("check_x", options({option("Checkbox")}));
  EXPECT_TRUE(platform.propertyLists.reads.empty());
  EXPECT_EQ(outline().numberOfRows(), 0);
}

TEST_F(PluginsTabViewControllerTest, ARefreshShowsTheClientAsItIsNowAndNothingOfTheFormerTree) {
  addPlugin("check_x", options({option("TextField")}));
  awake();
  outline().selectRow(2);
  addPlugin("check_y", options({option("TextField")}));
  countReloads();
  controller->refresh();
  EXPECT_EQ(wholeReloads, 1);
  EXPECT_EQ(pluginNames(), (Texts{"check_x", "check_y"}));
  EXPECT_EQ(outline().numberOfRows(), 2) << "collapsed";
  EXPECT_EQ(outline().selectedRow(), -1);
}

TEST_F(PluginsTabViewControllerTest, TheOutlineIsEnabledWhileTheLockIsOpen) {
  pane.setUnlocked(false);
  awakeWith(option("TextField"));
  EXPECT_FALSE(outline().enabled());
  pane.setUnlocked(true);
  EXPECT_TRUE(outline().enabled());
  pane.setUnlocked(false);
  EXPECT_FALSE(outline().enabled());
}

TEST_F(PluginsTabViewControllerTest, WhileTheLockIsClosedRowsCanBeExpandedAndReadButNotChanged) {
  store(Dictionary::make({{kKey, text("shown")}, {"List", texts({"/a"})}}));
  pane.setUnlocked(false);
  addPlugin("check_x", options({option("TextField"), option("Checkbox", text("Positive")),
                                with(option("FileArray"), "SettingStorageKey", text("List")),
                                option("PluginValidation")}));
  controller->awakeFromNib(pane);
  outline().clickDisclosure(outline().itemAtRow(0));
  EXPECT_GT(outline().numberOfRows(), 1);
  EXPECT_EQ(cell<TextFieldCell>(valueRow()).text, "shown");
  EXPECT_EQ(cell<ButtonCell>(outline().childrenOfItem(optionRow(2)).at(0)).title.text, " /a");
  for (int row = 0; row < outline().numberOfRows(); ++row) {
    for (const OutlineView::Column& column : outline().columns()) {
      outline().clickCell(outline().itemAtRow(row), column);
      outline().editCell(outline().itemAtRow(row), column, text("x"));
      EXPECT_FALSE(outline().shouldEdit(column, outline().itemAtRow(row)));
    }
  }
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(pane.validations.empty());
  EXPECT_TRUE(platform.dialogs.sheets.empty());
  EXPECT_TRUE(platform.dialogs.openPanels.empty());
}

TEST_F(PluginsTabViewControllerTest, AClickedLinkOpensItsAddress) {
  awakeWith(with(option("DisplayOnly"), "SettingDetailsURL", text("https://example.com/a%20b?c=d")));
  click(valueRow());
  EXPECT_EQ(platform.workspace.openedUrls, Texts{"https://example.com/a%20b?c=d"});
}

TEST_F(PluginsTabViewControllerTest, WithoutAClickedCellNoAddressIsOpened) {
  awake();
  controller->myOpenURL(outline());
  EXPECT_TRUE(platform.workspace.openedUrls.empty());
}

TEST_F(PluginsTabViewControllerTest, TheOutlineOutlivesTheController) {
  awakeWith(option("PluginValidation"));
  outline().setRowHeight(20);
  const OutlineItem row = valueRow();
  EXPECT_GT(outline().heightOfRow(row), outline().rowHeight());
  controller.reset();
  EXPECT_EQ(outline().heightOfRow(row), outline().rowHeight()) << "nobody is asked any more";
  outline().clickDisclosure(outline().itemAtRow(0));
  outline().reloadData();
  EXPECT_EQ(outline().numberOfRows(), 0);
}

TEST_F(PluginsTabViewControllerTest, AMissingClientShowsAnEmptyTab) {
  platform.remove(platform.paths.installFolder);
  awake();
  EXPECT_EQ(outline().numberOfRows(), 0);
  EXPECT_TRUE(platform.log.lines.empty());
}

}  // namespace
}  // namespace corvane
