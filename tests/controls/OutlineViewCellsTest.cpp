#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "controls/OutlineView.h"
#include "controls/TreeSource.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane {
namespace {

using test::TreeSource;
using Names = std::vector<std::string>;
using Edits = std::vector<TreeSource::Edit>;

/// One row, "row", in the column that a test plays.
class OutlineViewCellsTest : public testing::Test {
 protected:
  OutlineViewCellsTest() {
    source.top = {TreeSource::branch("row", {}), TreeSource::leaf("below")};
    outline.setDataSource(&source);
    outline.setDelegate(&source);
    outline.reloadData();
  }

  const OutlineView::Column& enabledColumn() const { return outline.columns()[0]; }
  const OutlineView::Column& pluginColumn() const { return outline.columns()[1]; }
  void play(Cell cell, ObjectValue value = {}) {
    source.cells[{"Plugin", "row"}] = std::move(cell);
    source.values[{"Plugin", "row"}] = std::move(value);
  }
  PreparedCell prepared() { return outline.preparedCell(pluginColumn(), outline.itemAtRow(0)); }
  template <typename Kind>
  Kind preparedAs() {
    const PreparedCell cell = prepared();
    const auto* kind = std::get_if<Kind>(cell.cell.get());
    EXPECT_NE(kind, nullptr);
    return kind != nullptr ? *kind : Kind();
  }
  static Edits edit(const std::string& column, PropertyList value) {
    return {{"row", column, std::move(value)}};
  }

  TreeSource source;
  OutlineView outline{{{{"Enabled", "Enabled", 50}, true}, {{"Plugin", "Plugin", 500}, false}}};
};

// Showing.

TEST_F(OutlineViewCellsTest, ACellIsMadeThenGivenItsValueThenDressed) {
  play(TextFieldCell{}, PropertyList::string("value"));
  std::string seen;
  source.onDisplay = [&](Cell& cell) { seen = std::get<TextFieldCell>(cell).text; };
  static_cast<void>(prepared());
  EXPECT_EQ(source.calls, (Names{"cell", "value", "display"}));
  EXPECT_EQ(seen, "value");
}

TEST_F(OutlineViewCellsTest, TheDefaultCellOfACheckBoxColumnIsASwitchWithTheBooleanValue) {
  for (const bool on : {true, false}) {
    source.values[{"Enabled", "row"}] = PropertyList::boolean(on);
    const PreparedCell cell = outline.preparedCell(enabledColumn(), outline.itemAtRow(0));
    const auto& button = std::get<ButtonCell>(*cell.cell);
    EXPECT_EQ(button.kind, ButtonCell::Kind::Switch);
    EXPECT_EQ(button.on, on);
    EXPECT_EQ(std::get<PropertyList>(cell.value), PropertyList::boolean(on));
  }
}

TEST_F(OutlineViewCellsTest, TheDefaultCellOfATextColumnIsATextThatCannotBeEdited) {
  TextAttributes bold;
  bold.font = Font{Font::Family::User, 13, true, false};
  const AttributedText styled(" Disk check", bold);
  source.values[{"Plugin", "row"}] = styled;
  const PreparedCell cell = prepared();
  const auto& text = std::get<TextFieldCell>(*cell.cell);
  EXPECT_FALSE(text.editable);
  EXPECT_EQ(text.text, " Disk check");
  EXPECT_EQ(std::get<AttributedText>(cell.value), styled);
}

TEST_F(OutlineViewCellsTest, ARowThatIsGoneHasAnEmptyCellAndAsksNobody) {
  const OutlineItem gone = outline.itemAtRow(1);
  source.top.pop_back();
  outline.reloadData();
  EXPECT_TRUE(std::holds_alternative<EmptyCell>(*outline.preparedCell(pluginColumn(), gone).cell));
  EXPECT_TRUE(std::holds_alternative<EmptyCell>(*outline.preparedCell(pluginColumn(), {}).cell));
  EXPECT_TRUE(source.calls.empty());
  EXPECT_FALSE(outline.shouldEdit(pluginColumn(), gone));
  EXPECT_EQ(outline.heightOfRow(gone), outline.rowHeight());
}

TEST_F(OutlineViewCellsTest, ASwitchTakesTheBooleanOfItsValueAndAPushButtonNone) {
  const struct {
    ObjectValue value;
    bool on;
  } cases[] = {{PropertyList::boolean(true), true},
               {PropertyList::integer(0), false},
               {PropertyList::integer(2), true},
               {PropertyList::string("YES"), true},
               {PropertyList::string("/usr"), false},
               {AttributedText("YES"), false},
               {std::monostate(), false}};
  for (const auto& shown : cases) {
    play(ButtonCell{}, shown.value);
    EXPECT_EQ(preparedAs<ButtonCell>().on, shown.on);
  }
  ButtonCell push;
  push.kind = ButtonCell::Kind::MomentaryPushIn;
  play(push, PropertyList::boolean(true));
  EXPECT_FALSE(preparedAs<ButtonCell>().on);
}

TEST_F(OutlineViewCellsTest, APopUpSelectsTheItemOfItsIntegerValue) {
  const struct {
    ObjectValue value;
    int selected;
  } cases[] = {{PropertyList::integer(1), 1},
               {PropertyList::string("1"), 1},
               {PropertyList::integer(2), -1},
               {PropertyList::integer(-5), -1},
               {std::monostate(), 0}};  // as the delegate made it
  for (const auto& shown : cases) {
    PopUpButtonCell popUp;
    popUp.items = {"Mail", "Page"};
    popUp.selectedIndex = 0;
    play(popUp, shown.value);
    EXPECT_EQ(preparedAs<PopUpButtonCell>().selectedIndex, shown.selected);
  }
}

TEST_F(OutlineViewCellsTest, TextCellsShowTheFormattersTextOrTheDescription) {
  play(TextFieldCell{}, PropertyList::integer(7));
  EXPECT_EQ(preparedAs<TextFieldCell>().text, "7");
  play(SecureTextFieldCell{}, PropertyList::string("secret"));
  EXPECT_EQ(preparedAs<SecureTextFieldCell>().text, "secret");
  ComboBoxCell combo;
  combo.formatter = std::make_shared<MyNumberFormatter>(0, 10, 0);
  play(combo, PropertyList::real(3.7));
  EXPECT_EQ(preparedAs<ComboBoxCell>().text, "3");
  play(combo, PropertyList::string("text"));
  EXPECT_EQ(preparedAs<ComboBoxCell>().text, "");
  play(TextFieldCell{}, std::monostate());
  EXPECT_EQ(preparedAs<TextFieldCell>().text, "");
}

TEST_F(OutlineViewCellsTest, HeightsAndTrianglesAreTheDelegatesAndLeavesHaveNoTriangle) {
  EXPECT_EQ(outline.heightOfRow(outline.itemAtRow(0)), 3 * outline.rowHeight());
  EXPECT_TRUE(outline.showsOutlineCell(outline.itemAtRow(0)));
  EXPECT_FALSE(outline.showsOutlineCell(outline.itemAtRow(1)));
  outline.setDelegate(nullptr);
  EXPECT_EQ(outline.heightOfRow(outline.itemAtRow(0)), outline.rowHeight());
}

// Clicking.

TEST_F(OutlineViewCellsTest, AClickOnACheckBoxSelectsTheRowAndSetsTheOppositeState) {
  source.editable = false;  // clicks are no editing in place
  source.values[{"Enabled", "row"}] = PropertyList::boolean(true);
  outline.clickCell(outline.itemAtRow(0), enabledColumn());
  EXPECT_EQ(outline.selectedRow(), 0);
  EXPECT_EQ(source.edits, edit("Enabled", PropertyList::boolean(false)));

  source.edits.clear();
  play(ButtonCell{}, PropertyList::boolean(false));
  outline.clickCell(outline.itemAtRow(0), pluginColumn());
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::boolean(true)));
}

TEST_F(OutlineViewCellsTest, AClickOnAButtonWithAnActionOnlyPerformsIt) {
  for (const ButtonCell::Kind kind : {ButtonCell::Kind::Switch, ButtonCell::Kind::MomentaryPushIn}) {
    std::string title;
    int selected = -1;
    ButtonCell button;
    button.kind = kind;
    button.title = AttributedText(" /tmp/b");
    button.action = [&](OutlineView& sender) {
      title = std::get<ButtonCell>(*sender.selectedCell()).title.text;
      selected = sender.selectedRow();
    };
    play(button);
    outline.deselectAll();
    outline.clickCell(outline.itemAtRow(0), pluginColumn());
    EXPECT_EQ(title, " /tmp/b");
    EXPECT_EQ(selected, 0);
  }
  EXPECT_TRUE(source.edits.empty());
}

TEST_F(OutlineViewCellsTest, AnActionMayReloadTheTreeAndNoClickBeginsAnotherOneMeanwhile) {
  int actions = 0;
  ButtonCell button;
  button.action = [&](OutlineView& sender) {
    ++actions;
    source.top = {TreeSource::branch("row", {})};
    sender.reloadData();
    sender.clickCell(sender.itemAtRow(0), pluginColumn());
  };
  play(button);
  outline.clickCell(outline.itemAtRow(0), pluginColumn());
  EXPECT_EQ(actions, 1);
  outline.clickCell(outline.itemAtRow(0), pluginColumn());
  EXPECT_EQ(actions, 2);
}

TEST_F(OutlineViewCellsTest, AClickOnAnyOtherCellOnlySelectsTheRow) {
  ButtonCell push;
  push.kind = ButtonCell::Kind::MomentaryPushIn;
  PopUpButtonCell popUp;
  popUp.items = {"Mail"};
  for (const Cell& cell :
       std::vector<Cell>{EmptyCell{}, TextFieldCell{}, SecureTextFieldCell{}, ComboBoxCell{}, popUp, push}) {
    play(cell);
    outline.deselectAll();
    outline.clickCell(outline.itemAtRow(0), pluginColumn());
    EXPECT_EQ(outline.selectedRow(), 0);
    EXPECT_EQ(outline.selectedCell()->index(), cell.index());
  }
  EXPECT_TRUE(source.edits.empty());
}

TEST_F(OutlineViewCellsTest, ClicksOnADisabledOutlineOrOutsideItsRowsDoNothing) {
  source.values[{"Enabled", "row"}] = PropertyList::boolean(true);
  outline.clickCell(outline.itemAtRow(2), enabledColumn());
  outline.clickCell(outline.itemAtRow(-1), enabledColumn());
  outline.setEnabled(false);
  outline.clickCell(outline.itemAtRow(0), enabledColumn());
  EXPECT_EQ(outline.selectedRow(), -1);
  EXPECT_EQ(outline.selectedCell(), nullptr);
  EXPECT_TRUE(source.edits.empty());
}

// Editing.

class OutlineViewEditingTest : public OutlineViewCellsTest {
 protected:
  OutlineViewEditingTest() {
    outline.onReloadItem = [this](const OutlineItem&) { ++shownAfresh; };
  }
  TextFieldCell textCell(std::shared_ptr<Formatter> formatter = nullptr) const {
    TextFieldCell cell;
    cell.editable = true;
    cell.formatter = std::move(formatter);
    return cell;
  }
  ComboBoxCell comboCell() const {
    ComboBoxCell cell;
    cell.editable = true;
    cell.items = {5, 10};
    cell.formatter = std::make_shared<MyNumberFormatter>(5, 10, 5);
    return cell;
  }
  int shownAfresh = 0;
};

TEST_F(OutlineViewEditingTest, ATypedTextIsStoredAsItIsWithoutAFormatter) {
  play(textCell());
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("host"));
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::string("host")));
  EXPECT_EQ(shownAfresh, 0);
}

TEST_F(OutlineViewEditingTest, ATypedTextIsStoredAsItsFormatterReadsIt) {
  play(comboCell());
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("7"));
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::integer(7)));
}

TEST_F(OutlineViewEditingTest, AChosenNumberIsStoredAsItIs) {
  play(comboCell());
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::integer(10));
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::integer(10)));
}

TEST_F(OutlineViewEditingTest, AClearedNumberIsStoredAsTheDefaultThatIsShown) {
  play(comboCell());
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string(""));
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::integer(5)));
}

TEST_F(OutlineViewEditingTest, ATextThatCouldNotHaveBeenTypedIsNotStored) {
  play(comboCell());
  for (const char* text : {"11", "4", "7x"}) {
    outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string(text));
  }
  const auto noText = std::make_shared<CustomTextFieldCellFormatter>();
  noText->setMaximumLength(0);
  SecureTextFieldCell password;
  password.formatter = noText;
  play(password);
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("p"));
  EXPECT_TRUE(source.edits.empty());
  EXPECT_EQ(shownAfresh, 4);
}

TEST_F(OutlineViewEditingTest, CellsThatMayNotBeEditedTakeNoText) {
  play(TextFieldCell{});  // not editable
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("x"));
  play(textCell());
  source.editable = false;
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("x"));
  play(EmptyCell{});
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("x"));
  play(ButtonCell{});
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::boolean(true));
  EXPECT_TRUE(source.edits.empty());
  EXPECT_EQ(shownAfresh, 4);
}

TEST_F(OutlineViewEditingTest, APopUpStoresTheIndexOfAnItemWithoutAskingForEditing) {
  PopUpButtonCell popUp;
  popUp.items = {"Mail", "Page"};
  play(popUp);
  source.editable = false;
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::integer(1));
  EXPECT_EQ(source.edits, edit("Plugin", PropertyList::integer(1)));

  source.edits.clear();
  for (const PropertyList& value :
       {PropertyList::integer(2), PropertyList::integer(-1), PropertyList::string("1"), PropertyList()}) {
    outline.editCell(outline.itemAtRow(0), pluginColumn(), value);
  }
  EXPECT_TRUE(source.edits.empty());
}

TEST_F(OutlineViewEditingTest, AnOutlineThatWasDisabledOrHiddenMeanwhileStoresNothing) {
  PopUpButtonCell menu;
  menu.items = {"Mail", "Page"};
  const std::pair<Cell, PropertyList> edited[] = {{textCell(), PropertyList::string("x")},
                                                  {menu, PropertyList::integer(1)}};
  for (const auto& [cell, value] : edited) {
    play(cell);
    EXPECT_TRUE(outline.shouldEdit(pluginColumn(), outline.itemAtRow(0)));
    outline.setEnabled(false);
    EXPECT_FALSE(outline.shouldEdit(pluginColumn(), outline.itemAtRow(0)));
    outline.editCell(outline.itemAtRow(0), pluginColumn(), value);
    outline.setEnabled(true);
    outline.setHidden(true);
    outline.editCell(outline.itemAtRow(0), pluginColumn(), value);
    outline.setHidden(false);
    outline.editCell(outline.itemAtRow(2), pluginColumn(), value);
  }
  EXPECT_TRUE(source.edits.empty());
}

TEST_F(OutlineViewEditingTest, ADataSourceMayReloadTheTreeWhenItTakesAValue) {
  source.onSet = [&](OutlineView& view, const OutlineItem& item) {
    source.top.erase(source.top.begin());
    view.reloadData();
    EXPECT_EQ(TreeSource::nameOf(item.object()), "row");  // still a valid handle
    view.reloadItem(item);
  };
  play(textCell());
  outline.editCell(outline.itemAtRow(0), pluginColumn(), PropertyList::string("x"));
  EXPECT_EQ(source.edits.size(), 1U);
  EXPECT_EQ(outline.numberOfRows(), 1);
  EXPECT_EQ(shownAfresh, 0);  // the row has gone
}

TEST_F(OutlineViewEditingTest, AShellAsksWhetherAPartialTextMayStandInACell) {
  const auto check = [](const Cell& cell, const char* text) {
    return OutlineView::checkPartialString(cell, text);
  };
  EXPECT_TRUE(check(textCell(), "anything").valid);
  EXPECT_FALSE(check(comboCell(), "11").valid);
  EXPECT_TRUE(check(comboCell(), "7").valid);
  const PartialStringCheck cleared = check(comboCell(), "");
  EXPECT_FALSE(cleared.valid);
  EXPECT_EQ(cleared.newEditingString, "");
  const auto threeCharacters = std::make_shared<CustomTextFieldCellFormatter>();
  threeCharacters->setMaximumLength(3);
  EXPECT_TRUE(check(textCell(threeCharacters), "abc").valid);
  EXPECT_FALSE(check(textCell(threeCharacters), "abcd").valid);
  EXPECT_FALSE(check(TextFieldCell{}, "x").valid);  // not editable
  EXPECT_FALSE(check(ButtonCell{}, "x").valid);
  EXPECT_FALSE(check(EmptyCell{}, "x").valid);
}

}  // namespace
}  // namespace corvane
