// The cells in which a value is chosen or typed: menus, texts and passwords, numbers.
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"
#include "plugins/PluginCells.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

constexpr const char* kNoRange = "Need 2 components for Number Range";

class PluginInputCellsTest : public PluginsTabFixture {
 protected:
  static std::int32_t lengthLimitOf(const std::shared_ptr<Formatter>& formatter) {
    const auto limit = std::dynamic_pointer_cast<CustomTextFieldCellFormatter>(formatter);
    EXPECT_NE(limit, nullptr);
    return limit != nullptr ? limit->maximumLength() : -1;
  }
};

// Menus.

TEST_F(PluginInputCellsTest, AMenuListsItsTitlesInOrderAndSelectsTheStoredOne) {
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

TEST_F(PluginInputCellsTest, AMenuSelectsByTheStoredIndex) {
  awakeWith(option("PopUpMenu", texts({"a", "b"})));
  EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).selectedIndex, 0) << "no file";
  const std::vector<SelectionCase> cases = {
      {"missing", PropertyList(), 0}, {"one", number(1), 1},
      {"a text", text("1"), 1},       {"too large", number(2), -1},
      {"negative", number(-1), -1},   {"huge", number(1LL << 40), 0},
      {"true", flag(true), 1},        {"of another type", texts({}), 0},
  };
  for (const SelectionCase& one : cases) {
    Dictionary contents = Dictionary::make();
    contents.set(kKey, one.stored);
    store(contents);
    EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).selectedIndex, one.selected) << one.what;
  }
}

TEST_F(PluginInputCellsTest, DressingAMenuSelectsWhatItsFileHoldsAndWithoutAReadableFileNothing) {
  awakeWith(option("PopUpMenu", texts({"a", "b", "c"})));
  const auto dressed = [&] {
    PopUpButtonCell menu;
    menu.items = {"a", "b", "c"};
    menu.selectedIndex = 1;
    Cell cell = menu;
    controller->outlineViewWillDisplayCellForTableColumnItem(outline(), cell, pluginColumn(), valueRow());
    return std::get<PopUpButtonCell>(cell).selectedIndex;
  };
  EXPECT_EQ(dressed(), 1) << "no file";
  store(Dictionary::make());
  EXPECT_EQ(dressed(), 0) << "nothing stored";
  store(Dictionary::make({{kKey, number(2)}}));
  EXPECT_EQ(dressed(), 2);
}

TEST_F(PluginInputCellsTest, AMenuWithoutTitlesIsEmpty) {
  store(Dictionary::make({{kKey, number(0)}}));
  for (const PropertyList& value : {PropertyList(), PropertyList(texts({})), text("a"), number(1)}) {
    addPlugin("check_x", options({option("PopUpMenu", value)}));
    awake();
    const auto menu = cell<PopUpButtonCell>(valueRow());
    EXPECT_TRUE(menu.items.empty());
    EXPECT_EQ(menu.selectedIndex, -1);
  }
}

TEST_F(PluginInputCellsTest, ATitleThatIsNoTextKeepsItsPlaceInTheMenu) {
  Array titles = texts({"a", "b"});
  titles.insert(1, number(5));
  awakeWith(option("PopUpMenu", titles));
  EXPECT_EQ(cell<PopUpButtonCell>(valueRow()).items, (Texts{"a", "5", "b"}));
}

TEST_F(PluginInputCellsTest, AChoiceFromAMenuStoresItsIndex) {
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

TEST_F(PluginInputCellsTest, TextsAreEditableFieldsThatTellWhatToType) {
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

TEST_F(PluginInputCellsTest, ATextIsLimitedOnlyByAPositiveLength) {
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

TEST_F(PluginInputCellsTest, APasswordIsASecureFieldWithBullets) {
  store(Dictionary::make({{kKey, text("secret")}}));
  awakeWith(option("PasswordField", number(20)));
  const auto field = cell<SecureTextFieldCell>(valueRow());
  EXPECT_TRUE(field.editable);
  EXPECT_TRUE(field.echosBullets);
  EXPECT_EQ(field.placeholder, "Click to enter password");
  EXPECT_EQ(field.text, "secret");
  EXPECT_EQ(lengthLimitOf(field.formatter), 20);
}

TEST_F(PluginInputCellsTest, APasswordWithoutALengthTakesNoTypedCharacter) {
  store(Dictionary::make({{kKey, text("kept")}}));
  for (const PropertyList& value : {PropertyList(), number(0), text("none")}) {
    addPlugin("check_x", options({option("PasswordField", value)}));
    awake();
    EXPECT_EQ(lengthLimitOf(cell<SecureTextFieldCell>(valueRow()).formatter), 0);
    edit(valueRow(), text("x"));
    EXPECT_EQ(stored(), Dictionary::make({{kKey, text("kept")}}));
  }
}

TEST_F(PluginInputCellsTest, APasswordIsGivenItsLengthWithoutATestForItsSign) {
  awakeWith(option("PasswordField", number(-1)));
  EXPECT_EQ(lengthLimitOf(cell<SecureTextFieldCell>(valueRow()).formatter), -1);
}

TEST_F(PluginInputCellsTest, ATypedTextBeyondTheLimitIsNotStored) {
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

TEST_F(PluginInputCellsTest, ANumberOffersItsRangeAndIsLimitedToIt) {
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

TEST_F(PluginInputCellsTest, ARangeThatCanNotBeReadIsLoggedOncePerCellAndLimitsNothing) {
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

TEST_F(PluginInputCellsTest, AnEnormousRangeMakesACellOfBoundedSize) {
  for (const char* value : {"0-2000000000", "0-2147483647,0", "0-99999999999999999999,-1"}) {
    addPlugin("check_x", options({option("NumberPicker", text(value))}));
    awake();
    EXPECT_EQ(chosenAs<ComboBoxCell>(valueRow()).items.size(), 100'000U) << value;
  }
}

TEST_F(PluginInputCellsTest, ANumberOutsideTheRangeIsNotStored) {
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
