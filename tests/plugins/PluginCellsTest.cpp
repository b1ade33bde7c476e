// Which rows of the tree have a cell of their own, and the buttons among them.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginCells.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;
using Position = ButtonCell::ImagePosition;

class PluginCellsTest : public PluginsTabFixture {};

// Which rows have a cell of their own.

TEST_F(PluginCellsTest, ARowOfFullWidthHasNoCellOfItsOwn) {
  awakeWith(option("TextField"));
  for (const OutlineItem& item : {plugin(), optionRow(), valueRow()}) {
    EXPECT_EQ(controller->outlineViewDataCellForTableColumnItem(outline(), nullptr, item), nullptr);
  }
}

TEST_F(PluginCellsTest, AColumnWithAnotherHeaderHasNoCellsOfItsOwn) {
  addPlugin("check_x", options({option("TextField"), option("Checkbox")}));
  awake();
  const TableColumn other{"Plugin", "plugin", 100};
  for (const OutlineItem& item : {plugin(), optionRow(1), valueRow()}) {
    EXPECT_EQ(controller->outlineViewDataCellForTableColumnItem(outline(), &other, item), nullptr);
  }
}

TEST_F(PluginCellsTest, InTheEnabledColumnOnlyPluginRowsShowTheColumnsCheckBox) {
  awakeWith(option("TextField"));
  const auto enabledCell = [&](const OutlineItem& item) {
    return controller->outlineViewDataCellForTableColumnItem(outline(), &enabledColumn(), item);
  };
  EXPECT_EQ(enabledCell(plugin()), nullptr);
  for (const OutlineItem& item : {optionRow(), valueRow()}) {
    ASSERT_NE(enabledCell(item), nullptr);
    EXPECT_TRUE(std::holds_alternative<EmptyCell>(*enabledCell(item)));
  }
  const PreparedCell box = outline().preparedCell(enabledColumn(), plugin());
  EXPECT_TRUE(std::get<ButtonCell>(*box.cell).on);
}

TEST_F(PluginCellsTest, PluginRowsAndTitlesUseTheColumnsTextCell) {
  for (const std::string_view type : setting_type::kAll) {
    addPlugin("check_x", options({option(type)}));
    awake();
    EXPECT_EQ(chosen(plugin()), nullptr);
    EXPECT_EQ(chosen(optionRow()) == nullptr, type != setting_type::kCheckbox) << type;
  }
}

TEST_F(PluginCellsTest, EveryRequestMakesANewCell) {
  awakeWith(option("TextField"));
  EXPECT_NE(chosen(valueRow()), chosen(valueRow()));
}

// Buttons.

TEST_F(PluginCellsTest, APickerIsAButtonWithAnIconLeftOfThePath) {
  store(Dictionary::make({{kKey, text("/Users/Shared/a")}}));
  const std::vector<std::pair<const char*, const char*>> icons = {{"FolderPicker", "fldr"},
                                                                  {"FilePicker", "docu"}};
  for (const auto& [type, icon] : icons) {
    addPlugin("check_x", options({option(type)}));
    awake();
    const auto button = cell<ButtonCell>(valueRow());
    EXPECT_EQ(button.kind, ButtonCell::Kind::Switch);
    EXPECT_EQ(button.imagePosition, Position::Left);
    EXPECT_TRUE(button.imageScalesProportionallyDown);
    EXPECT_EQ(button.image.typeCode, icon);
    EXPECT_EQ(button.title, AttributedText("/Users/Shared/a"));
    EXPECT_TRUE(button.action);
  }
}

TEST_F(PluginCellsTest, APickerWithoutAStoredPathHasNoTitle) {
  awakeWith(option("FilePicker"));
  EXPECT_EQ(cell<ButtonCell>(valueRow()).title.text, "") << "no file";
  for (const PropertyList& path : {PropertyList(), number(5), PropertyList(texts({"/a"}))}) {
    Dictionary contents = Dictionary::make();
    contents.set(kKey, path);
    store(contents);
    EXPECT_EQ(cell<ButtonCell>(valueRow()).title.text, "");
  }
}

TEST_F(PluginCellsTest, DressingAPickerWithoutAReadableFileLeavesItsTitle) {
  awakeWith(option("FilePicker"));
  ButtonCell button;
  button.title = AttributedText("before");
  Cell dressed = button;
  controller->outlineViewWillDisplayCellForTableColumnItem(outline(), dressed, pluginColumn(), valueRow());
  EXPECT_EQ(std::get<ButtonCell>(dressed).title.text, "before");
  store(Dictionary::make());
  controller->outlineViewWillDisplayCellForTableColumnItem(outline(), dressed, pluginColumn(), valueRow());
  EXPECT_EQ(std::get<ButtonCell>(dressed).title.text, "");
}

TEST_F(PluginCellsTest, APickerInRootsHomeIsDressedByWhatTheUserCanRead) {
  pane.rootFile = Dictionary::make({{kKey, text("/secret")}});
  awakeWith(with(option("FilePicker"), "SettingStoragePath", text("/var/root/x.plist")));
  EXPECT_EQ(cell<ButtonCell>(valueRow()).title.text, "");
}

TEST_F(PluginCellsTest, ABoxOfASetIsTitledWithItsName) {
  store(Dictionary::make({{kKey, Dictionary::make({{"a", flag(true)}, {"b", flag(false)}})}}));
  awakeWith(option("Checkboxes"));
  const auto first = cell<ButtonCell>(valueRow(0));
  EXPECT_EQ(first.kind, ButtonCell::Kind::Switch);
  EXPECT_EQ(first.title, AttributedText("a"));
  EXPECT_TRUE(first.on);
  EXPECT_FALSE(first.action) << "a click changes the value";
  EXPECT_FALSE(cell<ButtonCell>(valueRow(1)).on);
}

struct EntryCase {
  const char* type;
  const char* entry;
  Position position;
  const char* icon;
};

TEST_F(PluginCellsTest, AListEntryIsAButtonThatRemovesItOrAddsAnother) {
  const std::vector<EntryCase> cases = {
      {"FileArray", "Add a new entry", Position::Left, "docu"},
      {"FileArray", "ADD A NEW file", Position::Left, "docu"},
      {"FolderArray", "Add a new entry", Position::Left, "fldr"},
      {"FolderArray", "add a new folder", Position::Left, "fldr"},
      {"FileArray", "/tmp/add a new", Position::Right, "trsh"},
      {"FolderArray", "/tmp", Position::Right, "trsh"},
      {"FolderArray", "", Position::Right, "trsh"},
  };
  for (const EntryCase& one : cases) {
    store(Dictionary::make({{kKey, texts({one.entry})}}));
    addPlugin("check_x", options({option(one.type)}));
    awake();
    const auto button = cell<ButtonCell>(valueRow());
    EXPECT_EQ(button.kind, ButtonCell::Kind::Switch);
    EXPECT_TRUE(button.imageScalesProportionallyDown);
    EXPECT_EQ(button.imagePosition, one.position) << one.entry;
    EXPECT_EQ(button.image.typeCode, one.icon) << one.entry;
    EXPECT_EQ(button.title.text, std::string(" ") + one.entry);
    EXPECT_TRUE(button.action);
  }
}

TEST_F(PluginCellsTest, TheValidationRowIsAPushButton) {
  awakeWith(option("PluginValidation"));
  const auto button = cell<ButtonCell>(valueRow());
  EXPECT_EQ(button.kind, ButtonCell::Kind::MomentaryPushIn);
  EXPECT_TRUE(button.roundedBezel);
  EXPECT_TRUE(button.bordered);
  EXPECT_EQ(button.title, AttributedText("Test Settings"));
  EXPECT_TRUE(button.action);
}

TEST_F(PluginCellsTest, ACheckboxStandsOnTheOptionsOwnRowAndCarriesItsTitle) {
  store(Dictionary::make({{kKey, flag(true)}}));
  awakeWith(option("Checkbox", text("Positive")));
  EXPECT_EQ(chosenAs<ButtonCell>(optionRow()).title.text, "");
  const auto button = cell<ButtonCell>(optionRow());
  EXPECT_EQ(button.kind, ButtonCell::Kind::Switch);
  EXPECT_TRUE(button.on);
  EXPECT_FALSE(button.action);
  TextAttributes hint;
  hint.font = Font{Font::Family::User, 11, false, true};
  hint.color = TextColor::DarkGray;
  AttributedText title("Title\nHint");
  title.runs = {{6, 4, hint}};
  EXPECT_EQ(button.title, title);
}

TEST_F(PluginCellsTest, ALinkIsAnUnborderedButtonWithTheAddressInBlue) {
  awakeWith(with(option("DisplayOnly"), "SettingDetailsURL", text("https://example.com/a?b=c")));
  const auto button = cell<ButtonCell>(valueRow());
  EXPECT_EQ(button.kind, ButtonCell::Kind::MomentaryPushIn);
  EXPECT_TRUE(button.roundedBezel);
  EXPECT_FALSE(button.bordered);
  EXPECT_EQ(button.alignment, TextAlignment::Left);
  TextAttributes link;
  link.font = Font{Font::Family::User, 13, false, false};
  link.color = TextColor::Blue;
  link.underlined = true;
  EXPECT_EQ(button.title, AttributedText("https://example.com/a?b=c", link));
}

TEST_F(PluginCellsTest, ACheckBoxNameThatBeginsLikeAnAddressIsALink) {
  store(Dictionary::make({{kKey, Dictionary::make({{"httpd", flag(true)}})}}));
  awakeWith(option("Checkboxes"));
  const auto button = cell<ButtonCell>(valueRow());
  EXPECT_EQ(button.kind, ButtonCell::Kind::MomentaryPushIn);
  EXPECT_EQ(button.title.text, "httpd");
}

TEST_F(PluginCellsTest, OnlyThePluginColumnIsDressed) {
  awakeWith(option("Checkbox", text("Positive")));
  Cell box = ButtonCell{};
  controller->outlineViewWillDisplayCellForTableColumnItem(outline(), box, enabledColumn(), optionRow());
  EXPECT_EQ(std::get<ButtonCell>(box).title.text, "");
}

TEST_F(PluginCellsTest, ACellOfAnotherKindIsLeftAsItIs) {
  store(Dictionary::make({{kKey, text("/a")}}));
  for (const char* type : {"FilePicker", "PopUpMenu", "Checkbox", "TextField"}) {
    addPlugin("check_x", options({with(option(type), "SettingDetailsURL", text("http://example.com"))}));
    awake();
    for (const OutlineItem& item : {optionRow(), valueRow()}) {
      Cell empty = EmptyCell{};
      controller->outlineViewWillDisplayCellForTableColumnItem(outline(), empty, pluginColumn(), item);
      EXPECT_TRUE(std::holds_alternative<EmptyCell>(empty)) << type;
    }
  }
}

}  // namespace
}  // namespace corvane
