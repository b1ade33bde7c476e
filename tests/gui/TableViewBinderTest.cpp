#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include "Events.h"
#include "binders/TableViewBinder.h"

namespace corvane::test {
namespace {

class Rows final : public TableViewDataSource {
 public:
  int numberOfRowsInTableView(const TableView& /*table*/) override { return static_cast<int>(names.size()); }
  ObjectValue tableViewObjectValueForTableColumnRow(const TableView& /*table*/, const TableColumn& /*column*/,
                                                    int row) override {
    TextAttributes red;
    red.color = TextColor::Red;
    return AttributedText(names[static_cast<std::size_t>(row)], red);
  }
  std::string tableViewToolTipForCell(const TableView& /*table*/, const TableColumn& column,
                                      int row) override {
    return column.identifier == "Name" ? "/Volumes/<b>" + names[static_cast<std::size_t>(row)]
                                       : std::string();
  }
  void tableViewSelectionDidChange(TableView& table) override { selections.push_back(table.selectedRow()); }

  std::vector<std::string> names{"Alpha", "Beta", "Gamma"};
  std::vector<int> selections;
};

class TableViewBinder : public ::testing::Test {
 protected:
  void SetUp() override {
    table.setDataSource(&rows);
    table.reloadData();
    view->setGeometry(0, 0, 300, 200);
    new qt::TableViewBinder(table, *view);
    window.resize(300, 200);
    showActive(window);
  }
  void clickRow(int row) {
    const QRect cell = view->visualRect(view->model()->index(row, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, cell.center());
  }
  [[nodiscard]] int shownSelection() const {
    const QModelIndexList selected = view->selectionModel()->selectedRows();
    return selected.isEmpty() ? -1 : selected.first().row();
  }

  Rows rows;
  TableView table{{{"Name", "Volume", 150}, {"Other", "Other", 80}}};
  QWidget window;
  QTableView* view = new QTableView(&window);
};

TEST_F(TableViewBinder, ShowsTheRowsColumnsAndTitlesOfTheCore) {
  ASSERT_EQ(view->model()->rowCount(), 3);
  ASSERT_EQ(view->model()->columnCount(), 2);
  EXPECT_EQ(view->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Volume"));
  EXPECT_EQ(view->model()->index(1, 0).data().toString(), QStringLiteral("Beta"));
  EXPECT_EQ(view->horizontalHeader()->sectionSize(0), 150);
}

TEST_F(TableViewBinder, AClickSelectsTheRowInTheCore) {
  clickRow(1);
  EXPECT_EQ(table.selectedRow(), 1);
  EXPECT_EQ(rows.selections, (std::vector<int>{1}));
  EXPECT_EQ(shownSelection(), 1);
}

TEST_F(TableViewBinder, TheArrowKeysMoveTheSelection) {
  clickRow(0);
  press(window, Qt::Key_Down);
  EXPECT_EQ(table.selectedRow(), 1);
  press(window, Qt::Key_Up);
  EXPECT_EQ(table.selectedRow(), 0);
  EXPECT_EQ(rows.selections, (std::vector<int>{0, 1, 0}));
}

TEST_F(TableViewBinder, HomeAndEndChooseTheFirstAndTheLastRowAndShowIt) {
  rows.names.assign(100, "Volume");
  table.reloadData();
  clickRow(1);
  press(window, Qt::Key_End);
  EXPECT_EQ(table.selectedRow(), 99);
  EXPECT_EQ(shownSelection(), 99);
  EXPECT_TRUE(view->viewport()->rect().contains(view->visualRect(view->model()->index(99, 0))));
  press(window, Qt::Key_Home);
  EXPECT_EQ(table.selectedRow(), 0);
  EXPECT_TRUE(view->viewport()->rect().contains(view->visualRect(view->model()->index(0, 0))));
  rows.names.clear();
  table.reloadData();
  press(window, Qt::Key_End);
  EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewBinder, FollowsTheSelectionOfTheCore) {
  table.selectRow(2);
  EXPECT_EQ(shownSelection(), 2);
  table.deselectAll();
  EXPECT_EQ(shownSelection(), -1);
  EXPECT_EQ(rows.selections, (std::vector<int>{2, -1}));
}

TEST_F(TableViewBinder, ADisabledTableKeepsItsSelection) {
  table.selectRow(0);
  table.setEnabled(false);
  clickRow(2);
  EXPECT_EQ(table.selectedRow(), 0);
  EXPECT_EQ(shownSelection(), 0);
}

TEST_F(TableViewBinder, ADisabledTableScrollsByMouseAndKeyboard) {
  for (int row = 0; row < 60; ++row) rows.names.push_back("Volume " + std::to_string(row));
  table.reloadData();
  table.selectRow(0);
  table.setEnabled(false);
  QScrollBar& bar = *view->verticalScrollBar();
  ASSERT_TRUE(eventually([&] { return bar.isVisible() && bar.maximum() > 40; }));
  const QPointF place(view->viewport()->rect().center());
  QWheelEvent wheel(place, view->viewport()->mapToGlobal(place), {}, QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(view->viewport(), &wheel);
  EXPECT_GT(bar.value(), 0);
  bar.setValue(0);
  click(bar);  // pages on
  EXPECT_GT(bar.value(), 1);
  view->setFocus();
  struct Step {
    Qt::Key key;
    int value;
  };
  const int page = bar.pageStep();
  for (const Step& step :
       {Step{Qt::Key_Home, 0}, Step{Qt::Key_Down, 1}, Step{Qt::Key_Down, 2}, Step{Qt::Key_Up, 1},
        Step{Qt::Key_PageDown, 1 + page}, Step{Qt::Key_PageUp, 1}, Step{Qt::Key_End, bar.maximum()}}) {
    press(window, step.key);
    EXPECT_EQ(bar.value(), step.value) << step.key;
  }
  EXPECT_EQ(table.selectedRow(), 0);
  EXPECT_EQ(shownSelection(), 0);
}

TEST_F(TableViewBinder, AClickIntoADisabledTableLeavesNothingBehindWhenItIsEnabled) {
  table.selectRow(0);
  table.setEnabled(false);
  clickRow(2);
  table.setEnabled(true);
  view->setFocus();
  press(window, Qt::Key_Down);
  EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewBinder, ADisabledTableLooksDisabled) {
  table.selectRow(1);
  const auto picture = [this] { return view->viewport()->grab().toImage(); };
  const QImage enabled = picture();
  table.setEnabled(false);
  EXPECT_NE(picture(), enabled);
  table.setEnabled(true);
  EXPECT_EQ(picture(), enabled);
}

TEST_F(TableViewBinder, AReloadShowsNewRowsAndKeepsTheSelection) {
  table.selectRow(1);
  rows.names = {"One", "Two", "Three", "Four"};
  table.reloadData();
  EXPECT_EQ(view->model()->rowCount(), 4);
  EXPECT_EQ(view->model()->index(1, 0).data().toString(), QStringLiteral("Two"));
  EXPECT_EQ(shownSelection(), 1);
  rows.names = {"One"};
  table.reloadData();
  EXPECT_EQ(view->model()->rowCount(), 1);
  EXPECT_EQ(shownSelection(), -1);
}

// A list that is rebuilt behind the user's back loses its selection for a moment and gets it again.
TEST_F(TableViewBinder, ARebuildLeavesTheScrollPositionWhereTheUserHasPutIt) {
  for (int row = 0; row < 60; ++row) rows.names.push_back("Volume " + std::to_string(row));
  table.reloadData();
  const auto rebuild = [&](int selected) {
    table.deselectAll();
    rows.names.insert(rows.names.begin(), "New");
    table.reloadData();
    table.selectRow(selected);
    QCoreApplication::processEvents();
  };
  table.selectRow(1);
  view->verticalScrollBar()->setValue(30);
  ASSERT_EQ(view->verticalScrollBar()->value(), 30);
  rebuild(2);
  EXPECT_EQ(view->verticalScrollBar()->value(), 30) << "the selected row had been scrolled out of view";
  EXPECT_EQ(shownSelection(), 2);
  table.selectRow(33);
  rebuild(34);
  EXPECT_EQ(view->verticalScrollBar()->value(), 30) << "the selected row is still in view";
}

TEST_F(TableViewBinder, ASelectedRowThatIsPushedOutOfViewIsFollowed) {
  for (int row = 0; row < 60; ++row) rows.names.push_back("Volume " + std::to_string(row));
  table.reloadData();
  table.selectRow(2);
  table.deselectAll();
  for (int row = 0; row < 30; ++row) rows.names.insert(rows.names.begin(), "New");
  table.reloadData();
  table.selectRow(32);
  const QRect row = view->visualRect(view->model()->index(32, 0));
  EXPECT_TRUE(view->viewport()->rect().contains(row));
}

TEST_F(TableViewBinder, TheToolTipOfACellIsTheCoresAndNeverMarkup) {
  EXPECT_EQ(view->model()->index(0, 0).data(Qt::ToolTipRole).toString(),
            QStringLiteral("/Volumes/&lt;b&gt;Alpha"));
  EXPECT_FALSE(view->model()->index(0, 1).data(Qt::ToolTipRole).isValid());
}

}  // namespace
}  // namespace corvane::test
