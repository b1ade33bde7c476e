#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

#include "Events.h"
#include "InputMethod.h"
#include "binders/OutlineViewBinder.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"
#include "widgets/OutlineTree.h"

namespace corvane::test {
namespace {

/// One row below one option; its cell is the test's.
class OneCell final : public OutlineViewDataSource, public OutlineViewDelegate {
 public:
  int outlineViewNumberOfChildrenOfItem(OutlineView& /*outline*/, const OutlineItem& item) override {
    return !item || isOption(item) ? 1 : 0;
  }
  bool outlineViewIsItemExpandable(OutlineView& /*outline*/, const OutlineItem& item) override {
    return isOption(item);
  }
  PropertyList outlineViewChildOfItem(OutlineView& /*outline*/, int /*index*/,
                                      const OutlineItem& item) override {
    return item ? value : option;
  }
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView& /*outline*/,
                                                         const TableColumn& /*column*/,
                                                         const OutlineItem& item) override {
    if (isOption(item)) return AttributedText("Queue\nThe name of the queue");
    ++reads;
    return stored;
  }
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline, const PropertyList& newValue,
                                                     const TableColumn& /*column*/,
                                                     const OutlineItem& item) override {
    edits.push_back(newValue);
    if (onEdit) onEdit();
    stored = newValue;
    outline.reloadItem(item);
  }
  void outlineViewItemDidExpand(OutlineView& /*outline*/, const OutlineItem& /*item*/) override {}
  bool outlineViewShouldEditTableColumnItem(OutlineView& /*outline*/, const TableColumn& /*column*/,
                                            const OutlineItem& /*item*/) override {
    return editable;
  }
  CellReference outlineViewDataCellForTableColumnItem(OutlineView& /*outline*/, const TableColumn* /*column*/,
                                                      const OutlineItem& item) override {
    return isOption(item) ? nullptr : std::make_shared<Cell>(cell);
  }
  double outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem& /*item*/) override {
    return 1.5 * outline.rowHeight();
  }
  bool outlineViewShouldShowOutlineCellForItem(OutlineView& /*outline*/,
                                               const OutlineItem& /*item*/) override {
    return false;
  }
  void outlineViewWillDisplayCellForTableColumnItem(OutlineView& /*outline*/, Cell& /*shown*/,
                                                    const TableColumn& /*column*/,
                                                    const OutlineItem& /*item*/) override {}

  [[nodiscard]] bool isOption(const OutlineItem& item) const { return item && item.object() == option; }

  PropertyList option = PropertyList::string("option");
  PropertyList value = PropertyList::string("value");
  Cell cell;
  PropertyList stored;
  bool editable = true;
  std::vector<PropertyList> edits;
  std::function<void()> onEdit;
  int reads = 0;  // of the stored value
};

class CellEditor : public ::testing::Test {
 protected:
  void show(Cell cell, PropertyList stored = {}) {
    rows.cell = std::move(cell);
    rows.stored = std::move(stored);
    outline.setDataSource(&rows);
    outline.setDelegate(&rows);
    outline.reloadData();
    outline.expandItem(OutlineItem(), true);
    tree->setGeometry(0, 0, 500, 200);
    other->setGeometry(0, 210, 100, 28);
    new qt::OutlineViewBinder(outline, *tree);
    window.resize(500, 240);
    showActive(window);
  }
  void clickCell() {
    const QRect cell = tree->visualRect(valueIndex());
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 20, cell.center().y()));
    QApplication::processEvents();
  }
  [[nodiscard]] QModelIndex valueIndex() const {
    return tree->model()->index(0, 0, tree->model()->index(0, 0));
  }
  template <typename Editor>
  [[nodiscard]] Editor* editor() const {
    return qobject_cast<Editor*>(tree->indexWidget(valueIndex()));
  }
  static TextFieldCell textField() {
    TextFieldCell cell;
    cell.editable = true;
    cell.placeholder = "Click to enter text";
    return cell;
  }

  OneCell rows;
  OutlineView outline{{{{"Plugin", "Plugin", 400}, false}}};
  QWidget window;
  qt::OutlineTree* tree = new qt::OutlineTree(&window);
  QLineEdit* other = new QLineEdit(&window);
};

TEST_F(CellEditor, AClickOpensTheFieldAndReturnStoresTheText) {
  show(textField(), PropertyList::string("laser"));
  clickCell();
  auto* edit = editor<QLineEdit>();
  ASSERT_NE(edit, nullptr);
  EXPECT_EQ(edit->text(), QStringLiteral("laser"));
  EXPECT_EQ(edit->placeholderText(), QStringLiteral("Click to enter text"));
  EXPECT_EQ(edit->accessibleName(), QStringLiteral("Queue"));
  edit->selectAll();
  type(*edit, "ink");
  EXPECT_TRUE(rows.edits.empty());
  press(window, Qt::Key_Return);
  ASSERT_TRUE(eventually([this] { return rows.edits.size() == 1U; }));
  EXPECT_EQ(rows.edits[0], PropertyList::string("ink"));
  EXPECT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
}

TEST_F(CellEditor, LeavingTheFieldStoresTheText) {
  show(textField());
  clickCell();
  type(*editor<QLineEdit>(), "a");
  other->setFocus();
  ASSERT_TRUE(eventually([this] { return rows.edits.size() == 1U; }));
  EXPECT_EQ(rows.edits[0], PropertyList::string("a"));
  EXPECT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
}

TEST_F(CellEditor, EscapeDropsWhatWasTyped) {
  show(textField());
  clickCell();
  type(*editor<QLineEdit>(), "b");
  press(window, Qt::Key_Escape);
  EXPECT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
  EXPECT_TRUE(rows.edits.empty());
}

TEST_F(CellEditor, AFieldThatWasOnlyLookedAtStoresNothing) {
  show(textField(), PropertyList::string("laser"));
  clickCell();
  press(window, Qt::Key_Return);
  EXPECT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
  EXPECT_TRUE(rows.edits.empty());
}

TEST_F(CellEditor, TheKeyboardOpensTheFieldToo) {
  show(textField());
  tree->setFocus();
  tree->setCurrentIndex(valueIndex());
  press(window, Qt::Key_Space);
  EXPECT_NE(editor<QLineEdit>(), nullptr);
}

TEST_F(CellEditor, RefusedKeystrokesAreNotTaken) {
  TextFieldCell cell = textField();
  auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(2);
  cell.formatter = formatter;
  show(cell);
  clickCell();
  type(*editor<QLineEdit>(), "abc");
  EXPECT_EQ(editor<QLineEdit>()->text(), QStringLiteral("ab"));
}

TEST_F(CellEditor, WhatAnInputMethodGivesIsCheckedToo) {
  auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(5);
  TextFieldCell open = textField();
  open.formatter = formatter;
  SecureTextFieldCell secret;
  secret.formatter = formatter;
  for (const Cell& cell : {Cell(open), Cell(secret)}) {
    show(cell, PropertyList::string("abcd"));
    clickCell();
    auto* edit = editor<QLineEdit>();
    ASSERT_NE(edit, nullptr);
    edit->end(false);
    compose(*edit, "´");
    commit(*edit, "éé");
    EXPECT_EQ(edit->text(), QStringLiteral("abcd"));
    commit(*edit, "é");
    EXPECT_EQ(edit->text(), QStringLiteral("abcdé"));
    press(window, Qt::Key_Escape);
    ASSERT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
  }
}

TEST_F(CellEditor, WhatAnInputMethodGivesToANumberIsCheckedToo) {
  ComboBoxCell cell;
  cell.editable = true;
  cell.items = {0, 5, 10};
  cell.formatter = std::make_shared<MyNumberFormatter>(0, 10, 0);
  show(cell, PropertyList::integer(5));
  clickCell();
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr);
  compose(*box, "´");
  commit(*box, "é");
  EXPECT_EQ(box->currentText(), QStringLiteral("5"));
  commit(*box, "7");
  EXPECT_EQ(box->currentText(), QStringLiteral("7"));
  press(window, Qt::Key_Return);
  ASSERT_TRUE(eventually([this] { return rows.edits.size() == 1U; }));
  EXPECT_EQ(rows.edits[0], PropertyList::integer(7));
}

TEST_F(CellEditor, ARefusedKeystrokeKeepsTheUndoHistory) {
  TextFieldCell cell = textField();
  auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(2);
  cell.formatter = formatter;
  show(cell);
  clickCell();
  type(*editor<QLineEdit>(), "abc");
  press(window, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(editor<QLineEdit>()->text(), QString());
}

TEST_F(CellEditor, APasswordShowsBullets) {
  show(SecureTextFieldCell{}, PropertyList::string("secret"));
  EXPECT_EQ(valueIndex().data().toString(), QString(6, QChar(0x2022)));
  clickCell();
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  EXPECT_EQ(editor<QLineEdit>()->echoMode(), QLineEdit::Password);
}

TEST_F(CellEditor, ANumberIsTypedOrChosenFromItsList) {
  ComboBoxCell cell;
  cell.editable = true;
  cell.items = {0, 5, 10};
  auto formatter = std::make_shared<MyNumberFormatter>();
  formatter->setMinimum(0);
  formatter->setMaximum(10);
  cell.formatter = formatter;
  show(cell, PropertyList::integer(5));
  clickCell();
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->currentText(), QStringLiteral("5"));
  EXPECT_EQ(box->count(), 3);
  type(*box->lineEdit(), "x");
  EXPECT_EQ(box->currentText(), QStringLiteral("5"));
  press(window, Qt::Key_Down);
  EXPECT_EQ(box->currentText(), QStringLiteral("10"));
  EXPECT_TRUE(rows.edits.empty());
  press(window, Qt::Key_Return);
  ASSERT_TRUE(eventually([this] { return rows.edits.size() == 1U; }));
  EXPECT_EQ(rows.edits[0], PropertyList::integer(10));
  EXPECT_TRUE(eventually([this] { return editor<QComboBox>() == nullptr; }));
}

TEST_F(CellEditor, AMenuOpensAtOnceAndStoresTheIndexOfTheChoice) {
  PopUpButtonCell cell;
  cell.items = {"First", "Second", "Third"};
  show(cell, PropertyList::integer(0));
  clickCell();
  auto* menu = editor<QComboBox>();
  ASSERT_NE(menu, nullptr);
  ASSERT_TRUE(eventually([&] { return menu->view()->isVisible(); }));
  QTest::keyClick(menu->view(), Qt::Key_Down);
  QTest::keyClick(menu->view(), Qt::Key_Return);
  ASSERT_TRUE(eventually([this] { return rows.edits.size() == 1U; }));
  EXPECT_EQ(rows.edits[0], PropertyList::integer(1));
  EXPECT_TRUE(eventually([this] { return editor<QComboBox>() == nullptr; }));
}

TEST_F(CellEditor, ACellThatMayNotBeEditedStaysClosed) {
  show(textField());
  rows.editable = false;
  clickCell();
  EXPECT_EQ(editor<QLineEdit>(), nullptr);
  rows.editable = true;
  outline.setEnabled(false);
  clickCell();
  EXPECT_EQ(editor<QLineEdit>(), nullptr);
}

// Each can mean a copy by root.
TEST_F(CellEditor, TheStoredValueIsReadOnceFromTheClickUntilTheEditIsStored) {
  show(textField(), PropertyList::string("old"));
  QApplication::processEvents();
  rows.reads = 0;
  clickCell();
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  EXPECT_EQ(rows.reads, 1);
  type(*editor<QLineEdit>(), "new");
  QApplication::processEvents();
  int readsBefore = -1;
  rows.onEdit = [&] { readsBefore = rows.reads; };
  press(window, Qt::Key_Return);
  EXPECT_TRUE(eventually([this] { return editor<QLineEdit>() == nullptr; }));
  EXPECT_EQ(readsBefore, 1) << "what was stored does not matter for what is typed";
  EXPECT_GT(rows.reads, readsBefore) << "the row shows what is stored now";
}

TEST_F(CellEditor, TheRowsAreHeldFromTheFirstLetterUntilTheTextIsStored) {
  show(textField(), PropertyList::string("old"));
  EXPECT_FALSE(outline.holdsRows());
  clickCell();
  type(*editor<QLineEdit>(), "x");
  EXPECT_TRUE(outline.holdsRows());
  rows.onEdit = [this] { EXPECT_TRUE(outline.holdsRows()); };
  press(window, Qt::Key_Return);
  EXPECT_TRUE(eventually([this] { return !outline.holdsRows(); }));
  EXPECT_EQ(rows.edits, (std::vector<PropertyList>{PropertyList::string("x")}));
}

TEST_F(CellEditor, AReloadThatComesAllTheSameStoresWhatIsBeingTyped) {
  show(textField(), PropertyList::string("old"));
  clickCell();
  type(*editor<QLineEdit>(), "x");
  outline.reloadData();
  EXPECT_EQ(editor<QLineEdit>(), nullptr);
  EXPECT_EQ(rows.edits, (std::vector<PropertyList>{PropertyList::string("x")}));
}

}  // namespace
}  // namespace corvane::test
