// Definitions and storage files in which something is missing or of another type, by generation: every key of
// every type of setting, with every kind of value in its place. Whatever it is, the tab shows and edits the
// rest.
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginDefinition.h"
#include "plugins/PluginsTabFixture.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

using namespace test;

constexpr const char* kGoodStorage = "/Library/Corvane/PluginSupport/good.plist";

/// One value of each kind, and some that look like parts of a definition. Nothing stands for a missing key.
std::vector<PropertyList> everyValue() {
  Dictionary nested = Dictionary::make({{"a", Array::make({Dictionary::make({{"b", texts({"c"})}})})}});
  Array mixed = texts({"Add a new entry", "http://example.com"});
  mixed.append(number(1));
  mixed.append(option("TextField"));
  return {PropertyList(),
          text(""),
          text("text"),
          text("http://example.com"),
          text("../../etc/x.plist"),
          text("1-10,0"),
          number(0),
          number(std::numeric_limits<std::int64_t>::min()),
          PropertyList::unsignedInteger(std::numeric_limits<std::uint64_t>::max()),
          PropertyList::real(std::numeric_limits<double>::quiet_NaN()),
          PropertyList::real(-1e300),
          flag(true),
          PropertyList::date({0}),
          PropertyList::data({0, 255}),
          Array::make(),
          mixed,
          Array::make({Array::make(), Array::make({option("Checkbox")})}),
          Dictionary::make(),
          nested,
          option("TextField"),
          Dictionary::make({{"PluginOptions", options({option("FileArray")})}})};
}

/// What a storage file should hold for the type.
PropertyList goodStoredValue(std::string_view type) {
  if (type == setting_type::kCheckboxes) return Dictionary::make({{"a", flag(true)}, {"b", flag(false)}});
  if (type == setting_type::kFileArray || type == setting_type::kFolderArray) {
    return texts({"Add a new entry", "/tmp/a"});
  }
  return number(1);
}

class MalformedDefinitionsTest : public PluginsTabFixture,
                                 public testing::WithParamInterface<std::string_view> {
 protected:
  MalformedDefinitionsTest() {
    addPlugin("a_good", options({with(option("TextField"), "SettingStoragePath", text(kGoodStorage))}));
    store(Dictionary::make({{kKey, text("good")}}), kGoodStorage);
    storeValue(goodStoredValue(GetParam()));
    platform.dialogs.chosenPaths = {platform.paths.onDisk("/tmp/chosen")};
  }
  void storeValue(const PropertyList& value) {
    Dictionary contents = Dictionary::make();
    contents.set(kKey, value);
    store(contents);
  }
  static Dictionary complete() {
    return with(option(GetParam(), texts({"a", "b"})), "SettingDetailsURL", text("http://example.com"));
  }
  static Dictionary definitionOf(const Dictionary& one) {
    return Dictionary::make({{"PluginName", text("b_tested")},
                             {"ProgramArguments", texts({"check", "-v"})},
                             {"PluginOptions", options({one})}});
  }
  /// Shows the tab with the definition, does everything that a user can do in it, and finds the other plug-in
  /// as it should be. Answers whether the plug-in of the definition was shown.
  bool survives(const PropertyList& definition) {
    addDefinition("b_tested", definition);
    awake();
    doEverything();
    controller->refresh();
    outline().expandItem({}, true);
    bool isShown = false;
    bool isGoodShown = false;
    for (const OutlineItem& row : outline().childrenOfItem({})) {
      const std::string fileName = *row.object().asDictionary().string("PluginFileName");
      isShown = isShown || fileName == "b_tested";
      isGoodShown = isGoodShown || (fileName == "a_good" && goodPluginWorks(row));
    }
    EXPECT_TRUE(isGoodShown);
    return isShown;
  }

 private:
  bool goodPluginWorks(const OutlineItem& plugin) {
    const OutlineItem row = outline().childrenOfItem(outline().childrenOfItem(plugin).at(0)).at(0);
    edit(row, text("edited"));
    return cell<TextFieldCell>(row).text == "edited" &&
           stored(kGoodStorage) == Dictionary::make({{kKey, text("edited")}});
  }
  void doEverything() {
    static const std::vector<PropertyList> typed = {text("x"), text(""), number(1), flag(true)};
    for (int row = 0; row < outline().numberOfRows(); ++row) {
      const OutlineItem item = outline().itemAtRow(row);
      EXPECT_GE(outline().heightOfRow(item), outline().rowHeight());
      static_cast<void>(outline().showsOutlineCell(item));
      for (const OutlineView::Column& column : outline().columns()) {
        EXPECT_NE(outline().preparedCell(column, item).cell, nullptr);
        outline().clickCell(outline().itemAtRow(row), column);
        endSheets();
        for (const PropertyList& value : typed) outline().editCell(outline().itemAtRow(row), column, value);
      }
    }
  }
  void endSheets() {
    while (platform.dialogs.endedSheets < platform.dialogs.sheets.size()) platform.dialogs.endSheet(1000);
  }
};

TEST_P(MalformedDefinitionsTest, TheCompleteDefinitionIsShown) {
  EXPECT_TRUE(survives(definitionOf(complete())));
}

TEST_P(MalformedDefinitionsTest, AnyValueUnderAnyKeyOfTheOptionIsSurvived) {
  for (const char* key :
       {"SettingTitle", "SettingTitleHint", "SettingType", "SettingStoragePath", "SettingStorageKey",
        "SettingDetailsURL", "CheckboxesDictionary", "FileFolderArray", "PluginOptions"}) {
    for (const PropertyList& value : everyValue()) {
      const Dictionary one = with(complete(), key, value);
      const PropertyList type = one.dictionary("SettingType").value("Type");
      const bool isComplete = one.contains("SettingTitle") && one.contains("SettingStoragePath") &&
                              one.contains("SettingStorageKey") && type.asString();
      EXPECT_EQ(survives(definitionOf(one)), isComplete) << key << " " << description(value);
    }
  }
}

TEST_P(MalformedDefinitionsTest, AnyValueUnderAnyKeyOfTheSettingTypeIsSurvived) {
  for (const PropertyList& value : everyValue()) {
    EXPECT_TRUE(survives(definitionOf(option(GetParam(), value)))) << description(value);
    const Dictionary one = with(complete(), "SettingType", with(Dictionary::make(), "Type", value));
    EXPECT_FALSE(survives(definitionOf(one))) << description(value);
  }
}

TEST_P(MalformedDefinitionsTest, AnyValueUnderAnyKeyOfTheDefinitionIsSurvived) {
  for (const char* key : {"PluginName", "ProgramArguments", "PluginFileName", "Unknown"}) {
    for (const PropertyList& value : everyValue()) {
      EXPECT_TRUE(survives(with(definitionOf(complete()), key, value))) << key << " " << description(value);
    }
  }
  for (const PropertyList& value : everyValue()) {
    const bool holdsAnOption = !acceptedOptions(with(Dictionary::make(), "PluginOptions", value)).empty();
    EXPECT_EQ(survives(with(definitionOf(complete()), "PluginOptions", value)), holdsAnOption)
        << description(value);
  }
}

TEST_P(MalformedDefinitionsTest, AnyValueAmongTheOptionsIsSurvived) {
  for (const PropertyList& value : everyValue()) {
    if (!value) continue;
    Array all = options({complete()});
    all.insert(0, value);
    EXPECT_TRUE(survives(with(definitionOf(complete()), "PluginOptions", all))) << description(value);
  }
}

TEST_P(MalformedDefinitionsTest, AnyValueInPlaceOfTheWholeDefinitionIsSurvived) {
  for (const PropertyList& value : everyValue()) {
    if (!value) continue;
    const bool isDefinition = !acceptedOptions(value.asDictionary()).empty();
    EXPECT_EQ(survives(value), isDefinition) << description(value);
  }
}

TEST_P(MalformedDefinitionsTest, AnyStoredValueIsSurvivedAndTheOtherKeysAreKept) {
  for (const PropertyList& value : everyValue()) {
    Dictionary contents = Dictionary::make({{"Other", texts({"kept"})}});
    contents.set(kKey, value);
    store(contents);
    EXPECT_TRUE(survives(definitionOf(complete()))) << description(value);
    EXPECT_EQ(stored().value("Other"), texts({"kept"})) << description(value);
  }
}

TEST_P(MalformedDefinitionsTest, AnyValueInPlaceOfTheStorageOrSettingsFileIsSurvived) {
  for (const PropertyList& value : everyValue()) {
    if (!value) continue;
    platform.writePlist(platform.paths.onDisk(kStorage), value);
    EXPECT_TRUE(survives(definitionOf(complete()))) << description(value);
    platform.writePlist(settingsFile("b_tested"), value);
    controller->refresh();
    EXPECT_EQ(pluginNames(), std::vector<std::string>{"a_good"}) << description(value);
  }
}

INSTANTIATE_TEST_SUITE_P(AllTypes, MalformedDefinitionsTest, testing::ValuesIn(setting_type::kAll),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace
}  // namespace corvane
