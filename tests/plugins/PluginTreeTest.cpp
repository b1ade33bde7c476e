#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginTree.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

constexpr const char* kUrl = "http://example.com/help";

Dictionary withUrl(const Dictionary& dictionary) { return with(dictionary, "SettingDetailsURL", text(kUrl)); }

/// Rows of objects that the catalogue does not know, as an outline of their own shows them.
class ForeignRows final : public OutlineViewDataSource {
 public:
  explicit ForeignRows(PropertyList object) : object_(std::move(object)) {
    outline.setDataSource(this);
    outline.reloadData();
  }
  OutlineItem item() { return outline.childrenOfItem({}).at(0); }

  int outlineViewNumberOfChildrenOfItem(OutlineView&, const OutlineItem&) override { return 1; }
  bool outlineViewIsItemExpandable(OutlineView&, const OutlineItem&) override { return false; }
  PropertyList outlineViewChildOfItem(OutlineView&, int, const OutlineItem&) override { return object_; }
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView&, const TableColumn&,
                                                         const OutlineItem&) override {
    return {};
  }
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView&, const PropertyList&, const TableColumn&,
                                                     const OutlineItem&) override {}

  OutlineView outline{{}};

 private:
  PropertyList object_;
};

class PluginTreeTest : public PluginsTabFixture {
 protected:
  const PluginTree& tree() { return controller->tree(); }
  int countBelow(const OutlineItem& item) {
    return controller->outlineViewNumberOfChildrenOfItem(outline(), item);
  }
  bool expandable(const OutlineItem& item) {
    return controller->outlineViewIsItemExpandable(outline(), item);
  }
  PropertyList child(int index, const OutlineItem& item) {
    return controller->outlineViewChildOfItem(outline(), index, item);
  }
};

// Rows below the root and below plug-ins.

TEST_F(PluginTreeTest, TheTopRowsAreTheEntriesOfTheCatalogueThemselves) {
  addPlugin("b", options({option("Checkbox")}));
  addPlugin("a", options({option("Checkbox")}));
  awake();
  EXPECT_EQ(countBelow({}), 2);
  EXPECT_TRUE(plugin(0).object().isSameObject(controller->catalogue().plugins()[0]));
  EXPECT_TRUE(plugin(1).object().isSameObject(controller->catalogue().plugins()[1]));
  EXPECT_FALSE(child(2, {}));
  EXPECT_FALSE(child(-1, {}));
}

TEST_F(PluginTreeTest, BelowAPluginStandItsOptionsThemselvesInTheOrderOfTheDefinition) {
  addPlugin("check_x", options({with(option("TextField"), "SettingTitle", text("z")),
                                with(option("TextField"), "SettingTitle", text("a"))}));
  awake();
  EXPECT_EQ(countBelow(plugin()), 2);
  const Array all = controller->catalogue().plugins()[0].array("PluginOptions");
  EXPECT_TRUE(optionRow(0).object().isSameObject(all.at(0)));
  EXPECT_TRUE(optionRow(1).object().isSameObject(all.at(1)));
  EXPECT_EQ(*optionRow(0).object().asDictionary().string("SettingTitle"), "z");
  EXPECT_FALSE(child(2, plugin()));
}

// Rows below options, by type.

struct OptionRowsCase {
  const char* type;
  PropertyList storedValue;
  Texts rows;
  Texts rowsWithUrl;
  bool expandable;
  bool expandableWithUrl;
};
void PrintTo(const OptionRowsCase& rows, std::ostream* stream) { *stream << rows.type; }

class PluginTreeOptionRowsTest : public PluginTreeTest, public testing::WithParamInterface<OptionRowsCase> {};

TEST_P(PluginTreeOptionRowsTest, TheTypeDecidesWhatStandsBelowAnOption) {
  const OptionRowsCase& one = GetParam();
  Dictionary contents = Dictionary::make();
  contents.set(kKey, one.storedValue);
  store(contents);
  addPlugin("check_x", options({option(one.type), withUrl(option(one.type))}));
  awake();
  EXPECT_EQ(countBelow(optionRow(0)), static_cast<int>(one.rows.size()));
  EXPECT_EQ(textsBelow(optionRow(0)), one.rows);
  EXPECT_EQ(expandable(optionRow(0)), one.expandable);
  EXPECT_EQ(countBelow(optionRow(1)), static_cast<int>(one.rowsWithUrl.size()));
  EXPECT_EQ(textsBelow(optionRow(1)), one.rowsWithUrl);
  EXPECT_EQ(expandable(optionRow(1)), one.expandableWithUrl);
}

const Dictionary kTwoBoxes = Dictionary::make({{"b", flag(true)}, {"a", flag(false)}});

INSTANTIATE_TEST_SUITE_P(
    AllTypes, PluginTreeOptionRowsTest,
    testing::Values(
        OptionRowsCase{"Checkboxes", kTwoBoxes, {"a", "b"}, {"a", "b", kUrl}, true, true},
        OptionRowsCase{"FileArray", texts({"/b", "/a"}), {"/b", "/a"}, {"/b", "/a", kUrl}, true, true},
        OptionRowsCase{"FolderArray", texts({"/b", "/a"}), {"/b", "/a"}, {"/b", "/a", kUrl}, true, true},
        OptionRowsCase{"DisplayOnly", {}, {}, {kUrl}, false, true},
        OptionRowsCase{"Checkbox", flag(true), {}, {kUrl}, false, true},
        // The row that the link of a single value should have repeats the value.
        OptionRowsCase{"FolderPicker", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"FilePicker", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"PopUpMenu", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"NumberPicker", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"TextField", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"UsernameField", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"PasswordField", {}, {kKey}, {kKey, kKey}, true, true},
        OptionRowsCase{"PluginValidation", {}, {kKey}, {kKey, kKey}, true, true}),
    [](const auto& tested) { return std::string(tested.param.type); });

INSTANTIATE_TEST_SUITE_P(WithoutAStoredList, PluginTreeOptionRowsTest,
                         testing::Values(OptionRowsCase{"Checkboxes", {}, {}, {kUrl}, true, true},
                                         OptionRowsCase{"FileArray", {}, {}, {kUrl}, true, true},
                                         OptionRowsCase{"FolderArray", {}, {}, {kUrl}, true, true}),
                         [](const auto& tested) { return std::string(tested.param.type); });

INSTANTIATE_TEST_SUITE_P(
    WithAnEmptyStoredList, PluginTreeOptionRowsTest,
    testing::Values(OptionRowsCase{"Checkboxes", Dictionary::make(), {}, {kUrl}, true, true},
                    OptionRowsCase{"FileArray", Array::make(), {}, {kUrl}, true, true},
                    OptionRowsCase{"FolderArray", Array::make(), {}, {kUrl}, true, true}),
    [](const auto& tested) { return std::string(tested.param.type); });

TEST_F(PluginTreeTest, TheRowOfASingleValueIsTheOptionsOwnStorageKey) {
  awakeWith(option("TextField"));
  EXPECT_TRUE(
      valueRow().object().isSameObject(optionRow().object().asDictionary().value("SettingStorageKey")));
}

TEST_F(PluginTreeTest, TheLinkOfASingleValueWouldStandBehindAsManyRowsAsTheOptionHasKeys) {
  awakeWith(withUrl(option("TextField")));
  const int keys = static_cast<int>(optionRow().object().asDictionary().size());
  EXPECT_EQ(keys, 6);
  EXPECT_EQ(*child(keys - 1, optionRow()).asString(), kKey);
  EXPECT_EQ(*child(keys, optionRow()).asString(), kUrl);
  EXPECT_EQ(*child(keys + 1, optionRow()).asString(), kKey);
}

TEST_F(PluginTreeTest, EqualTextsBelowAnOptionAreRowsOfTheirOwn) {
  store(Dictionary::make({{kKey, texts({"/a", "/a"})}}));
  awakeWith(option("FileArray"));
  ASSERT_EQ(countBelow(optionRow()), 2);
  EXPECT_NE(valueRow(0), valueRow(1));
  EXPECT_EQ(outline().parentForItem(valueRow(1)), optionRow());
}

TEST_F(PluginTreeTest, CheckboxNamesComeInTheSameOrderOnEveryRequest) {
  Dictionary boxes = Dictionary::make();
  for (int i = 0; i < 100; ++i) boxes.set("name " + std::to_string(i * 37 % 100), flag(true));
  store(Dictionary::make({{kKey, boxes}}));
  awakeWith(option("Checkboxes"));
  const Texts first = textsBelow(optionRow());
  EXPECT_EQ(first.size(), 100U);
  outline().reloadData();
  EXPECT_EQ(textsBelow(optionRow()), first);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(*child(i, optionRow()).asString(), first[static_cast<std::size_t>(i)]);
  }
}

TEST_F(PluginTreeTest, ADetailsUrlThatIsNoTextMakesNoRow) {
  awakeWith(with(option("Checkbox"), "SettingDetailsURL", number(1)));
  EXPECT_EQ(countBelow(optionRow()), 0);
  EXPECT_FALSE(expandable(optionRow()));
  EXPECT_FALSE(child(0, optionRow()));
}

TEST_F(PluginTreeTest, AnOptionWithOptionsOfItsOwnCanBeExpandedButHasTheRowsOfItsType) {
  const Array foreign = options({option("TextField"), option("TextField")});
  awakeWith(with(option("DisplayOnly"), "PluginOptions", foreign));
  EXPECT_TRUE(expandable(optionRow()));
  EXPECT_EQ(countBelow(optionRow()), 0);
  EXPECT_FALSE(child(0, optionRow()));
}

// Objects that are no rows of the tree.

TEST_F(PluginTreeTest, AStringHasNoChildrenAndSaysSoOncePerRequest) {
  awakeWith(option("TextField"));
  platform.log.lines.clear();
  EXPECT_EQ(countBelow(valueRow()), 0);
  EXPECT_EQ(countBelow(valueRow()), 0);
  EXPECT_EQ(platform.log.lines,
            (Texts{"Returning 0 children for Some_Key", "Returning 0 children for Some_Key"}));
  EXPECT_FALSE(expandable(valueRow()));
  EXPECT_FALSE(child(0, valueRow()));
}

TEST_F(PluginTreeTest, ShowingATreeAsksNoStringForItsChildren) {
  awakeWith(withUrl(option("TextField")));
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginTreeTest, ADictionaryThatIsNeitherPluginNorOptionHasNoChildrenAndSaysSo) {
  awake();
  ForeignRows rows(Dictionary::make({{"a", number(1)}}));
  EXPECT_EQ(countBelow(rows.item()), 0);
  ASSERT_EQ(platform.log.lines.size(), 1U);
  EXPECT_THAT(platform.log.lines[0], testing::StartsWith("Returning 0 children for {"));
  EXPECT_FALSE(expandable(rows.item()));
  EXPECT_FALSE(child(0, rows.item()));
}

TEST_F(PluginTreeTest, ANumberHasNoChildrenAndSaysSo) {
  awake();
  ForeignRows rows(number(7));
  EXPECT_EQ(countBelow(rows.item()), 0);
  EXPECT_EQ(platform.log.lines, Texts{"Returning 0 children for 7"});
  EXPECT_FALSE(child(0, rows.item()));
}

TEST_F(PluginTreeTest, AnArrayHasItsElementsBelowItButIsNotOfferedForExpanding) {
  awake();
  ForeignRows rows(texts({"a", "b"}));
  EXPECT_EQ(countBelow(rows.item()), 2);
  EXPECT_EQ(*child(1, rows.item()).asString(), "b");
  EXPECT_FALSE(child(2, rows.item()));
  EXPECT_FALSE(expandable(rows.item()));
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginTreeTest, AnOptionThatIsNotPlacedYetShowsTheEntriesOfItsType) {
  awake();
  ForeignRows rows(option("TextField", number(5)));
  EXPECT_EQ(countBelow(rows.item()), 2);
  EXPECT_EQ(child(0, rows.item()), text("TextField"));
  EXPECT_EQ(child(1, rows.item()), number(5));
  EXPECT_FALSE(child(2, rows.item()));
  EXPECT_FALSE(expandable(rows.item()));
}

TEST_F(PluginTreeTest, APluginThatIsNotPlacedYetShowsItsOptions) {
  awake();
  const Dictionary one = option("TextField");
  ForeignRows rows(Dictionary::make({{"PluginOptions", options({one})}}));
  EXPECT_EQ(countBelow(rows.item()), 1);
  EXPECT_TRUE(child(0, rows.item()).isSameObject(one));
  EXPECT_TRUE(expandable(rows.item()));
}

// The kinds of rows.

TEST_F(PluginTreeTest, EachRowIsOfOneKind) {
  store(Dictionary::make({{kKey, texts({"/a"})}}));
  awakeWith(withUrl(option("FileArray")));
  const OutlineItem value = valueRow(0);
  const OutlineItem link = valueRow(1);
  struct KindCase {
    const char* what;
    OutlineItem item;
    bool isPlugin, isOption, isValue, isLink;
  };
  const std::vector<KindCase> cases = {
      {"plug-in", plugin(), true, false, false, false},
      {"option", optionRow(), false, true, false, false},
      {"value", value, false, false, true, false},
      {"link", link, false, false, false, true},
  };
  for (const KindCase& one : cases) {
    EXPECT_EQ(PluginTree::isPlugin(one.item), one.isPlugin) << one.what;
    EXPECT_EQ(PluginTree::isItemPluginOption(one.item), one.isOption) << one.what;
    EXPECT_EQ(PluginTree::isItemSubOption(one.item), one.isValue) << one.what;
    EXPECT_EQ(PluginTree::isItemURL(one.item), one.isLink) << one.what;
  }
}

TEST_F(PluginTreeTest, TheTypeOfARowIsItsOptionsTypeExactly) {
  awakeWith(option("TextField"));
  EXPECT_TRUE(PluginTree::isItemPluginOptionOfType(optionRow(), "TextField"));
  EXPECT_FALSE(PluginTree::isItemPluginOptionOfType(optionRow(), "textfield"));
  EXPECT_FALSE(PluginTree::isItemPluginOptionOfType(optionRow(), "Checkbox"));
  EXPECT_FALSE(PluginTree::isItemPluginOptionOfType(valueRow(), "TextField"));
  EXPECT_FALSE(PluginTree::isItemPluginOptionOfType(plugin(), "TextField"));
  EXPECT_TRUE(tree().isItemSubOptionOfType(valueRow(), "TextField"));
  EXPECT_FALSE(tree().isItemSubOptionOfType(valueRow(), "textfield"));
  EXPECT_FALSE(tree().isItemSubOptionOfType(optionRow(), "TextField"));
  EXPECT_FALSE(tree().isItemSubOptionOfType(plugin(), "TextField"));
}

TEST_F(PluginTreeTest, TheRootIsNoRowOfAnyKindButThatItHasNoParent) {
  awake();
  EXPECT_FALSE(PluginTree::isItemPluginOption({}));
  EXPECT_FALSE(PluginTree::isItemSubOption({}));
  EXPECT_FALSE(PluginTree::isItemURL({}));
}

TEST_F(PluginTreeTest, ANameOrPathThatBeginsLikeAnAddressIsALinkAndNoValue) {
  store(
      Dictionary::make({{kKey, texts({"httpd.conf", "HTTPS://example.com", "/http", "ftp://example.com"})}}));
  awakeWith(option("FileArray"));
  const std::vector<bool> isLink = {true, true, false, false};
  for (std::size_t i = 0; i < isLink.size(); ++i) {
    EXPECT_EQ(PluginTree::isItemURL(valueRow(i)), isLink[i]) << i;
    EXPECT_EQ(PluginTree::isItemSubOption(valueRow(i)), !isLink[i]) << i;
  }
}

// Expanding.

TEST_F(PluginTreeTest, ExpandingAPluginOpensAllItsOptions) {
  store(Dictionary::make({{kKey, texts({"/a", "/b"})}}));
  addPlugin("check_x", options({option("FileArray"), option("TextField")}));
  addPlugin("check_y", options({option("TextField")}));
  controller->awakeFromNib(pane);
  ASSERT_EQ(outline().numberOfRows(), 2);
  outline().clickDisclosure(outline().itemAtRow(0));
  EXPECT_EQ(outline().numberOfRows(), 2 + 2 + 3);
  EXPECT_TRUE(outline().isItemExpanded(optionRow(0)));
  EXPECT_TRUE(outline().isItemExpanded(optionRow(1)));
  EXPECT_FALSE(outline().isItemExpanded(plugin(1)));
}

TEST_F(PluginTreeTest, ExpandingAnOptionOpensOnlyThatOption) {
  addPlugin("check_x", options({option("TextField"), option("TextField")}));
  awake();
  outline().collapseItem(optionRow(0));
  outline().collapseItem(optionRow(1));
  outline().expandItem(optionRow(0));
  EXPECT_TRUE(outline().isItemExpanded(optionRow(0)));
  EXPECT_FALSE(outline().isItemExpanded(optionRow(1)));
}

TEST_F(PluginTreeTest, OnlyPluginRowsShowATriangle) {
  awakeWith(option("TextField"));
  EXPECT_TRUE(outline().showsOutlineCell(plugin()));
  EXPECT_FALSE(outline().showsOutlineCell(optionRow()));
  EXPECT_FALSE(outline().showsOutlineCell(valueRow()));
}

}  // namespace
}  // namespace corvane
