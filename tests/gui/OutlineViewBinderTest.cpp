#include <QLineEdit>
#include <QStandardItemModel>
#include <map>

#include "Events.h"
#include "binders/CellDelegate.h"
#include "binders/OutlineViewBinder.h"
#include "widgets/OutlineTree.h"

namespace corvane::test {
namespace {

/// Two groups; the rows below each are named by the test. Every value is one object for its whole life, as an
/// outline needs it.
class Groups final : public OutlineViewDataSource, public OutlineViewDelegate {
 public:
  int outlineViewNumberOfChildrenOfItem(OutlineView& /*outline*/, const OutlineItem& item) override {
    return static_cast<int>(item ? children[text(item)].size() : top.size());
  }
  bool outlineViewIsItemExpandable(OutlineView& /*outline*/, const OutlineItem& item) override {
    return children.count(text(item)) > 0;
  }
  PropertyList outlineViewChildOfItem(OutlineView& /*outline*/, int index, const OutlineItem& item) override {
    return (item ? children[text(item)] : top)[static_cast<std::size_t>(index)];
  }
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView& /*outline*/, const TableColumn& column,
                                                         const OutlineItem& item) override {
    ++valueReads;
    if (column.title == "Enabled") return PropertyList::boolean(on.count(text(item)) > 0);
    return AttributedText(text(item));
  }
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView& /*outline*/, const PropertyList& value,
                                                     const TableColumn& column,
                                                     const OutlineItem& item) override {
    edits.emplace_back(column.title + " of " + text(item), value);
  }
  void outlineViewItemDidExpand(OutlineView& /*outline*/, const OutlineItem& /*item*/) override {}
  bool outlineViewShouldEditTableColumnItem(OutlineView& /*outline*/, const TableColumn& /*column*/,
                                            const OutlineItem& /*item*/) override {
    return true;
  }
  CellReference outlineViewDataCellForTableColumnItem(OutlineView& /*outline*/, const TableColumn* column,
                                                      const OutlineItem& item) override {
    if (column->title == "Enabled")
      return children.count(text(item)) > 0 ? nullptr : std::make_shared<Cell>(EmptyCell{});
    if (text(item) != "Press me") return nullptr;
    ButtonCell button;
    button.kind = ButtonCell::Kind::MomentaryPushIn;
    button.roundedBezel = true;
    button.title = AttributedText("Press");
    button.action = [this](OutlineView&) { ++presses; };
    return std::make_shared<Cell>(button);
  }
  double outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem& item) override {
    return text(item) == "Press me" ? 1.5 * outline.rowHeight() : outline.rowHeight();
  }
  bool outlineViewShouldShowOutlineCellForItem(OutlineView& /*outline*/, const OutlineItem& item) override {
    return text(item) != "Second";
  }
  void outlineViewWillDisplayCellForTableColumnItem(OutlineView& /*outline*/, Cell& /*cell*/,
                                                    const TableColumn& /*column*/,
                                                    const OutlineItem& /*item*/) override {
    ++valueReads;  // a cell may be dressed with what is stored
  }

  static std::string text(const OutlineItem& item) {
    const std::string* value = item ? item.object().asString() : nullptr;
    return value != nullptr ? *value : std::string();
  }

  std::vector<PropertyList> top{PropertyList::string("First"), PropertyList::string("Second")};
  std::map<std::string, std::vector<PropertyList>> children{
      {"First", {PropertyList::string("a"), PropertyList::string("Press me")}},
      {"Second", {PropertyList::string("c")}}};
  std::map<std::string, bool> on{{"First", true}};
  std::vector<std::pair<std::string, PropertyList>> edits;
  int presses = 0;
  int valueReads = 0;
};

class OutlineViewBinder : public ::testing::Test {
 protected:
  void SetUp() override {
    outline.setDataSource(&groups);
    outline.setDelegate(&groups);
    outline.reloadData();
    tree->setGeometry(0, 0, 500, 300);
    new qt::OutlineViewBinder(outline, *tree);
    window.resize(500, 300);
    showActive(window);
  }
  /// The rows on the screen from the top, by their text.
  [[nodiscard]] std::vector<std::string> shownRows() const {
    std::vector<std::string> rows;
    for (QModelIndex index = tree->model()->index(0, 1); index.isValid(); index = tree->indexBelow(index)) {
      rows.push_back(index.siblingAtColumn(1).data().toString().toStdString());
    }
    return rows;
  }
  [[nodiscard]] QRect cellRect(int row, int column) const {
    QModelIndex index = tree->model()->index(0, 0);
    for (int i = 0; i < row; ++i) index = tree->indexBelow(index);
    return tree->visualRect(index.siblingAtColumn(column));
  }
  void clickAt(const QPoint& point) { QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, point); }
  void clickTriangle(int row) {
    const QRect cell = cellRect(row, 1);
    clickAt(QPoint(cell.left() - 8, cell.center().y()));
  }

  void moveTo(const QPoint& point, Qt::MouseButtons held = Qt::NoButton) {
    QMouseEvent move(QEvent::MouseMove, point, tree->viewport()->mapToGlobal(point), Qt::NoButton, held, {});
    QApplication::sendEvent(tree->viewport(), &move);
    QHoverEvent hover(QEvent::HoverMove, point, tree->viewport()->mapToGlobal(point), QPointF(-1, -1));
    QApplication::sendEvent(tree->viewport(), &hover);
    QApplication::processEvents();  // what the move has to be drawn anew
  }

  Groups groups;
  OutlineView outline{{{{"Enabled", "Enabled", 60}, true}, {{"Plugin", "Plugin", 400}, false}}};
  QWidget window;
  qt::OutlineTree* tree = new qt::OutlineTree(&window);
};

using Names = std::vector<std::string>;

TEST_F(OutlineViewBinder, ShowsTheRowsOfTheCore) {
  EXPECT_EQ(shownRows(), (Names{"First", "Second"}));
  outline.expandItem(outline.itemAtRow(0));
  EXPECT_EQ(shownRows(), (Names{"First", "a", "Press", "Second"}));
}

TEST_F(OutlineViewBinder, AClickOnTheTriangleOpensAndClosesTheRow) {
  clickTriangle(0);
  EXPECT_TRUE(outline.isItemExpanded(outline.itemAtRow(0)));
  EXPECT_EQ(shownRows(), (Names{"First", "a", "Press", "Second"}));
  clickTriangle(0);
  EXPECT_FALSE(outline.isItemExpanded(outline.itemAtRow(0)));
  EXPECT_EQ(shownRows(), (Names{"First", "Second"}));
}

TEST_F(OutlineViewBinder, ARowWithoutATriangleIsOpenedByTheCoreAlone) {
  clickTriangle(1);
  EXPECT_FALSE(outline.isItemExpanded(outline.itemAtRow(1)));
  outline.expandItem(outline.itemAtRow(1));
  EXPECT_EQ(shownRows(), (Names{"First", "Second", "c"}));
  clickTriangle(1);
  EXPECT_EQ(shownRows(), (Names{"First", "Second", "c"}));
}

TEST_F(OutlineViewBinder, TheArrowKeysOpenCloseAndWalkTheTree) {
  clickAt(cellRect(0, 1).center());
  press(window, Qt::Key_Right);
  EXPECT_TRUE(outline.isItemExpanded(outline.itemAtRow(0)));
  press(window, Qt::Key_Right);
  EXPECT_EQ(outline.selectedRow(), 1);
  press(window, Qt::Key_Left);
  EXPECT_EQ(outline.selectedRow(), 0);
  press(window, Qt::Key_Left);
  EXPECT_FALSE(outline.isItemExpanded(outline.itemAtRow(0)));
}

TEST_F(OutlineViewBinder, RowsAreAsHighAsTheCoreSays) {
  outline.expandItem(outline.itemAtRow(0));
  EXPECT_EQ(cellRect(1, 1).height(), qRound(outline.rowHeight()));
  EXPECT_EQ(cellRect(2, 1).height(), qRound(1.5 * outline.rowHeight()));
}

TEST_F(OutlineViewBinder, AClickOnACheckBoxCellSetsTheOppositeValue) {
  clickAt(cellRect(0, 0).center());
  ASSERT_EQ(groups.edits.size(), 1U);
  EXPECT_EQ(groups.edits[0].first, "Enabled of First");
  EXPECT_EQ(groups.edits[0].second, PropertyList::boolean(false));
  EXPECT_EQ(tree->model()->index(0, 0).data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
}

TEST_F(OutlineViewBinder, TwoQuickClicksAreTwoClicks) {
  const QPoint place = cellRect(0, 0).center();
  clickAt(place);
  QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
  QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(groups.edits.size(), 2U);
}

TEST_F(OutlineViewBinder, APushButtonCellIsPressedByMouseAndByKeyboard) {
  outline.expandItem(outline.itemAtRow(0));
  const QRect cell = cellRect(2, 1);
  clickAt(QPoint(cell.left() + 20, cell.center().y()));
  EXPECT_EQ(groups.presses, 1);
  clickAt(QPoint(cell.right() - 20, cell.center().y()));  // beside the button
  EXPECT_EQ(groups.presses, 1);
  press(window, Qt::Key_Space);
  EXPECT_EQ(groups.presses, 2);
}

TEST_F(OutlineViewBinder, AKeyThatIsHeldDownActsOnceOnItsRow) {
  outline.expandItem(outline.itemAtRow(0));
  tree->setFocus();
  tree->setCurrentCell(tree->indexAt(cellRect(2, 1).center()));
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    groups.presses = 0;
    press(window, key);
    QKeyEvent repeat(QEvent::KeyPress, key, {}, QString(), true);
    QApplication::sendEvent(tree, &repeat);
    EXPECT_EQ(groups.presses, 1);
  }
}

// Reading a value that belongs to root is more than looking into a file.
TEST_F(OutlineViewBinder, MovingTheMouseReadsNoValues) {
  outline.expandItem(outline.itemAtRow(0));
  static_cast<void>(cellRect(0, 0));  // lays the rows out
  QApplication::processEvents();
  groups.valueReads = 0;
  for (int round = 0; round < 3; ++round) {
    for (int row = 0; row < 4; ++row) {
      for (const int column : {0, 1}) {
        const QRect cell = cellRect(row, column);
        moveTo(QPoint(cell.left() + 20, cell.center().y()));
        moveTo(QPoint(cell.left() + 21, cell.center().y()));
      }
    }
  }
  EXPECT_EQ(groups.valueReads, 0);
}

TEST_F(OutlineViewBinder, DrawingReadsEachValueOnce) {
  outline.expandItem(outline.itemAtRow(0));
  QApplication::processEvents();
  groups.valueReads = 0;
  tree->viewport()->repaint();
  EXPECT_EQ(groups.valueReads, 2 * 2 * outline.numberOfRows()) << "two columns, each read and dressed";
}

TEST_F(OutlineViewBinder, MovingTheMouseOverTheButtonThatItHoldsReadsNoValues) {
  outline.expandItem(outline.itemAtRow(0));
  const QRect cell = cellRect(2, 1);
  const QPoint place(cell.left() + 20, cell.center().y());
  const QModelIndex button = tree->indexAt(place);
  moveTo(place);
  QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, place);
  QApplication::processEvents();
  groups.valueReads = 0;
  for (int step = 1; step < 10; ++step) moveTo(place + QPoint(step, 0), Qt::LeftButton);
  EXPECT_EQ(groups.valueReads, 0);
  EXPECT_TRUE(tree->isPressed(button));
  moveTo(QPoint(cell.right() - 20, cell.center().y()), Qt::LeftButton);
  EXPECT_FALSE(tree->isPressed(button)) << "beside the button";
  moveTo(place, Qt::LeftButton);
  EXPECT_TRUE(tree->isPressed(button));
  QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(groups.presses, 1);
}

// Whatever takes the keyboard while the button is held down, a sheet for one, ends the press.
TEST_F(OutlineViewBinder, DraggingOnAfterTheKeyboardWasTakenAwaySelectsNothing) {
  auto* other = new QLineEdit(&window);
  other->setGeometry(400, 270, 90, 25);
  other->show();
  outline.expandItem(outline.itemAtRow(0));
  outline.selectRow(1);
  const QRect cell = cellRect(2, 1);
  tree->setFocus();
  QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 20, cell.center().y()));
  other->setFocus();
  for (const int row : {3, 0}) moveTo(cellRect(row, 1).center(), Qt::LeftButton);
  EXPECT_EQ(outline.selectedRow(), 1);
  QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, cellRect(0, 1).center());
  EXPECT_EQ(groups.presses, 0);
  EXPECT_EQ(outline.selectedRow(), 1);
  clickAt(cellRect(3, 1).center());
  EXPECT_EQ(outline.selectedRow(), 3) << "the next press is one like every other";
}

TEST_F(OutlineViewBinder, DraggingFromATriangleSelectsNothing) {
  outline.selectRow(1);
  const QRect cell = cellRect(0, 1);
  QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, QPoint(cell.left() - 8, cell.center().y()));
  for (const int row : {1, 0}) moveTo(cellRect(row, 1).center(), Qt::LeftButton);
  QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, cellRect(0, 1).center());
  EXPECT_EQ(outline.selectedRow(), 3) << "the row that was selected has moved down";
}

TEST_F(OutlineViewBinder, ADisabledOutlineOpensRowsButPressesNothing) {
  outline.setEnabled(false);
  EXPECT_TRUE(tree->isEnabled());
  clickTriangle(0);
  EXPECT_EQ(shownRows(), (Names{"First", "a", "Press", "Second"}));
  clickAt(cellRect(0, 0).center());
  EXPECT_TRUE(groups.edits.empty());
}

TEST_F(OutlineViewBinder, AReloadKeepsWhatIsOpenAndFollowsNewAndGoneRows) {
  outline.expandItem(outline.itemAtRow(0));
  groups.children["First"].insert(groups.children["First"].begin(), PropertyList::string("new"));
  groups.top.pop_back();
  outline.reloadData();
  EXPECT_EQ(shownRows(), (Names{"First", "new", "a", "Press"}));
  EXPECT_TRUE(tree->isExpanded(tree->model()->index(0, 0)));
}

TEST_F(OutlineViewBinder, AReloadFollowsAnotherOrder) {
  std::swap(groups.top[0], groups.top[1]);
  outline.reloadData();
  EXPECT_EQ(shownRows(), (Names{"Second", "First"}));
}

TEST_F(OutlineViewBinder, FollowsTheSelectionOfTheCoreAndReportsTheUsers) {
  outline.selectRow(1);
  EXPECT_TRUE(tree->selectionModel()->isSelected(tree->model()->index(1, 0)));
  clickAt(cellRect(0, 1).center());
  EXPECT_EQ(outline.selectedRow(), 0);
  outline.deselectAll();
  EXPECT_FALSE(tree->selectionModel()->hasSelection());
}

TEST(OutlineTree, LettersFindARowAlsoWhereTheCurrentOneIsBelowAClosedRow) {
  QStandardItemModel model;
  for (const char* name : {"apple", "pear"}) model.appendRow(new QStandardItem(QString::fromLatin1(name)));
  model.item(0)->appendRow(new QStandardItem(QStringLiteral("quince")));
  qt::OutlineTree tree;
  tree.setModel(&model);
  tree.resize(300, 200);
  showActive(tree);
  tree.setCurrentCell(model.index(0, 0, model.index(0, 0)));
  ASSERT_FALSE(tree.isExpanded(model.index(0, 0)));
  tree.keyboardSearch(QStringLiteral("x"));
  EXPECT_EQ(tree.currentIndex().data().toString(), QStringLiteral("quince")) << "nothing begins so";
  QTest::keyClick(&tree, Qt::Key_Insert);  // does nothing here but begin the search anew
  tree.keyboardSearch(QStringLiteral("a"));
  EXPECT_EQ(tree.currentIndex().data().toString(), QStringLiteral("apple"));
}

TEST(OutlineTree, ABlankBetweenWordsThatAreTypedBelongsToTheSearch) {
  const int interval = QApplication::keyboardInputInterval();
  QApplication::setKeyboardInputInterval(600000);  // however busy the machine is
  QStandardItemModel model;
  for (const char* name : {"Test", "Test mode", "Tests"}) {
    model.appendRow(new QStandardItem(QString::fromLatin1(name)));
  }
  qt::OutlineTree tree;
  tree.setModel(&model);
  int activations = 0;
  QObject::connect(&tree, &qt::OutlineTree::rowActivated, [&] { ++activations; });
  showActive(tree);
  tree.setCurrentCell(model.index(2, 0));
  QTest::keyClicks(&tree, QStringLiteral("test m"));
  EXPECT_EQ(tree.currentIndex().data().toString(), QStringLiteral("Test mode"));
  EXPECT_EQ(activations, 0);
  QTest::keyClick(&tree, Qt::Key_Down);  // ends the search
  QTest::keyClick(&tree, Qt::Key_Space);
  EXPECT_EQ(activations, 1);
  QApplication::setKeyboardInputInterval(0);  // so long ago that it is over
  QTest::keyClick(&tree, Qt::Key_T);
  QTest::keyClick(&tree, Qt::Key_Space);
  EXPECT_EQ(activations, 2);
  QApplication::setKeyboardInputInterval(interval);
}

}  // namespace
}  // namespace corvane::test
