#import "WindowFixture.h"
#import "binders/ScrollViewBinder.h"
#import "binders/TableViewBinder.h"
#import "widgets/NoExpansionTooltip.h"

namespace corvane::test {
namespace {

class Rows final : public TableViewDataSource {
 public:
  int numberOfRowsInTableView(const TableView& /*table*/) override { return static_cast<int>(rows.size()); }
  ObjectValue tableViewObjectValueForTableColumnRow(const TableView& /*table*/, const TableColumn& /*column*/,
                                                    int row) override {
    return rows[static_cast<std::size_t>(row)];
  }
  std::string tableViewToolTipForCell(const TableView& /*table*/, const TableColumn& /*column*/,
                                      int row) override {
    return row == 0 ? "" : "/Volumes/" + std::to_string(row);
  }
  void tableViewSelectionDidChange(TableView& /*table*/) override { ++changes; }

  std::vector<ObjectValue> rows{AttributedText("one"), PropertyList::string("two"), AttributedText("three")};
  int changes = 0;
};

class AppKitTable : public AppKitWindowTest {
 protected:
  AppKitTable() {
    table.setDataSource(&rows);
    page.add(std::make_unique<appkit::TableViewBinder>(table, view));
    scroll = page.scrollView(NSMakeRect(20, 20, 300, 200), view);
    table.reloadData();
  }
  void clickRow(NSInteger row) { click(view, NSMakePoint(10, NSMidY([view rectOfRow:row]))); }
  [[nodiscard]] std::string shown(NSInteger row) {
    return textOfValue([static_cast<id>([view dataSource]) tableView:view
                                           objectValueForTableColumn:[[view tableColumns] objectAtIndex:0]
                                                                 row:row]);
  }
  static std::string textOfValue(id value) { return [[value string] UTF8String]; }

  TableView table{{TableColumn{"name", "Volume", 200}}};
  Rows rows;
  ScrollView around;
  NSTableView* view = [[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, 300, 200)] autorelease];
  NSScrollView* scroll = nil;
};

TEST_F(AppKitTable, ColumnsAndRowsAreTheControls) {
  ASSERT_EQ([view numberOfColumns], 1);
  NSTableColumn* column = [[view tableColumns] objectAtIndex:0];
  EXPECT_TRUE([[[column headerCell] stringValue] isEqual:@"Volume"]);
  EXPECT_EQ([column width], 200);
  EXPECT_EQ([view numberOfRows], 3);
  EXPECT_EQ(shown(0), "one");
  EXPECT_EQ(shown(1), "two");
}

TEST_F(AppKitTable, TheControlLearnsTheHeightOfTheHeader) {
  EXPECT_EQ(table.headerHeight(), [[view headerView] frame].size.height);
}

TEST_F(AppKitTable, AClickSelectsAndIsToldOnce) {
  clickRow(1);
  EXPECT_EQ(table.selectedRow(), 1);
  EXPECT_EQ(rows.changes, 1);
}

TEST_F(AppKitTable, TheArrowKeysSelect) {
  clickRow(0);
  press(window, kDown);
  press(window, kDown);
  EXPECT_EQ(table.selectedRow(), 2);
  press(window, kUp);
  EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(AppKitTable, WhatTheControlSelectsIsShown) {
  table.selectRow(2);
  EXPECT_EQ([view selectedRow], 2);
  table.deselectAll();
  EXPECT_EQ([view selectedRow], -1);
}

TEST_F(AppKitTable, ADisabledTableKeepsItsSelectionAndLooksDisabled) {
  table.selectRow(1);
  table.setEnabled(false);
  clickRow(2);
  EXPECT_EQ(table.selectedRow(), 1);
  EXPECT_EQ([view selectedRow], 1);
  id value = [static_cast<id>([view dataSource]) tableView:view
                                 objectValueForTableColumn:[[view tableColumns] objectAtIndex:0]
                                                       row:0];
  EXPECT_TRUE([[value attribute:NSForegroundColorAttributeName atIndex:0
                 effectiveRange:nullptr] isEqual:[NSColor disabledControlTextColor]]);
}

TEST_F(AppKitTable, AReloadThatLosesTheRowLosesTheSelection) {
  table.selectRow(2);
  rows.rows.resize(1);
  table.reloadData();
  EXPECT_EQ([view numberOfRows], 1);
  EXPECT_EQ(table.selectedRow(), -1);
  EXPECT_EQ([view selectedRow], -1);
}

TEST_F(AppKitTable, TheTipOfACellIsTheDataSources) {
  NSTableColumn* column = [[view tableColumns] objectAtIndex:0];
  NSRect rect = [view frameOfCellAtColumn:0 row:1];
  const auto tip = [&](NSInteger row) {
    return [static_cast<id>([view delegate]) tableView:view
                                        toolTipForCell:[column dataCell]
                                                  rect:&rect
                                           tableColumn:column
                                                   row:row
                                         mouseLocation:NSZeroPoint];
  };
  EXPECT_EQ(tip(0), nil);
  EXPECT_TRUE([tip(1) isEqual:@"/Volumes/1"]);
}

TEST_F(AppKitTable, NoCellOffersAnExpansionTip) {
  auto* cell = static_cast<NSTextFieldCell*>([[[view tableColumns] objectAtIndex:0] dataCell]);
  ASSERT_TRUE([cell isKindOfClass:[NSTextFieldCell class]]);
  const NSRect frame = [cell expansionFrameWithFrame:NSMakeRect(1, 2, 3, 4) inView:view];
  EXPECT_TRUE(NSEqualRects(frame, NSZeroRect));
}

TEST_F(AppKitTable, TheFrameAroundItFollowsItsControl) {
  around.setFrame({20, 30, 310, 90});
  page.add(std::make_unique<appkit::ScrollViewBinder>(around, scroll));
  EXPECT_TRUE(NSEqualRects([scroll frame], NSMakeRect(20, 30, 310, 90)));
  around.setVerticalScrollElasticity(ScrollElasticity::None);
  around.setHorizontalScrollElasticity(ScrollElasticity::Allowed);
  EXPECT_EQ([scroll verticalScrollElasticity], NSScrollElasticityNone);
  EXPECT_EQ([scroll horizontalScrollElasticity], NSScrollElasticityAllowed);
}

}  // namespace
}  // namespace corvane::test
