#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginValues.h"
#include "plugins/PluginsTabFixture.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

constexpr const char* kRootStorage = "/var/root/Library/x.plist";

class PluginValuesTest : public PluginsTabFixture {
 protected:
  AttributedText shownText(const OutlineItem& item) {
    const ObjectValue value = shown(item);
    const auto* styled = std::get_if<AttributedText>(&value);
    EXPECT_NE(styled, nullptr);
    return styled != nullptr ? *styled : AttributedText();
  }
  static Dictionary in(const char* storage, Dictionary one) {
    return with(std::move(one), "SettingStoragePath", text(storage));
  }
  bool isNothing(const ObjectValue& value) { return std::holds_alternative<std::monostate>(value); }
};

// Titles.

TEST_F(PluginValuesTest, APluginsNameStandsAfterABlankInBold) {
  awakeWith(option("Checkbox"));
  const AttributedText title = shownText(plugin());
  EXPECT_EQ(title.text, " check_x");
  ASSERT_EQ(title.runs.size(), 1U);
  EXPECT_EQ(title.runs[0].start, 0U);
  EXPECT_EQ(title.runs[0].length, title.text.size());
  EXPECT_EQ(title.runs[0].attributes.font, (Font{Font::Family::User, kSystemFontSize, true, false}));
  EXPECT_FALSE(title.runs[0].attributes.color);
}

TEST_F(PluginValuesTest, APluginWithoutANameHasARowWithoutAName) {
  addDefinition("check_x", Dictionary::make({{"PluginOptions", options({option("Checkbox")})}}));
  awake();
  EXPECT_EQ(shownText(plugin()).text, " ");
}

TEST_F(PluginValuesTest, ATitleThatIsNoTextIsShownAllTheSame) {
  awakeWith(with(option("TextField"), "SettingTitle", number(5)));
  EXPECT_EQ(shownText(optionRow()).text, "5\nHint");
}

TEST_F(PluginValuesTest, TheFirstOccurrenceOfTheHintIsWhatIsStyled) {
  struct HintCase {
    const char* title;
    const char* hint;
    std::size_t start;
  };
  for (const HintCase& one : std::vector<HintCase>{{"abcabd", "abd", 3},
                                                   {"aabaabaaab", "aaab", 6},
                                                   {"xab", "ab", 1},
                                                   {"aaa", "aaaa", 4},
                                                   {"abab", "b\nb", 3},
                                                   {"Title", "Hint", 6}}) {
    awakeWith(
        with(with(option("TextField"), "SettingTitle", text(one.title)), "SettingTitleHint", text(one.hint)));
    const AttributedText title = shownText(optionRow());
    ASSERT_EQ(title.runs.size(), 1U);
    EXPECT_EQ(title.runs[0].start, one.start) << one.title << ", " << one.hint;
    EXPECT_EQ(title.runs[0].start, title.text.find(one.hint));
  }
}

// Letter by letter this would take hours.
TEST_F(PluginValuesTest, AHintThatNearlyOccursEverywhereInAVeryLongTitleIsFound) {
  constexpr std::size_t kLong = 1'000'000;
  awakeWith(with(with(option("TextField"), "SettingTitle", text(std::string(kLong, 'a'))), "SettingTitleHint",
                 text(std::string(kLong / 2, 'a') + "b")));
  EXPECT_EQ(shownText(optionRow()).runs.at(0).start, kLong + 1);
}

TEST_F(PluginValuesTest, AnOptionsTitleAndItsHintStandOnTwoLines) {
  awakeWith(option("TextField"));
  TextAttributes hint;
  hint.font = Font{Font::Family::User, 11, false, true};
  hint.color = TextColor::DarkGray;
  AttributedText expected("Title\nHint");
  expected.runs = {{6, 4, hint}};
  EXPECT_EQ(shownText(optionRow()), expected);
}

TEST_F(PluginValuesTest, TheFirstOccurrenceOfTheHintIsStyledAlsoWithinTheTitle) {
  awakeWith(with(option("TextField"), "SettingTitle", text("A Hint first")));
  const AttributedText title = shownText(optionRow());
  EXPECT_EQ(title.text, "A Hint first\nHint");
  ASSERT_EQ(title.runs.size(), 1U);
  EXPECT_EQ(title.runs[0].start, 2U);
  EXPECT_EQ(title.runs[0].length, 4U);
}

TEST_F(PluginValuesTest, AnOptionWithAnEmptyHintOrWithoutOneShowsItsTitleUnstyled) {
  addPlugin("check_x", options({with(option("TextField"), "SettingTitleHint", text("")),
                                without(option("TextField"), "SettingTitleHint"),
                                with(option("TextField"), "SettingTitleHint", number(1))}));
  awake();
  for (const std::size_t index : {0U, 1U, 2U}) {
    EXPECT_EQ(shownText(optionRow(index)), AttributedText("Title\n")) << index;
  }
}

TEST_F(PluginValuesTest, EveryOptionButACheckboxShowsItsTitle) {
  for (const std::string_view type : setting_type::kAll) {
    addPlugin("check_x", options({option(type)}));
    awake();
    const bool isTitle = std::holds_alternative<AttributedText>(shown(optionRow()));
    EXPECT_EQ(isTitle, type != "Checkbox") << type;
  }
}

TEST_F(PluginValuesTest, ALinkHasNoValue) {
  awakeWith(with(option("Checkbox"), "SettingDetailsURL", text("http://example.com")));
  EXPECT_TRUE(isNothing(shown(valueRow())));
}

// Columns.

TEST_F(PluginValuesTest, OnlyPluginRowsHaveAValueInTheEnabledColumn) {
  awakeWith(option("TextField"));
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(true));
  EXPECT_TRUE(isNothing(enabledShown(optionRow())));
  EXPECT_TRUE(isNothing(enabledShown(valueRow())));
}

TEST_F(PluginValuesTest, AColumnWithAnotherHeaderHasNoValueAndIsNeverWritten) {
  awakeWith(option("TextField"));
  countReloads();
  for (const char* title : {"enabled", "PLUGIN", "", "Other"}) {
    const TableColumn column{"Plugin", title, 100};
    for (const OutlineItem& item : {plugin(), optionRow(), valueRow()}) {
      EXPECT_TRUE(isNothing(controller->outlineViewObjectValueForTableColumnByItem(outline(), column, item)));
      EXPECT_FALSE(controller->outlineViewShouldEditTableColumnItem(outline(), column, item));
      reloadedItems.clear();
      controller->outlineViewSetObjectValueForTableColumnByItem(outline(), flag(false), column, item);
      EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{item});
    }
  }
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginValuesTest, TheEnabledColumnIsEditableOnPluginRowsAndThePluginColumnOnValueRows) {
  awakeWith(with(option("FileArray"), "SettingDetailsURL", text("http://example.com")));
  const auto editable = [&](const TableColumn& column, const OutlineItem& item) {
    return controller->outlineViewShouldEditTableColumnItem(outline(), column, item);
  };
  EXPECT_TRUE(editable(enabledColumn(), plugin()));
  EXPECT_FALSE(editable(enabledColumn(), optionRow()));
  EXPECT_FALSE(editable(pluginColumn(), plugin()));
  EXPECT_FALSE(editable(pluginColumn(), optionRow()));
  EXPECT_FALSE(editable(pluginColumn(), valueRow())) << "a link";
}

TEST_F(PluginValuesTest, ValueRowsOfEveryTypeAreEditableAndOptionRowsOfNone) {
  for (const std::string_view type : setting_type::kAll) {
    storeARowFor(type);
    addPlugin("check_x", options({option(type)}));
    awake();
    EXPECT_FALSE(controller->outlineViewShouldEditTableColumnItem(outline(), pluginColumn(), optionRow()))
        << type;
    for (const OutlineItem& row : outline().childrenOfItem(optionRow())) {
      EXPECT_TRUE(controller->outlineViewShouldEditTableColumnItem(outline(), pluginColumn(), row)) << type;
    }
  }
}

// Reading.

struct ReadCase {
  const char* type;
  PropertyList inFile;
  PropertyList shown;
};
void PrintTo(const ReadCase& read, std::ostream* stream) { *stream << read.type; }

class PluginValuesReadTest : public PluginValuesTest, public testing::WithParamInterface<ReadCase> {};

TEST_P(PluginValuesReadTest, ASingleValueIsShownAsItIsStored) {
  store(Dictionary::make({{kKey, GetParam().inFile}}));
  awakeWith(option(GetParam().type));
  EXPECT_EQ(shownValue(valueRow()), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(SingleValues, PluginValuesReadTest,
                         testing::Values(ReadCase{"NumberPicker", number(7), number(7)},
                                         ReadCase{"PopUpMenu", number(2), number(2)},
                                         ReadCase{"TextField", text("a"), text("a")},
                                         ReadCase{"UsernameField", text("b"), text("b")},
                                         ReadCase{"PasswordField", text("c"), text("c")},
                                         ReadCase{"FilePicker", text("/f"), text("/f")},
                                         ReadCase{"FolderPicker", text("/d"), text("/d")},
                                         ReadCase{"PluginValidation", text("x"), PropertyList()}),
                         [](const auto& tested) { return std::string(tested.param.type); });

TEST_F(PluginValuesTest, AValueIsReadAgainEachTimeItIsShown) {
  awakeWith(option("TextField"));
  EXPECT_TRUE(isNothing(shown(valueRow()))) << "no file";
  store(Dictionary::make({{"Other", text("a")}}));
  EXPECT_TRUE(isNothing(shown(valueRow()))) << "no key";
  store(Dictionary::make({{kKey, text("now")}}));
  EXPECT_EQ(shownValue(valueRow()), text("now"));
}

TEST_F(PluginValuesTest, AStorageFileThatIsNoDictionaryShowsNothing) {
  platform.writePlist(platform.paths.onDisk(kStorage), texts({"a"}));
  addPlugin("check_x", options({option("TextField"), option("Checkbox")}));
  awake();
  EXPECT_TRUE(isNothing(shown(valueRow())));
  EXPECT_TRUE(isNothing(shown(optionRow(1))));
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginValuesTest, ABoxOfASetShowsTheLoadedStateAndNotTheFile) {
  store(Dictionary::make({{kKey, Dictionary::make({{"a", flag(true)}, {"b", flag(false)}})}}));
  awakeWith(option("Checkboxes"));
  store(Dictionary::make({{kKey, Dictionary::make({{"a", flag(false)}, {"b", flag(true)}})}}));
  EXPECT_EQ(shownValue(valueRow(0)), flag(true));
  EXPECT_EQ(shownValue(valueRow(1)), flag(false));
  platform.remove(platform.paths.onDisk(kStorage));
  EXPECT_TRUE(isNothing(shown(valueRow(0)))) << "without the file nothing is shown";
}

TEST_F(PluginValuesTest, ABoxOfASetWithAValueOfAnotherTypeIsOff) {
  store(Dictionary::make({{kKey, Dictionary::make({{"a", texts({"x"})}})}}));
  awakeWith(option("Checkboxes"));
  EXPECT_EQ(shownValue(valueRow(0)), flag(false));
}

TEST_F(PluginValuesTest, AListEntryShowsWhatTheFileHoldsUnderItsText) {
  store(Dictionary::make({{kKey, texts({"/a", "/b"})}, {"/b", text("odd")}}));
  for (const char* type : {"FileArray", "FolderArray"}) {
    addPlugin("check_x", options({option(type)}));
    awake();
    EXPECT_TRUE(isNothing(shown(valueRow(0)))) << type;
    EXPECT_EQ(shownValue(valueRow(1)), text("odd")) << type;
  }
}

TEST_F(PluginValuesTest, ACheckboxShowsTheStoredStateWhateverItsSense) {
  for (const char* sense : {"Positive", "Negative", "Sideways"}) {
    addPlugin("check_x", options({option("Checkbox", text(sense))}));
    for (const bool state : {true, false}) {
      store(Dictionary::make({{kKey, flag(state)}}));
      awake();
      EXPECT_EQ(shownValue(optionRow()), flag(state)) << sense;
    }
    store(Dictionary::make());
    EXPECT_EQ(shownValue(optionRow()), flag(false)) << sense << ": missing counts as off";
    platform.remove(platform.paths.onDisk(kStorage));
    EXPECT_TRUE(isNothing(shown(optionRow()))) << sense << ": no file, no value";
  }
}

TEST_F(PluginValuesTest, AValueInRootsHomeIsReadThroughRoot) {
  pane.rootFile = Dictionary::make({{kKey, text("secret")}});
  for (const char* path : {kRootStorage, "/VAR/Root/x.plist"}) {
    addPlugin("check_x", options({in(path, option("TextField"))}));
    awake();
    pane.rootReads.clear();
    EXPECT_EQ(shownValue(valueRow()), text("secret")) << path;
    EXPECT_EQ(pane.rootReads, Texts{platform.paths.onDisk(path)});
  }
}

TEST_F(PluginValuesTest, AnyOtherPathIsReadDirectly) {
  for (const char* path : {"/var/rootx.plist", "/tmp/var/root/x.plist", "/var/root/../x.plist",
                           "/Library/../var/root/x.plist"}) {
    store(Dictionary::make({{kKey, text("open")}}), path);
    addPlugin("check_x", options({in(path, option("TextField"))}));
    awake();
    EXPECT_EQ(shownValue(valueRow()), text("open")) << path;
  }
  EXPECT_TRUE(pane.rootReads.empty());
}

TEST_F(PluginValuesTest, RootIsNotAskedWhileTheLockIsClosed) {
  awakeWith(in(kRootStorage, option("TextField")));
  pane.rootReads.clear();
  pane.setUnlocked(false);
  EXPECT_TRUE(isNothing(shown(valueRow())));
  EXPECT_TRUE(pane.rootReads.empty());
}

TEST_F(PluginValuesTest, ACheckboxInRootsHomeIsReadAsTheUser) {
  store(Dictionary::make({{kKey, flag(true)}}), kRootStorage);
  awakeWith(in(kRootStorage, option("Checkbox", text("Positive"))));
  EXPECT_EQ(shownValue(optionRow()), flag(true));
  EXPECT_TRUE(pane.rootReads.empty());
}

// A picture of many rows.

TEST_F(PluginValuesTest, APictureReadsAFileOnceAndTheNextOneReadsItAgain) {
  store(Dictionary::make({{kKey, text("before")}}));
  awakeWith(option("TextField"));
  {
    const auto picture = outline().drawRows();
    EXPECT_EQ(shownValue(valueRow()), text("before"));
    store(Dictionary::make({{kKey, text("after")}}));
    EXPECT_EQ(shownValue(valueRow()), text("before")) << "one picture, one moment";
    const auto inIt = outline().drawRows();
    EXPECT_EQ(shownValue(valueRow()), text("before"));
  }
  EXPECT_EQ(shownValue(valueRow()), text("after"));
  const auto next = outline().drawRows();
  EXPECT_EQ(shownValue(valueRow()), text("after"));
  edit(valueRow(), text("typed"));
  EXPECT_EQ(shownValue(valueRow()), text("typed")) << "what the pane writes is seen at once";
}

TEST_F(PluginValuesTest, APictureAsksRootForAFileOnce) {
  pane.rootFile = Dictionary::make({{kKey, text("secret")}});
  awakeWith(in(kRootStorage, option("TextField")));
  pane.rootReads.clear();
  {
    const auto picture = outline().drawRows();
    for (int row = 0; row < 3; ++row) EXPECT_EQ(shownValue(valueRow()), text("secret"));
    EXPECT_EQ(pane.rootReads.size(), 1U);
    pane.setUnlocked(false);
    EXPECT_TRUE(isNothing(shown(valueRow()))) << "nor is it shown behind a closed lock";
  }
  EXPECT_EQ(pane.rootReads.size(), 1U);
}

}  // namespace
}  // namespace corvane
