#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"
#include "plugins/PluginCells.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using test::boolean;
using test::kKey;
using test::number;
using test::option;
using test::options;
using test::PluginsTabFixture;
using test::text;
using test::texts;
using test::with;
using Texts = std::vector<std::string>;
using Position = ButtonCell::ImagePosition;

constexpr const char* kNoRange = "Need 2 components for Number Range";

class PluginCellsTest : public PluginsTabFixture {
 protected:
  /// The cell as it is chosen, before it is given its value.
  CellReference chosen(const OutlineItem& item) {
    return controller->outlineViewDataCellForTableColumnItem(outline(), &pluginColumn(), item);
  }
  template <typename Kind>
  Kind chosenAs(const OutlineItem& item) {
    const CellReference made = chosen(item);
    const auto* kind = made != nullptr ? std::get_if<Kind>(made.get()) : nullptr;
    EXPECT_NE(kind, nullptr) << "a cell of another kind";
    return kind != nullptr ? *kind : Kind();
  }
  static std::int32_t lengthLimitOf(const std::shared_ptr<Formatter>& formatter) {
    const auto limit = std::dynamic_pointer_cast<CustomTextFieldCellFormatter>(formatter);
    EXPECT_NE(limit, nullptr);
    return limit != nullptr ? limit->maximumLength() : -1;
  }
};

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
  store(Dictionary::make({{kKey, Dictionary::make({{"a", boolean(true)}, {"b", boolean(false)}})}}));
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
  store(Dictionary::make({{kKey, boolean(true)}}));
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
  store(Dictionary::make({{kKey, Dictionary::make({{"httpd", boolean(true)}})}}));
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

// Menus.

TEST_F(PluginCellsTest, AMenuListsItsTitlesInOrderAndSelectsTheStoredOne) {
  store(Dictionary::make({{kKey, number(2)}}));
  awakeWith(option("PopUpMenu", texts({"b", "a", "c", "a"})));
  const auto menu = cell<PopUpButtonCell>(valueRow());
  EXPECT_FALSE(menu.pullsDown);
  EXPECT_EQ(menu.items, (Texts{"b", "a", "c", "a"}));
  EXPECT_EQ(menu.selectedIndex, 2);
}

struct SelectionCase {
  const char* what;
  PropertyList stored;
  int selected;
};

TEST_F(PluginCellsTest, AMenuSelectsByTheStoredIndex) {
  awakeWith(option("PopUpMenu", texts({"a", "b"})));
  EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).selectedIndex, 0) << "no file";
  const std::vector<SelectionCase> cases = {
      {"missing", PropertyList(), 0}, {"one", number(1), 1},
      {"a text", text("1"), 1},       {"too large", number(2), -1},
      {"negative", number(-1), -1},   {"huge", number(1LL << 40), 0},
      {"true", boolean(true), 1},     {"of another type", texts({}), 0},
  };
  for (const SelectionCase& one : cases) {
    Dictionary contents = Dictionary::make();
    contents.set(kKey, one.stored);
    store(contents);
    EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).selectedIndex, one.selected) << one.what;
  }
}

TEST_F(PluginCellsTest, AMenuWithoutTitlesIsEmpty) {
  store(Dictionary::make({{kKey, number(0)}}));
  for (const PropertyList& value : {PropertyList(), PropertyList(texts({})), text("a"), number(1)}) {
    addPlugin("check_x", options({option("PopUpMenu", value)}));
    awake();
    const auto menu = cell<PopUpButtonCell>(valueRow());
    EXPECT_TRUE(menu.items.empty());
    EXPECT_EQ(menu.selectedIndex, -1);
  }
}

TEST_F(PluginCellsTest, ATitleThatIsNoTextKeepsItsPlaceInTheMenu) {
  Array titles = texts({"a", "b"});
  titles.insert(1, number(5));
  awakeWith(option("PopUpMenu", titles));
  EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).items, (Texts{"a", "5", "b"}));
}

TEST_F(PluginCellsTest, AChoiceFromAMenuStoresItsIndex) {
  store(Dictionary::make());
  awakeWith(option("PopUpMenu", texts({"a", "b"})));
  edit(valueRow(), number(1));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, number(1)}}));
  edit(valueRow(), number(2));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, number(1)}})) << "no such item";
}

// Texts.

struct TextFieldCase {
  const char* type;
  const char* placeholder;
};

TEST_F(PluginCellsTest, TextsAreEditableFieldsThatTellWhatToType) {
  store(Dictionary::make({{kKey, text("typed")}}));
  const std::vector<TextFieldCase> cases = {{"TextField", "Click to enter text"},
                                            {"UsernameField", "Click to enter username"}};
  for (const TextFieldCase& one : cases) {
    addPlugin("check_x", options({option(one.type)}));
    awake();
    const auto field = cell<TextFieldCell>(valueRow());
    EXPECT_TRUE(field.editable);
    EXPECT_EQ(field.placeholder, one.placeholder);
    EXPECT_EQ(field.text, "typed");
  }
}

TEST_F(PluginCellsTest, ATextIsLimitedOnlyByAPositiveLength) {
  for (const char* type : {"TextField", "UsernameField"}) {
    for (const PropertyList& value :
         {PropertyList(), number(0), number(-3), text("none"), PropertyList(texts({"5"}))}) {
      addPlugin("check_x", options({option(type, value)}));
      awake();
      EXPECT_EQ(cell<TextFieldCell>(valueRow()).formatter, nullptr) << type;
    }
    for (const PropertyList& value : {number(5), text("5")}) {
      addPlugin("check_x", options({option(type, value)}));
      awake();
      EXPECT_EQ(lengthLimitOf(cell<TextFieldCell>(valueRow()).formatter), 5) << type;
    }
  }
}

TEST_F(PluginCellsTest, APasswordIsASecureFieldWithBullets) {
  store(Dictionary::make({{kKey, text("secret")}}));
  awakeWith(option("PasswordField", number(20)));
  const auto field = cell<SecureTextFieldCell>(valueRow());
  EXPECT_TRUE(field.editable);
  EXPECT_TRUE(field.echosBullets);
  EXPECT_EQ(field.placeholder, "Click to enter password");
  EXPECT_EQ(field.text, "secret");
  EXPECT_EQ(lengthLimitOf(field.formatter), 20);
}

TEST_F(PluginCellsTest, APasswordWithoutALengthTakesNoTypedCharacter) {
  store(Dictionary::make({{kKey, text("kept")}}));
  for (const PropertyList& value : {PropertyList(), number(0), text("none")}) {
    addPlugin("check_x", options({option("PasswordField", value)}));
    awake();
    EXPECT_EQ(lengthLimitOf(cell<SecureTextFieldCell>(valueRow()).formatter), 0);
    edit(valueRow(), text("x"));
    EXPECT_EQ(stored(), Dictionary::make({{kKey, text("kept")}}));
  }
}

TEST_F(PluginCellsTest, APasswordIsGivenItsLengthWithoutATestForItsSign) {
  awakeWith(option("PasswordField", number(-1)));
  EXPECT_EQ(lengthLimitOf(cell<SecureTextFieldCell>(valueRow()).formatter), -1);
}

TEST_F(PluginCellsTest, ATypedTextBeyondTheLimitIsNotStored) {
  store(Dictionary::make());
  awakeWith(option("TextField", number(5)));
  edit(valueRow(), text("12345"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("12345")}}));
  edit(valueRow(), text("123456"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("12345")}}));
}

// Numbers.

struct NumberCase {
  const char* value;
  std::vector<std::int32_t> items;
  std::int32_t minimum;
  std::int32_t maximum;
};

TEST_F(PluginCellsTest, ANumberOffersItsRangeAndIsLimitedToIt) {
  const std::vector<NumberCase> cases = {{"0-10,5", {0, 5, 10}, 0, 10},
                                         {"5-1", {}, 5, 1},
                                         {"1-3", {1, 2, 3}, 1, 3},
                                         {"1-5,2,3", {1, 2, 3, 4, 5}, 1, 5}};
  for (const NumberCase& one : cases) {
    addPlugin("check_x", options({option("NumberPicker", text(one.value))}));
    awake();
    const auto box = cell<ComboBoxCell>(valueRow());
    EXPECT_TRUE(box.editable);
    EXPECT_EQ(box.items, one.items) << one.value;
    const auto limits = std::dynamic_pointer_cast<MyNumberFormatter>(box.formatter);
    ASSERT_NE(limits, nullptr) << one.value;
    EXPECT_EQ(limits->minimum(), one.minimum);
    EXPECT_EQ(limits->maximum(), one.maximum);
    EXPECT_EQ(limits->defaultValue(), one.minimum);
  }
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginCellsTest, ARangeThatCanNotBeReadIsLoggedOncePerCellAndLimitsNothing) {
  for (const PropertyList& value : {text("10"), text("-5-10"), text(""), PropertyList(), number(10)}) {
    addPlugin("check_x", options({option("NumberPicker", value)}));
    awake();
    platform.log.lines.clear();
    const auto box = chosenAs<ComboBoxCell>(valueRow());
    EXPECT_TRUE(box.editable);
    EXPECT_TRUE(box.items.empty());
    EXPECT_EQ(box.formatter, nullptr);
    EXPECT_EQ(platform.log.lines, Texts{kNoRange});
  }
}

TEST_F(PluginCellsTest, AnEnormousRangeMakesACellOfBoundedSize) {
  for (const char* value : {"0-2000000000", "0-2147483647,0", "0-99999999999999999999,-1"}) {
    addPlugin("check_x", options({option("NumberPicker", text(value))}));
    awake();
    EXPECT_EQ(chosenAs<ComboBoxCell>(valueRow()).items.size(), 100'000U) << value;
  }
}

TEST_F(PluginCellsTest, ANumberOutsideTheRangeIsNotStored) {
  store(Dictionary::make({{kKey, number(3)}}));
  awakeWith(option("NumberPicker", text("1-12")));
  edit(valueRow(), text("13"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, number(3)}}));
  edit(valueRow(), text("12"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, number(12)}}));
  EXPECT_EQ(cell<ComboBoxCell>(valueRow()).text, "12");
}

}  // namespace
}  // namespace corvane
