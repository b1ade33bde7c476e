#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/OutlineView.h"
#include "controls/TreeSource.h"

namespace corvane {
namespace {

using test::TreeSource;
using Names = std::vector<std::string>;

/// Two plug-ins; the first has two options, of which the first has two values.
class OutlineViewTreeTest : public testing::Test {
 protected:
  OutlineViewTreeTest() {
    option = TreeSource::branch("option", {TreeSource::leaf("x"), TreeSource::leaf("y")});
    emptyOption = TreeSource::branch("empty option", {});
    plugin = TreeSource::branch("plugin", {option, emptyOption});
    otherPlugin = TreeSource::branch("other plugin", {TreeSource::leaf("z")});
    source.top = {plugin, otherPlugin};
    outline.setDataSource(&source);
    outline.setDelegate(&source);
    outline.reloadData();
  }

  Names rows() const {
    Names names;
    for (int row = 0; row < outline.numberOfRows(); ++row) {
      names.push_back(TreeSource::nameOf(outline.itemAtRow(row).object()));
    }
    return names;
  }
  OutlineItem row(const std::string& name) const {
    for (int index = 0; index < outline.numberOfRows(); ++index) {
      if (TreeSource::nameOf(outline.itemAtRow(index).object()) == name) return outline.itemAtRow(index);
    }
    return {};
  }

  Array option;
  Array emptyOption;
  Array plugin;
  Array otherPlugin;
  TreeSource source;
  OutlineView outline{{{{"Enabled", "Enabled", 50}, true}, {{"Plugin", "Plugin", 500}, false}}};
};

TEST_F(OutlineViewTreeTest, ShowsTheTopLevelUntilARowIsExpandedAndAsksForChildrenOnlyThen) {
  EXPECT_EQ(rows(), (Names{"plugin", "other plugin"}));
  EXPECT_TRUE(source.countsAskedFor.empty());
  outline.expandItem(row("plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "option", "empty option", "other plugin"}));
  EXPECT_EQ(source.countsAskedFor, (Names{"plugin"}));
}

TEST_F(OutlineViewTreeTest, KnowsRowsItemsParentsAndLevels) {
  outline.expandItem(row("plugin"), true);
  EXPECT_EQ(rows(), (Names{"plugin", "option", "x", "y", "empty option", "other plugin"}));
  for (int index = 0; index < outline.numberOfRows(); ++index) {
    EXPECT_EQ(outline.rowForItem(outline.itemAtRow(index)), index);
  }
  EXPECT_FALSE(outline.parentForItem(row("plugin")));
  EXPECT_EQ(outline.parentForItem(row("option")), row("plugin"));
  EXPECT_EQ(outline.parentForItem(row("y")), row("option"));
  EXPECT_EQ(outline.levelForItem(row("plugin")), 0);
  EXPECT_EQ(outline.levelForItem(row("y")), 2);
  EXPECT_FALSE(outline.itemAtRow(-1));
  EXPECT_FALSE(outline.itemAtRow(6));
  EXPECT_EQ(outline.rowForItem({}), -1);
  EXPECT_EQ(outline.levelForItem({}), -1);
}

TEST_F(OutlineViewTreeTest, TellsRowsOfTheSameObjectApart) {
  const PropertyList shared = TreeSource::leaf("same");
  source.top = {TreeSource::branch("a", {shared, shared}), TreeSource::branch("b", {shared})};
  outline.reloadData();
  outline.expandItem({}, true);
  ASSERT_EQ(rows(), (Names{"a", "same", "same", "b", "same"}));
  EXPECT_NE(outline.itemAtRow(1), outline.itemAtRow(2));
  EXPECT_TRUE(outline.itemAtRow(1).object().isSameObject(outline.itemAtRow(4).object()));
  EXPECT_EQ(outline.parentForItem(outline.itemAtRow(2)), outline.itemAtRow(0));
  EXPECT_EQ(outline.parentForItem(outline.itemAtRow(4)), outline.itemAtRow(3));
}

TEST_F(OutlineViewTreeTest, TheDelegateHearsOfEachExpansionOnceWithTheChildrenKnown) {
  source.onExpand = [&](OutlineView& view, const OutlineItem& item) {
    if (TreeSource::nameOf(item.object()) == "plugin") {
      EXPECT_EQ(view.childrenOfItem(item).size(), 2U);
      EXPECT_EQ(view.numberOfRows(), 4);
    }
  };
  outline.expandItem(row("plugin"));
  outline.expandItem(row("plugin"));
  EXPECT_EQ(source.expanded, (Names{"plugin"}));
  outline.expandItem(row("plugin"), true);  // the rows below only
  EXPECT_EQ(source.expanded, (Names{"plugin", "option", "empty option"}));
}

TEST_F(OutlineViewTreeTest, ADelegateMayExpandTheWholeRowWhenItExpands) {
  source.onExpand = [&](OutlineView& view, const OutlineItem& item) {
    if (!view.parentForItem(item)) view.expandItem(item, true);
  };
  outline.clickDisclosure(outline.itemAtRow(0));
  EXPECT_EQ(rows(), (Names{"plugin", "option", "x", "y", "empty option", "other plugin"}));
  EXPECT_EQ(source.expanded, (Names{"plugin", "option", "empty option"}));
}

TEST_F(OutlineViewTreeTest, ADelegateMayReloadTheTreeWhileARowExpandsWithAllBelow) {
  source.onExpand = [&](OutlineView& view, const OutlineItem& item) {
    if (TreeSource::nameOf(item.object()) != "option") return;
    source.top = {TreeSource::branch("new", {})};
    view.reloadData();
  };
  const OutlineItem gone = row("plugin");
  outline.expandItem(gone, true);
  EXPECT_EQ(rows(), (Names{"new"}));
  EXPECT_EQ(outline.rowForItem(gone), -1);
}

TEST_F(OutlineViewTreeTest, LeavesCannotBeExpandedAndAreNotAskedForChildren) {
  outline.expandItem(row("plugin"), true);
  source.countsAskedFor.clear();
  outline.expandItem(row("x"));
  EXPECT_FALSE(outline.isItemExpanded(row("x")));
  EXPECT_TRUE(outline.childrenOfItem(row("x")).empty());
  EXPECT_TRUE(source.countsAskedFor.empty());
  EXPECT_TRUE(outline.isItemExpanded(row("empty option")));
}

TEST_F(OutlineViewTreeTest, CollapsingKeepsTheExpansionOfTheRowsBelow) {
  outline.expandItem(row("plugin"), true);
  outline.collapseItem(row("plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "other plugin"}));
  source.expanded.clear();
  outline.expandItem(row("plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "option", "x", "y", "empty option", "other plugin"}));
  EXPECT_EQ(source.expanded, (Names{"plugin"}));
}

TEST_F(OutlineViewTreeTest, ASelectionThatIsHiddenByCollapsingIsGone) {
  outline.expandItem(row("plugin"), true);
  int changes = 0;
  outline.onSelectionChange = [&] { ++changes; };
  outline.selectRow(2);
  outline.collapseItem(row("option"));
  EXPECT_EQ(outline.selectedRow(), -1);
  EXPECT_EQ(changes, 2);
  outline.expandItem(row("option"));
  EXPECT_EQ(outline.selectedRow(), -1);

  outline.selectRow(outline.rowForItem(row("other plugin")));
  outline.collapseItem(row("plugin"));
  EXPECT_EQ(outline.selectedRow(), 1);  // the same row, further up
  EXPECT_EQ(changes, 3);
}

TEST_F(OutlineViewTreeTest, ReloadingKeepsRowsOfTheSameObjectsTheirExpansionAndTheSelection) {
  outline.expandItem(row("plugin"), true);
  const OutlineItem option1 = row("option");
  const OutlineItem y = row("y");
  outline.selectRow(outline.rowForItem(y));
  int selectionChanges = 0;
  outline.onSelectionChange = [&] { ++selectionChanges; };

  const PropertyList first = TreeSource::branch("first", {});
  source.top = {first, otherPlugin, plugin};
  option.insert(1, TreeSource::leaf("w"));
  outline.reloadData();

  EXPECT_EQ(rows(), (Names{"first", "other plugin", "plugin", "option", "w", "x", "y", "empty option"}));
  EXPECT_EQ(row("option"), option1);
  EXPECT_EQ(row("y"), y);
  EXPECT_EQ(outline.selectedRow(), 6);
  EXPECT_EQ(selectionChanges, 0);
}

TEST_F(OutlineViewTreeTest, ReloadingKeepsTheExpansionBelowACollapsedRow) {
  outline.expandItem(row("plugin"), true);
  outline.collapseItem(row("plugin"));
  outline.reloadData();
  outline.expandItem(row("plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "option", "x", "y", "empty option", "other plugin"}));
}

TEST_F(OutlineViewTreeTest, ReloadingReadsTheRowsBelowACollapsedRowAgain) {
  outline.expandItem(row("other plugin"));
  outline.collapseItem(row("other plugin"));
  otherPlugin.append(TreeSource::leaf("new"));
  outline.reloadData();
  outline.expandItem(row("other plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "other plugin", "z", "new"}));
}

TEST_F(OutlineViewTreeTest, TheDelegateHearsOnceWhenNothingHoldsTheRowsAnyMore) {
  EXPECT_FALSE(outline.holdsRows());
  OutlineView::Hold first = outline.holdRows();
  OutlineView::Hold second = outline.holdRows();
  OutlineView::Hold copy = second;
  first.reset();
  second.reset();
  EXPECT_TRUE(outline.holdsRows());
  EXPECT_EQ(source.releases, 0);
  copy.reset();
  EXPECT_FALSE(outline.holdsRows());
  EXPECT_EQ(source.releases, 1);
}

TEST_F(OutlineViewTreeTest, AHoldKeepsNothingFromBeingRead) {
  const OutlineView::Hold hold = outline.holdRows();
  source.top = {otherPlugin};
  outline.reloadData();
  EXPECT_EQ(rows(), (Names{"other plugin"})) << "to wait is for those who own what the rows show";
}

TEST_F(OutlineViewTreeTest, AHoldMayOutliveItsOutline) {
  auto view = std::make_unique<OutlineView>(std::vector<OutlineView::Column>());
  view->setDelegate(&source);
  OutlineView::Hold hold = view->holdRows();
  view.reset();
  hold.reset();
  EXPECT_EQ(source.releases, 0);
}

TEST_F(OutlineViewTreeTest, ARowIsFoundByItsIdentityForAsLongAsItIsThere) {
  outline.expandItem({}, true);
  std::set<OutlineItem::Id> ids;
  for (int index = 0; index < outline.numberOfRows(); ++index) {
    const OutlineItem item = outline.itemAtRow(index);
    EXPECT_EQ(outline.itemWithId(item.id()), item);
    ids.insert(item.id());
  }
  EXPECT_EQ(ids.size(), static_cast<std::size_t>(outline.numberOfRows()));
  EXPECT_FALSE(ids.contains(0));
  EXPECT_EQ(OutlineItem().id(), 0U);
  EXPECT_FALSE(outline.itemWithId(0));

  const OutlineItem staying = row("other plugin");
  const OutlineItem gone = row("x");
  source.top = {plugin.deepCopy(), otherPlugin};
  outline.reloadData();
  outline.expandItem({}, true);
  EXPECT_EQ(outline.itemWithId(staying.id()), staying);
  EXPECT_FALSE(outline.itemWithId(gone.id()));
  EXPECT_TRUE(ids.contains(gone.id())) << "a handle keeps the identity";
  for (const char* name : {"plugin", "option", "x", "y", "empty option"}) {
    EXPECT_FALSE(ids.contains(row(name).id())) << name;
  }
}

TEST_F(OutlineViewTreeTest, ARowKnowsItsPlaceAmongItsSiblings) {
  outline.expandItem(row("plugin"));
  EXPECT_EQ(outline.numberOfChildrenOfItem({}), 2U);
  EXPECT_EQ(outline.childOfItem({}, 1), row("other plugin"));
  EXPECT_FALSE(outline.childOfItem({}, 2));
  EXPECT_EQ(outline.indexOfItem(row("other plugin")), 1U);
  EXPECT_EQ(outline.childOfItem(row("plugin"), 1), row("empty option"));
  const OutlineItem moved = row("empty option");
  plugin.removeAt(1);
  outline.reloadData();
  EXPECT_EQ(outline.indexOfItem(moved), 0U);
  EXPECT_EQ(outline.numberOfChildrenOfItem(row("plugin")), 1U);
}

TEST_F(OutlineViewTreeTest, ARowStaysWhatItWasWhenItWasMade) {
  source.kinds = {{"plugin", 1}, {"option", 2}};
  source.top = {plugin.deepCopy()};
  outline.reloadData();
  outline.expandItem({}, true);
  const OutlineItem item = row("option");
  EXPECT_EQ(item.kind(), 2);
  EXPECT_EQ(row("x").kind(), 0);
  source.kinds = {{"option", 7}};
  outline.reloadData();
  EXPECT_EQ(item.kind(), 2);
  source.top.clear();
  outline.reloadData();
  EXPECT_EQ(item.kind(), 2) << "also when it has gone";
  EXPECT_EQ(OutlineItem().kind(), 0);
}

TEST_F(OutlineViewTreeTest, AShellHearsBeforeAndAfterEachReloadAlsoWhereOneComesWithinAnother) {
  Names heard;
  outline.onWillReload = [&] { heard.push_back("will " + rows().front()); };
  outline.onReload = [&] { heard.push_back("did " + rows().front()); };
  source.top = {otherPlugin};
  source.onCount = [&](OutlineView& view) {
    source.onCount = nullptr;
    view.reloadData();
  };
  outline.reloadData();
  EXPECT_EQ(heard, (Names{"will plugin", "did other plugin"}));
}

TEST_F(OutlineViewTreeTest, ReloadingWithEqualButOtherObjectsMakesNewCollapsedRows) {
  outline.expandItem(row("plugin"), true);
  const OutlineItem former = row("plugin");
  const OutlineItem formerOption = row("option");
  outline.selectRow(0);
  int selectionChanges = 0;
  outline.onSelectionChange = [&] { ++selectionChanges; };
  source.top = {plugin.deepCopy(), otherPlugin};
  outline.reloadData();

  EXPECT_EQ(rows(), (Names{"plugin", "other plugin"}));
  EXPECT_NE(row("plugin"), former);
  EXPECT_EQ(outline.selectedRow(), -1);
  EXPECT_EQ(selectionChanges, 1);
  EXPECT_EQ(outline.rowForItem(former), -1);
  EXPECT_EQ(outline.levelForItem(formerOption), -1);
  EXPECT_FALSE(outline.parentForItem(formerOption));
  EXPECT_FALSE(outline.isItemExpanded(former));
  EXPECT_EQ(TreeSource::nameOf(formerOption.object()), "option");  // a handle keeps its value
}

TEST_F(OutlineViewTreeTest, ReloadingMatchesTheOccurrencesOfOneObjectInOrder) {
  const PropertyList same = TreeSource::leaf("same");
  Array list = TreeSource::branch("list", {same, same, TreeSource::leaf("other")});
  source.top = {list};
  outline.reloadData();
  outline.expandItem({}, true);
  const OutlineItem first = outline.itemAtRow(1);
  const OutlineItem second = outline.itemAtRow(2);
  const OutlineItem other = outline.itemAtRow(3);
  list.replaceAll({list.at(0), list.at(3), same, same, same});
  outline.reloadData();
  ASSERT_EQ(rows(), (Names{"list", "other", "same", "same", "same"}));
  EXPECT_EQ(outline.itemAtRow(1), other);
  EXPECT_EQ(outline.itemAtRow(2), first);
  EXPECT_EQ(outline.itemAtRow(3), second);
  list.replaceAll({list.at(0), same});
  outline.reloadData();
  EXPECT_EQ(outline.itemAtRow(1), first);
  EXPECT_EQ(outline.rowForItem(second), -1);
}

TEST_F(OutlineViewTreeTest, ARowThatMovesToAnotherParentIsANewRow) {
  outline.expandItem({}, true);
  const OutlineItem moved = row("option");
  plugin.removeAt(1);
  otherPlugin.append(option);
  outline.reloadData();
  EXPECT_EQ(outline.rowForItem(moved), -1);
  EXPECT_NE(row("option"), moved);
  EXPECT_EQ(outline.parentForItem(row("option")), row("other plugin"));
}

TEST_F(OutlineViewTreeTest, ARowThatCanNoLongerBeExpandedIsCollapsedAndLosesItsChildren) {
  outline.expandItem({}, true);
  const OutlineItem child = row("option");
  source.branchesExpand = false;
  outline.reloadData();
  EXPECT_EQ(rows(), (Names{"plugin", "other plugin"}));
  EXPECT_FALSE(outline.isItemExpanded(row("plugin")));
  EXPECT_FALSE(outline.parentForItem(child));

  source.branchesExpand = true;
  outline.expandItem(row("plugin"));
  EXPECT_EQ(rows(), (Names{"plugin", "option", "empty option", "other plugin"}));
}

TEST_F(OutlineViewTreeTest, ReloadingOneItemShowsItAfreshAndReadsChildrenOnlyWhenAsked) {
  outline.expandItem(row("plugin"), true);
  const OutlineItem item = row("option");
  Names shown;
  int reloads = 0;
  outline.onReloadItem = [&](const OutlineItem& afresh) {
    shown.push_back(TreeSource::nameOf(afresh.object()));
  };
  outline.onReload = [&] { ++reloads; };
  option.append(TreeSource::leaf("new"));

  outline.reloadItem(item);
  EXPECT_EQ(shown, (Names{"option"}));
  EXPECT_EQ(outline.childrenOfItem(item).size(), 2U);
  outline.reloadItem(item, true);
  EXPECT_EQ(reloads, 1);
  EXPECT_EQ(rows(), (Names{"plugin", "option", "x", "y", "new", "empty option", "other plugin"}));
}

TEST_F(OutlineViewTreeTest, RowsThatAreGoneTakeNoCalls) {
  outline.expandItem(row("plugin"));
  const OutlineItem gone = row("option");
  plugin.removeAt(1);
  outline.reloadData();
  int calls = 0;
  outline.onReloadItem = [&](const OutlineItem&) { ++calls; };
  outline.onExpansionChange = [&](const OutlineItem&) { ++calls; };
  outline.onReload = [&] { ++calls; };
  outline.expandItem(gone, true);
  outline.collapseItem(gone);
  outline.reloadItem(gone, true);
  outline.reloadItem(gone);
  EXPECT_EQ(calls, 0);
  EXPECT_FALSE(outline.isExpandable(gone));
  EXPECT_TRUE(outline.childrenOfItem(gone).empty());
}

TEST_F(OutlineViewTreeTest, DisclosureClicksToggleAlsoWhileDisabledButNotWhileHidden) {
  Names toggled;
  outline.onExpansionChange = [&](const OutlineItem& item) {
    toggled.push_back(TreeSource::nameOf(item.object()) +
                      (outline.isItemExpanded(item) ? " open" : " closed"));
  };
  outline.setEnabled(false);
  outline.clickDisclosure(outline.itemAtRow(1));
  outline.clickDisclosure(outline.itemAtRow(1));
  outline.clickDisclosure(outline.itemAtRow(7));
  EXPECT_EQ(toggled, (Names{"other plugin open", "other plugin closed"}));
  outline.setHidden(true);
  outline.clickDisclosure(outline.itemAtRow(1));
  EXPECT_EQ(toggled.size(), 2U);
}

TEST_F(OutlineViewTreeTest, ADataSourceThatReloadsWhileItIsAskedDoesNoHarm) {
  class Reentrant final : public OutlineViewDataSource {
   public:
    int outlineViewNumberOfChildrenOfItem(OutlineView& outline, const OutlineItem& item) override {
      if (item && !reloaded) {
        reloaded = true;
        outline.reloadData();  // takes the asking row away
      }
      return item ? 3 : 1;
    }
    bool outlineViewIsItemExpandable(OutlineView& outline, const OutlineItem& item) override {
      return outline.levelForItem(item) == 0;
    }
    PropertyList outlineViewChildOfItem(OutlineView&, int, const OutlineItem&) override {
      return PropertyList::string("fresh");
    }
    ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView&, const TableColumn&,
                                                           const OutlineItem&) override {
      return {};
    }
    void outlineViewSetObjectValueForTableColumnByItem(OutlineView&, const PropertyList&, const TableColumn&,
                                                       const OutlineItem&) override {}
    bool reloaded = false;
  } reentrant;
  OutlineView view({});
  view.setDataSource(&reentrant);
  view.reloadData();
  const OutlineItem asking = view.itemAtRow(0);
  int expansions = 0;
  view.onExpansionChange = [&](const OutlineItem&) { ++expansions; };
  view.expandItem(asking);
  EXPECT_FALSE(view.isItemExpanded(asking));
  EXPECT_EQ(expansions, 0);
  EXPECT_EQ(view.rowForItem(asking), -1);
  EXPECT_TRUE(view.childrenOfItem(asking).empty());
  EXPECT_EQ(view.numberOfRows(), 1);
  view.expandItem(view.itemAtRow(0));
  EXPECT_EQ(view.numberOfRows(), 4);
}

TEST_F(OutlineViewTreeTest, SelectsOnlyVisibleRows) {
  int changes = 0;
  outline.onSelectionChange = [&] { ++changes; };
  outline.selectRow(1);
  outline.selectRow(1);
  outline.selectRow(9);
  outline.selectRow(-1);
  EXPECT_EQ(outline.selectedRow(), 1);
  outline.deselectAll();
  EXPECT_EQ(outline.selectedRow(), -1);
  EXPECT_EQ(changes, 2);
}

TEST_F(OutlineViewTreeTest, KeepsEveryRowOfALargeTreeThroughAReload) {
  std::vector<PropertyList> leaves;
  for (int index = 0; index < 5000; ++index) leaves.push_back(TreeSource::leaf(std::to_string(index)));
  Array large = TreeSource::branch("large", leaves);
  source.top = {large};
  outline.reloadData();
  outline.expandItem({}, true);
  ASSERT_EQ(outline.numberOfRows(), 5001);
  std::vector<OutlineItem> before;
  for (int index = 1; index <= 5000; ++index) before.push_back(outline.itemAtRow(index));

  std::vector<PropertyList> reversed{large.at(0)};
  reversed.insert(reversed.end(), leaves.rbegin(), leaves.rend());
  large.replaceAll(reversed);
  outline.reloadData();
  for (int index = 0; index < 5000; ++index) {
    ASSERT_EQ(outline.rowForItem(before[static_cast<std::size_t>(index)]), 5000 - index);
  }
}

TEST_F(OutlineViewTreeTest, HandlesOutliveTheOutline) {
  OutlineItem item;
  {
    OutlineView view({});
    view.setDataSource(&source);
    view.reloadData();
    item = view.itemAtRow(0);
  }
  EXPECT_EQ(TreeSource::nameOf(item.object()), "plugin");
}

}  // namespace
}  // namespace corvane
