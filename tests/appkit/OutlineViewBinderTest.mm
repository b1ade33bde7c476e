#import "WindowFixture.h"
#include "binders/OutlineViewBinder.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane::test {
namespace {

/// Two plug-ins with one row of each kind of cell below the first.
class Tree final : public OutlineViewDataSource, public OutlineViewDelegate {
 public:
  int outlineViewNumberOfChildrenOfItem(OutlineView& /*outline*/, const OutlineItem& item) override {
    return static_cast<int>((item ? below : top).size());
  }
  bool outlineViewIsItemExpandable(OutlineView& outline, const OutlineItem& item) override {
    return outline.levelForItem(item) == 0;
  }
  PropertyList outlineViewChildOfItem(OutlineView& /*outline*/, int index, const OutlineItem& item) override {
    return (item ? below : top).at(static_cast<std::size_t>(index));
  }
  std::string outlineViewPersistentNameForItem(OutlineView& /*outline*/, const OutlineItem& item) override {
    return *item.object().asString();
  }
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView& outline, const TableColumn& column,
                                                         const OutlineItem& item) override {
    const std::string name = *item.object().asString();
    const auto stored = values.find(name);
    if (column.identifier == "Enabled") return PropertyList::boolean(enabled);
    if (stored != values.end()) return stored->second;
    if (outline.levelForItem(item) > 0) return {};
    TextAttributes bold;
    bold.font = Font{Font::Family::User, 13, true};
    return AttributedText(name, bold);
  }
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline, const PropertyList& value,
                                                     const TableColumn& column,
                                                     const OutlineItem& item) override {
    ++writes;
    if (column.identifier == "Enabled") {
      enabled = *value.asBoolean();
    } else {
      values[*item.object().asString()] = value;
    }
    outline.reloadItem(item);
  }

  void outlineViewItemDidExpand(OutlineView& /*outline*/, const OutlineItem& /*item*/) override {
    ++expansions;
  }
  bool outlineViewShouldEditTableColumnItem(OutlineView& outline, const TableColumn& column,
                                            const OutlineItem& item) override {
    return column.identifier == "Plugin" && outline.levelForItem(item) == 1;
  }
  CellReference outlineViewDataCellForTableColumnItem(OutlineView& outline, const TableColumn* column,
                                                      const OutlineItem& item) override {
    if (outline.levelForItem(item) == 0) return nullptr;
    if (column->identifier == "Enabled") return std::make_shared<Cell>(EmptyCell{});
    return std::make_shared<Cell>(cells.at(*item.object().asString()));
  }
  double outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem& item) override {
    return *item.object().asString() == "menu" ? 2 * outline.rowHeight() : outline.rowHeight();
  }
  bool outlineViewShouldShowOutlineCellForItem(OutlineView& outline, const OutlineItem& item) override {
    return outline.levelForItem(item) == 0 && item.object() != PropertyList::string("bare");
  }
  void outlineViewWillDisplayCellForTableColumnItem(OutlineView& /*outline*/, Cell& /*cell*/,
                                                    const TableColumn& /*column*/,
                                                    const OutlineItem& /*item*/) override {}

  Array top = strings({"first", "second", "bare"});
  Array below = strings({"switch", "button", "picker", "menu", "text", "secret", "number", "plain", "empty"});
  std::map<std::string, Cell> cells;
  std::map<std::string, ObjectValue> values;
  bool enabled = true;
  int writes = 0;
  int expansions = 0;

  static Array strings(std::initializer_list<const char*> texts) {
    Array array = Array::make();
    for (const char* text : texts) array.append(PropertyList::string(text));
    return array;
  }
};

class AppKitOutline : public AppKitWindowTest {
 protected:
  AppKitOutline() {
    ButtonCell flip;
    flip.title = AttributedText("Watch the site");
    ButtonCell press;
    press.kind = ButtonCell::Kind::MomentaryPushIn;
    press.roundedBezel = true;
    press.title = AttributedText("Test Settings");
    press.action = [this](OutlineView&) { ++presses; };
    ButtonCell picker;
    picker.image = FileTypeIcon{"fldr"};
    picker.imagePosition = ButtonCell::ImagePosition::Left;
    picker.title = AttributedText("/etc");
    picker.action = [this](OutlineView&) { ++picks; };
    PopUpButtonCell menu;
    menu.items = {"Ask", "Look", "Ask"};
    TextFieldCell text;
    text.editable = true;
    text.placeholder = "Click to enter text";
    const auto atMostFive = std::make_shared<CustomTextFieldCellFormatter>();
    atMostFive->setMaximumLength(5);
    text.formatter = atMostFive;
    SecureTextFieldCell secret;
    ComboBoxCell number;
    number.editable = true;
    number.items = {0, 5, 10};
    number.formatter = std::make_shared<MyNumberFormatter>(0, 10, 0);
    tree.cells = {{"switch", flip},      {"button", press},  {"picker", picker}, {"menu", menu},
                  {"text", text},        {"secret", secret}, {"number", number}, {"plain", TextFieldCell{}},
                  {"empty", EmptyCell{}}};
    outline.setDataSource(&tree);
    outline.setDelegate(&tree);
    page.add(std::make_unique<appkit::OutlineViewBinder>(outline, view));
    page.scrollView(NSMakeRect(20, 20, 600, 400), view);
    outline.reloadData();
    outline.expandItem(outline.itemAtRow(0));
    [window display];
  }
  static OutlineView::Column column(const char* name, double width, bool checkBox) {
    OutlineView::Column result;
    result.identifier = result.title = name;
    result.width = width;
    result.checkBox = checkBox;
    return result;
  }
  [[nodiscard]] int rowOf(const std::string& name) {
    for (int row = 0; row < outline.numberOfRows(); ++row) {
      if (outline.itemAtRow(row).object() == PropertyList::string(name)) return row;
    }
    ADD_FAILURE() << "there is no row " << name;
    return 0;
  }
  void clickCell(const std::string& name, NSInteger columnIndex = 1) {
    [view scrollRowToVisible:rowOf(name)];
    const NSRect frame = [view frameOfCellAtColumn:columnIndex row:rowOf(name)];
    click(view, NSMakePoint(NSMinX(frame) + MIN(10, NSWidth(frame) / 2), NSMidY(frame)));
  }
  void clickTriangle(int row) {
    const NSRect triangle = [view frameOfOutlineCellAtRow:row];
    click(view, NSMakePoint(NSMidX(triangle), NSMidY(triangle)));
  }
  void goTo(const std::string& name) {
    ASSERT_TRUE([window makeFirstResponder:view]);
    outline.selectRow(rowOf(name));
  }
  [[nodiscard]] PropertyList value(const std::string& name) {
    const auto found = tree.values.find(name);
    return found != tree.values.end() ? std::get<PropertyList>(found->second) : PropertyList();
  }

  OutlineView outline{{column("Enabled", 56, true), column("Plugin", 500, false)}};
  Tree tree;
  int presses = 0;
  int picks = 0;
  CorvaneOutlineTree* view =
      [[[CorvaneOutlineTree alloc] initWithFrame:NSMakeRect(0, 0, 560, 380)] autorelease];
};

TEST_F(AppKitOutline, TheRowsAreTheControls) {
  EXPECT_EQ([view numberOfRows], 12);
  EXPECT_EQ([view levelForRow:0], 0);
  EXPECT_EQ([view levelForRow:1], 1);
  EXPECT_TRUE([view isItemExpanded:[view itemAtRow:0]]);
  picture(window, "outline");
}

TEST_F(AppKitOutline, WithoutRowsItsPlaceStandsEmptyButForThePlaceholder) {
  const auto pixels = [this] {
    [window display];
    [view lockFocus];
    NSBitmapImageRep* seen =
        [[[NSBitmapImageRep alloc] initWithFocusedViewRect:[view visibleRect]] autorelease];
    [view unlockFocus];
    return [seen representationUsingType:NSPNGFileType properties:[NSDictionary dictionary]];
  };
  tree.top = Array::make();
  outline.reloadData();
  NSData* empty = pixels();
  outline.setPlaceholder("No plugins are installed.");
  NSData* named = pixels();
  EXPECT_FALSE([named isEqual:empty]) << "the placeholder is not drawn";
  picture(window, "outline without rows");
  tree.top = Tree::strings({"first"});
  outline.reloadData();
  NSData* filled = pixels();
  outline.setPlaceholder("");
  EXPECT_TRUE([pixels() isEqual:filled]) << "the placeholder stands among rows";
}

TEST_F(AppKitOutline, TheTriangleOpensAndCloses) {
  clickTriangle(0);
  EXPECT_FALSE(outline.isItemExpanded(outline.itemAtRow(0)));
  EXPECT_EQ([view numberOfRows], 3);
  clickTriangle(1);
  EXPECT_TRUE(outline.isItemExpanded(outline.itemAtRow(1)));
  EXPECT_EQ([view numberOfRows], 12);
}

TEST_F(AppKitOutline, OnlyTheRowsThatTheDelegateNamesShowOne) {
  EXPECT_FALSE(NSIsEmptyRect([view frameOfOutlineCellAtRow:0]));
  EXPECT_TRUE(NSIsEmptyRect([view frameOfOutlineCellAtRow:1]));
  EXPECT_TRUE(NSIsEmptyRect([view frameOfOutlineCellAtRow:rowOf("bare")]));
}

TEST_F(AppKitOutline, EachRowIsAsHighAsTheDelegateSays) {
  EXPECT_EQ(NSHeight([view rectOfRow:rowOf("text")]), outline.rowHeight());
  EXPECT_EQ(NSHeight([view rectOfRow:rowOf("menu")]), 2 * outline.rowHeight());
  EXPECT_EQ([view rowAtPoint:NSMakePoint(80, NSMaxY([view rectOfRow:rowOf("menu")]) - 2)], rowOf("menu"));
}

TEST_F(AppKitOutline, ASwitchIsSwitchedOnceByOneClick) {
  clickCell("switch");
  EXPECT_EQ(value("switch"), PropertyList::boolean(true));
  EXPECT_EQ(tree.writes, 1);
  clickCell("switch");
  EXPECT_EQ(value("switch"), PropertyList::boolean(false));
  EXPECT_EQ(tree.writes, 2);
}

TEST_F(AppKitOutline, TheCheckBoxOfThePluginStandsInItsOwnColumn) {
  clickCell("first", 0);
  EXPECT_FALSE(tree.enabled);
  EXPECT_EQ(tree.writes, 1);
}

TEST_F(AppKitOutline, AButtonActsOnceAndSelectsItsRow) {
  clickCell("button");
  EXPECT_EQ(presses, 1);
  EXPECT_EQ(outline.selectedRow(), rowOf("button"));
  clickCell("picker");
  EXPECT_EQ(picks, 1);
  EXPECT_EQ(tree.writes, 0);
}

TEST_F(AppKitOutline, AClickBesideAControlDoesNothing) {
  const NSRect row = [view rectOfRow:rowOf("switch")];
  click(view, NSMakePoint(NSMaxX(row) - 5, NSMidY(row)));
  EXPECT_EQ(tree.writes, 0);
}

TEST_F(AppKitOutline, OneClickOpensAnEditorAndReturnStoresWhatWasTyped) {
  clickCell("text");
  ASSERT_TRUE(isTyping(window));
  EXPECT_TRUE(outline.holdsRows());
  type(window, "monitor");
  EXPECT_EQ(typedText(window), "monit") << "the formatter admits five letters";
  press(window, kReturn);
  EXPECT_EQ(value("text"), PropertyList::string("monit"));
  EXPECT_FALSE(isTyping(window));
  EXPECT_FALSE(outline.holdsRows());
  EXPECT_EQ(tree.writes, 1);
}

TEST_F(AppKitOutline, EscapeDropsWhatWasTyped) {
  clickCell("text");
  type(window, "lost");
  press(window, kEscape);
  EXPECT_FALSE(isTyping(window));
  EXPECT_EQ(tree.writes, 0);
  EXPECT_EQ([window firstResponder], view);
}

TEST_F(AppKitOutline, LeavingAnEditorThatWasNotTypedInStoresNothing) {
  clickCell("text");
  press(window, kReturn);
  EXPECT_EQ(tree.writes, 0);
}

TEST_F(AppKitOutline, APasswordIsTypedInASecureCell) {
  EXPECT_TRUE([[view preparedCellAtColumn:1
                                      row:rowOf("secret")] isKindOfClass:[NSSecureTextFieldCell class]]);
  clickCell("secret");
  ASSERT_TRUE(isTyping(window));
  type(window, "pa55 & word");
  press(window, kReturn);
  EXPECT_EQ(value("secret"), PropertyList::string("pa55 & word"));
}

TEST_F(AppKitOutline, ANumberIsCheckedWithEachKey) {
  clickCell("number");
  ASSERT_TRUE(isTyping(window));
  type(window, "x");
  EXPECT_EQ(typedText(window), "");
  type(window, "1a11");
  EXPECT_EQ(typedText(window), "1");
  type(window, "0");
  press(window, kReturn);
  EXPECT_EQ(value("number"), PropertyList::integer(10));
  auto* box = static_cast<NSComboBoxCell*>([view preparedCellAtColumn:1 row:rowOf("number")]);
  EXPECT_EQ([box numberOfItems], 3);
}

TEST_F(AppKitOutline, AMenuShowsItsItemsAlsoAlikeOnes) {
  tree.values["menu"] = PropertyList::integer(1);
  auto* menu = static_cast<NSPopUpButtonCell*>([view preparedCellAtColumn:1 row:rowOf("menu")]);
  ASSERT_TRUE([menu isKindOfClass:[NSPopUpButtonCell class]]);
  EXPECT_EQ([menu numberOfItems], 3);
  EXPECT_EQ([menu indexOfSelectedItem], 1);
  EXPECT_TRUE([[menu itemTitleAtIndex:2] isEqual:@"Ask"]);
}

TEST_F(AppKitOutline, AChoiceFromAMenuIsStoredOnce) {
  auto* menu = static_cast<NSPopUpButtonCell*>([view preparedCellAtColumn:1 row:rowOf("menu")]);
  [menu selectItemAtIndex:2];
  [NSApp sendAction:[menu action] to:[menu target] from:view];
  [static_cast<id>([view dataSource]) outlineView:view
                                   setObjectValue:[NSNumber numberWithInt:2]
                                   forTableColumn:[[view tableColumns] objectAtIndex:1]
                                           byItem:[view itemAtRow:rowOf("menu")]];
  EXPECT_EQ(value("menu"), PropertyList::integer(2));
  EXPECT_EQ(tree.writes, 1);
}

TEST_F(AppKitOutline, ADisabledOutlineIsOpenedAndClosedButNotUsed) {
  outline.setEnabled(false);
  for (const char* row : {"switch", "button", "text"}) clickCell(row);
  EXPECT_EQ(tree.writes, 0);
  EXPECT_EQ(presses, 0);
  EXPECT_FALSE(isTyping(window));
  clickTriangle(0);
  EXPECT_EQ([view numberOfRows], 3);
}

TEST_F(AppKitOutline, ClosingTheLockDropsWhatIsBeingTyped) {
  clickCell("text");
  type(window, "lost");
  outline.setEnabled(false);
  EXPECT_FALSE(isTyping(window));
  EXPECT_EQ(tree.writes, 0);
}

TEST_F(AppKitOutline, AReloadKeepsTheRowsThatStayAndForgetsThoseThatHaveGone) {
  id stays = [view itemAtRow:0];
  tree.top = Array::make({PropertyList::string("new"), tree.top.at(0)});
  outline.reloadData();
  EXPECT_EQ([view numberOfRows], 11);
  EXPECT_EQ([view itemAtRow:1], stays);
  EXPECT_TRUE([view isItemExpanded:stays]);
  tree.top = Tree::strings({"second", "first"});  // other objects, of which one has the name of an open row
  outline.reloadData();
  EXPECT_EQ([view numberOfRows], 11);
  EXPECT_TRUE([view isItemExpanded:[view itemAtRow:1]]);
  EXPECT_EQ([view rowForItem:stays], -1);
  [window display];
}

TEST_F(AppKitOutline, TheSelectionIsTheControls) {
  outline.selectRow(3);
  EXPECT_EQ([view selectedRow], 3);
  outline.collapseItem(outline.itemAtRow(0));
  EXPECT_EQ([view selectedRow], -1);
  EXPECT_EQ(outline.selectedRow(), -1);
}

TEST_F(AppKitOutline, TheKeyboardGoesThroughTheRowsAndUsesEachControl) {
  goTo("first");
  press(window, kDown);
  EXPECT_EQ(outline.selectedRow(), 1);
  goTo("switch");
  press(window, " ");
  EXPECT_EQ(value("switch"), PropertyList::boolean(true));
  goTo("button");
  press(window, kReturn);
  EXPECT_EQ(presses, 1);
  goTo("picker");
  press(window, " ");
  EXPECT_EQ(picks, 1);
  goTo("text");
  press(window, kReturn);
  ASSERT_TRUE(isTyping(window));
  type(window, "abc");
  press(window, kReturn);
  EXPECT_EQ(value("text"), PropertyList::string("abc"));
  goTo("first");
  press(window, " ");
  EXPECT_FALSE(tree.enabled);
}

TEST_F(AppKitOutline, TheKeyboardOpensAndClosesRows) {
  goTo("text");
  press(window, kLeft);
  EXPECT_EQ(outline.selectedRow(), 0) << "to the row above";
  press(window, kLeft);
  EXPECT_FALSE(outline.isItemExpanded(outline.itemAtRow(0)));
  press(window, kRight);
  EXPECT_TRUE(outline.isItemExpanded(outline.itemAtRow(0)));
}

TEST_F(AppKitOutline, TheKeyboardChoosesFromAMenu) {
  tree.values["menu"] = PropertyList::integer(0);
  goTo("menu");
  press(window, " ");
  press(window, kDown);
  press(window, kReturn);
  EXPECT_EQ(value("menu"), PropertyList::integer(1));
  EXPECT_EQ(tree.writes, 1);
}

TEST_F(AppKitOutline, TheRowsStayWhileAMenuIsOpen) {
  tree.values["menu"] = PropertyList::integer(0);
  goTo("menu");
  for (const char* end : {kReturn, kEscape}) {
    press(window, " ");
    EXPECT_TRUE(outline.holdsRows());
    press(window, end);
    EXPECT_FALSE(outline.holdsRows());
  }
  press(window, " ");
  [window makeFirstResponder:nil];
  settle();
  EXPECT_FALSE(outline.holdsRows());
  EXPECT_EQ(tree.writes, 0);
}

TEST_F(AppKitOutline, ARowThatTheKeyboardIsOnIsMarkedWithoutASelection) {
  outline.setHighlightsSelection(false);
  goTo("switch");
  [window display];
  picture(window, "outline keyboard");
  EXPECT_EQ([view selectedRow], rowOf("switch"));
}

}  // namespace
}  // namespace corvane::test
