#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/TableView.h"

namespace corvane {
namespace {

class Rows final : public TableViewDataSource {
 public:
  int numberOfRowsInTableView(const TableView&) override { return count; }
  ObjectValue tableViewObjectValueForTableColumnRow(const TableView&, const TableColumn& column,
                                                    int row) override {
    return PropertyList::string(column.identifier + std::to_string(row));
  }
  std::string tableViewToolTipForCell(const TableView&, const TableColumn& column, int row) override {
    return "tip of " + column.identifier + std::to_string(row);
  }
  void tableViewSelectionDidChange(TableView& table) override { selections.push_back(table.selectedRow()); }

  int count = 3;
  std::vector<int> selections;
};

class TableViewTest : public testing::Test {
 protected:
  TableViewTest() {
    table.setDataSource(&source);
    table.reloadData();
  }
  Rows source;
  TableView table{{{"VolumeName", "Volume", 100}}};
};

TEST_F(TableViewTest, ASelectionBelowTheNewEndStaysOnReload) {
  table.selectRow(1);
  source.count = 2;
  table.reloadData();
  EXPECT_EQ(table.selectedRow(), 1);
  EXPECT_EQ(source.selections, (std::vector<int>{1}));
}

TEST_F(TableViewTest, ASelectionBeyondTheNewEndIsGoneWhenTheShellReadsTheRowsAgain) {
  table.selectRow(2);
  source.count = 2;
  std::vector<std::string> calls;
  table.onReload = [&] { calls.push_back("reload " + std::to_string(table.selectedRow())); };
  table.onSelectionChange = [&] { calls.emplace_back("selection"); };
  table.reloadData();
  EXPECT_EQ(table.selectedRow(), -1);
  EXPECT_EQ(calls, (std::vector<std::string>{"reload -1", "selection"}));
  EXPECT_EQ(source.selections, (std::vector<int>{2, -1}));
}

TEST_F(TableViewTest, ReloadingAnEmptyTableWithoutASelectionChangesNoSelection) {
  source.count = 0;
  table.reloadData();
  EXPECT_EQ(table.numberOfRows(), 0);
  EXPECT_TRUE(source.selections.empty());
}

TEST_F(TableViewTest, TheDataSourceHearsOnlyOfRealChangesOfTheSelection) {
  table.deselectAll();
  table.selectRow(1);
  table.selectRow(1);
  table.deselectAll();
  table.deselectAll();
  EXPECT_EQ(source.selections, (std::vector<int>{1, -1}));
}

TEST_F(TableViewTest, ARowOutsideSelectsNothingNew) {
  table.selectRow(1);
  for (const int row : {-1, 3, 100}) table.selectRow(row);
  EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewTest, AClickSelectsUnlessTheTableIsDisabled) {
  table.clickRow(2);
  EXPECT_EQ(table.selectedRow(), 2);
  table.setEnabled(false);
  table.clickRow(0);
  EXPECT_EQ(table.selectedRow(), 2);
  table.selectRow(0);  // a controller may
  EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(TableViewTest, CellsOutsideTheRowsHaveNoValueAndNoToolTip) {
  const TableColumn& column = table.columns()[0];
  EXPECT_EQ(std::get<PropertyList>(table.objectValue(column, 2)), PropertyList::string("VolumeName2"));
  EXPECT_EQ(table.toolTip(column, 2), "tip of VolumeName2");
  for (const int row : {-1, 3}) {
    EXPECT_TRUE(std::holds_alternative<std::monostate>(table.objectValue(column, row))) << row;
    EXPECT_EQ(table.toolTip(column, row), "") << row;
  }
}

TEST_F(TableViewTest, WithoutADataSourceItIsEmpty) {
  table.setDataSource(nullptr);
  table.reloadData();
  EXPECT_EQ(table.numberOfRows(), 0);
}

TEST_F(TableViewTest, ASelectionHandlerMayReloadTheTable) {
  table.onSelectionChange = [&] { table.reloadData(); };
  table.selectRow(2);
  EXPECT_EQ(table.selectedRow(), 2);
  source.count = 1;
  table.reloadData();
  EXPECT_EQ(table.selectedRow(), -1);
}

}  // namespace
}  // namespace corvane
