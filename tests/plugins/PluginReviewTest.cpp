// What a definition's author is told: for each rule that leaves something out and for each thing that the
// pane passes over in silence, where it is, what was expected and what was found. And that nothing is said
// which the pane does not do.
#include <cstddef>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugins/PluginDefinition.h"
#include "plugins/PluginReview.h"
#include "plugins/PluginsTabFixture.h"
#include "values/Conversions.h"

namespace corvane {

void PrintTo(const PluginFinding& finding, std::ostream* stream) {
  constexpr const char* kWeights[] = {"left out", "hidden", "warning"};
  *stream << kWeights[static_cast<int>(finding.weight)] << " "
          << (finding.option ? std::to_string(*finding.option) : "-") << " [" << finding.key << "] expected {"
          << finding.expected << "} found {" << finding.found << "}";
}

namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Weight = PluginFinding::Weight;

constexpr const char* kTypes =
    "one of Checkbox, FolderPicker, FilePicker, PopUpMenu, Checkboxes, NumberPicker, TextField, "
    "UsernameField, PasswordField, DisplayOnly, PluginValidation, FileArray, FolderArray";
constexpr const char* kRange = "a range like \"min-max\" or \"min-max,step\"";
constexpr const char* kDigits = "decimal digits on both sides of \"-\" and as the step";
constexpr const char* kSense = "\"Positive\" or \"Negative\"; without it nothing is stored";
constexpr const char* kLength = "a length in characters, or nothing";
constexpr const char* kPasswordLength = "a length of at least 1; without it nothing can be typed";
constexpr const char* kTitles = "an array of at least one title";
constexpr const char* kHint = "a text, which may be empty";
constexpr const char* kStorageKeyText = "a text; without it nothing is read or stored";
constexpr const char* kAbsolute = "an absolute path; without it nothing is read or stored";
constexpr const char* kLink = "a text that begins with \"http\"";
constexpr const char* kNoOption = "at least one option that is shown";
constexpr const char* kNoOptions = "an array of at least one option";

Dictionary definitionOf(const Array& all) {
  return Dictionary::make({{"PluginName", text("Check X")}, {"PluginOptions", all}});
}

PluginFinding leftOut(std::size_t place, std::string key, std::string expected, std::string found) {
  return {Weight::LeftOut, place, std::move(key), std::move(expected), std::move(found)};
}
PluginFinding pluginLeftOut(std::string key, std::string expected, std::string found) {
  return {Weight::LeftOut, {}, std::move(key), std::move(expected), std::move(found)};
}
PluginFinding warning(std::string key, std::string expected, std::string found) {
  return {Weight::Warning, 0, std::move(key), std::move(expected), std::move(found)};
}
PluginFinding pluginWarning(std::string key, std::string expected, std::string found) {
  return {Weight::Warning, {}, std::move(key), std::move(expected), std::move(found)};
}

/// One definition and all that is said of it.
struct Case {
  PropertyList contents;
  std::vector<PluginFinding> findings;
};

void expectAll(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    const PluginReview review = reviewDefinition(each.contents);
    EXPECT_THAT(review.findings, ElementsAreArray(each.findings)) << description(each.contents);
    // What the review calls left out is what the pane leaves out, and nothing else is.
    const Array accepted = acceptedOptions(each.contents.asDictionary());
    std::size_t shown = 0;
    for (const auto& reviewed : review.options) shown += reviewed.isShown ? 1U : 0U;
    EXPECT_EQ(shown, accepted.size()) << description(each.contents);
    EXPECT_EQ(review.isShown, !accepted.empty()) << description(each.contents);
  }
}

/// One good option, so that the plug-in itself is shown, behind the one that is looked at.
Dictionary beside(const PropertyList& first) {
  Array all = Array::make({first});
  all.append(option("DisplayOnly"));
  return definitionOf(all);
}

TEST(PluginReview, EveryTypeAsTheFormatHasItIsShownWithoutAWord) {
  const std::vector<std::pair<const char*, PropertyList>> good = {{"Checkbox", text("Positive")},
                                                                  {"Checkbox", text("Negative")},
                                                                  {"FolderPicker", {}},
                                                                  {"FilePicker", {}},
                                                                  {"PopUpMenu", texts({"one"})},
                                                                  {"PopUpMenu", texts({"one", "two", "two"})},
                                                                  {"Checkboxes", {}},
                                                                  {"NumberPicker", text("1-10")},
                                                                  {"NumberPicker", text("0-100,5")},
                                                                  {"NumberPicker", text("1 - 10 , 2")},
                                                                  {"NumberPicker", text("7-7")},
                                                                  {"NumberPicker", text("0-99999")},
                                                                  {"TextField", {}},
                                                                  {"TextField", number(20)},
                                                                  {"TextField", number(0)},
                                                                  {"TextField", number(-1)},
                                                                  {"TextField", text("20")},
                                                                  {"UsernameField", {}},
                                                                  {"UsernameField", number(8)},
                                                                  {"PasswordField", number(1)},
                                                                  {"PasswordField", number(-1)},
                                                                  {"PasswordField", text("12")},
                                                                  {"DisplayOnly", {}},
                                                                  {"FileArray", {}},
                                                                  {"FolderArray", {}}};
  for (const auto& [type, value] : good) {
    const PluginReview review = reviewDefinition(definitionOf(options({option(type, value)})));
    EXPECT_THAT(review.findings, IsEmpty()) << type << " " << description(value);
    EXPECT_TRUE(review.isShown);
    EXPECT_FALSE(review.leavesOut());
  }
}

TEST(PluginReview, AnOptionIsLeftOutForTheFirstRuleThatItBreaks) {
  const auto typed = [](PropertyList type) {
    return with(option("TextField"), "SettingType", Dictionary::make({{"Type", std::move(type)}}));
  };
  expectAll({
      {beside(text("no dictionary")), {leftOut(0, "", "a dictionary", "\"no dictionary\"")}},
      {beside(number(5)), {leftOut(0, "", "a dictionary", "5")}},
      {beside(texts({"a", "b"})), {leftOut(0, "", "a dictionary", "an array of 2")}},
      {beside(without(option("TextField"), "SettingStorageKey")),
       {leftOut(0, "SettingStorageKey", "a text", "nothing")}},
      {beside(without(option("TextField"), "SettingStoragePath")),
       {leftOut(0, "SettingStoragePath", "a text", "nothing")}},
      {beside(without(option("TextField"), "SettingTitle")),
       {leftOut(0, "SettingTitle", "a text", "nothing")}},
      {beside(without(option("TextField"), "SettingType")),
       {leftOut(0, "SettingType", "a dictionary", "nothing")}},
      {beside(Dictionary::make()), {leftOut(0, "SettingStorageKey", "a text", "nothing")}},
      {beside(without(without(option("TextField"), "SettingTitle"), "SettingStoragePath")),
       {leftOut(0, "SettingStoragePath", "a text", "nothing")}},
      {beside(without(without(option("TextField"), "SettingTitle"), "SettingType")),
       {leftOut(0, "SettingTitle", "a text", "nothing")}},
      {beside(without(option("DisplayOnly"), "SettingStorageKey")),
       {leftOut(0, "SettingStorageKey", "a text", "nothing")}},
      {beside(without(option("PluginValidation"), "SettingStoragePath")),
       {leftOut(0, "SettingStoragePath", "a text", "nothing")}},
      {beside(with(option("TextField"), "SettingType", text("TextField"))),
       {leftOut(0, "SettingType", "a dictionary", "\"TextField\"")}},
      {beside(with(option("TextField"), "SettingType", Dictionary::make())),
       {leftOut(0, "SettingType.Type", kTypes, "nothing")}},
      {beside(with(option("TextField"), "SettingType", Dictionary::make({{"Value", number(1)}}))),
       {leftOut(0, "SettingType.Type", kTypes, "nothing")}},
      {beside(typed(text("checkbox"))), {leftOut(0, "SettingType.Type", kTypes, "\"checkbox\"")}},
      {beside(typed(text("CHECKBOX"))), {leftOut(0, "SettingType.Type", kTypes, "\"CHECKBOX\"")}},
      {beside(typed(text("Checkbox "))), {leftOut(0, "SettingType.Type", kTypes, "\"Checkbox \"")}},
      {beside(typed(text("Slider"))), {leftOut(0, "SettingType.Type", kTypes, "\"Slider\"")}},
      {beside(typed(text(""))), {leftOut(0, "SettingType.Type", kTypes, "\"\"")}},
      {beside(typed(number(3))), {leftOut(0, "SettingType.Type", kTypes, "3")}},
      {beside(typed(flag(true))), {leftOut(0, "SettingType.Type", kTypes, "true")}},
      {beside(typed(PropertyList::date({0}))), {leftOut(0, "SettingType.Type", kTypes, "a date")}},
      {beside(typed(PropertyList::data({1}))), {leftOut(0, "SettingType.Type", kTypes, "data")}},
      {beside(typed(texts({"Checkbox"}))), {leftOut(0, "SettingType.Type", kTypes, "an array of 1")}},
  });
}

TEST(PluginReview, AnOptionThatIsLeftOutIsNotWarnedOf) {
  Dictionary bad = with(without(option("PasswordField"), "SettingTitle"), "SettingTitelHint", text("x"));
  expectAll({{beside(bad), {leftOut(0, "SettingTitle", "a text", "nothing")}}});
}

TEST(PluginReview, ADefinitionIsLeftOutWithItsReason) {
  Array bad = Array::make({text("x")});
  expectAll({
      {PropertyList(), {pluginLeftOut("", "a property list that is a dictionary", "nothing")}},
      {text("x"), {pluginLeftOut("", "a property list that is a dictionary", "\"x\"")}},
      {texts({"a"}), {pluginLeftOut("", "a property list that is a dictionary", "an array of 1")}},
      {Dictionary::make(), {pluginLeftOut("PluginOptions", kNoOptions, "nothing")}},
      {definitionOf(Array::make()), {pluginLeftOut("PluginOptions", kNoOptions, "an array of 0")}},
      {Dictionary::make({{"PluginOptions", text("Checkbox")}}),
       {pluginLeftOut("PluginOptions", kNoOptions, "\"Checkbox\"")}},
      {Dictionary::make({{"PluginOptions", option("Checkbox")}}),
       {pluginLeftOut("PluginOptions", kNoOptions, "a dictionary of 5")}},
      {definitionOf(bad),
       {leftOut(0, "", "a dictionary", "\"x\""), pluginLeftOut("PluginOptions", kNoOption, "an array of 1")}},
      {definitionOf(options({without(option("TextField"), "SettingTitle"), option("Slider")})),
       {leftOut(0, "SettingTitle", "a text", "nothing"), leftOut(1, "SettingType.Type", kTypes, "\"Slider\""),
        pluginLeftOut("PluginOptions", kNoOption, "an array of 2")}},
  });
}

TEST(PluginReview, ADefinitionIsWarnedOfWhatItsRowAndItsTestLack) {
  const Array plain = options({option("DisplayOnly")});
  const Array tested = options({option("PluginValidation")});
  const auto run = [](const Array& all, PropertyList arguments) {
    return with(definitionOf(all), "ProgramArguments", std::move(arguments));
  };
  Array mixed = texts({"check_x"});
  mixed.append(number(5));
  const char* executable = "an executable below the plug-ins folder";
  expectAll({
      {Dictionary::make({{"PluginOptions", plain}}), {pluginWarning("PluginName", "a text", "nothing")}},
      {with(definitionOf(plain), "PluginName", number(7)), {pluginWarning("PluginName", "a text", "7")}},
      {run(plain, {}), {}},
      {run(plain, Array::make()), {}},
      {run(plain, texts({"../x"})), {}},
      {run(plain, text("check_x")), {pluginWarning("ProgramArguments", "an array of texts", "\"check_x\"")}},
      {run(plain, mixed), {pluginWarning("ProgramArguments", "an array of texts", "5")}},
      {run(tested, texts({"check_x", "-v"})), {}},
      {run(tested, texts({"extra/check_x"})), {}},
      {run(tested, {}), {pluginWarning("ProgramArguments", "the executable that is tested", "nothing")}},
      {run(tested, Array::make()),
       {pluginWarning("ProgramArguments", "the executable that is tested", "an array of 0")}},
      {run(tested, mixed), {pluginWarning("ProgramArguments", "an array of texts", "5")}},
      {run(tested, texts({"../check_x"})), {pluginWarning("ProgramArguments", executable, "\"../check_x\"")}},
      {run(tested, texts({"a/../b"})), {pluginWarning("ProgramArguments", executable, "\"a/../b\"")}},
      {run(tested, texts({""})), {pluginWarning("ProgramArguments", executable, "\"\"")}},
      {run(tested, texts({"."})), {pluginWarning("ProgramArguments", executable, "\".\"")}},
      {with(definitionOf(plain), "Version", text("1.2")), {}},
  });
}

TEST(PluginReview, WhatAnOptionPassesOverInSilenceIsAWarning) {
  const auto titled = [](std::string_view key, PropertyList value) {
    return definitionOf(options({with(option("TextField"), key, std::move(value))}));
  };
  expectAll({
      {titled("SettingTitle", number(1)), {warning("SettingTitle", "a text", "1")}},
      {titled("SettingTitle", texts({"a"})), {warning("SettingTitle", "a text", "an array of 1")}},
      {titled("SettingTitleHint", {}), {warning("SettingTitleHint", kHint, "nothing")}},
      {titled("SettingTitleHint", flag(false)), {warning("SettingTitleHint", kHint, "false")}},
      {titled("SettingTitleHint", text("")), {}},
      {titled("SettingStorageKey", number(1)), {warning("SettingStorageKey", kStorageKeyText, "1")}},
      {titled("SettingStoragePath", number(1)), {warning("SettingStoragePath", kAbsolute, "1")}},
      {titled("SettingStoragePath", text("x.plist")),
       {warning("SettingStoragePath", kAbsolute, "\"x.plist\"")}},
      {titled("SettingStoragePath", text("")), {warning("SettingStoragePath", kAbsolute, "\"\"")}},
      {definitionOf(options({with(option("DisplayOnly"), "SettingStoragePath", text("x"))})), {}},
      {definitionOf(options({with(option("DisplayOnly"), "SettingStorageKey", number(1))})), {}},
      {titled("SettingTitelHint", text("x")), {warning("SettingTitelHint", "a key of the format", "\"x\"")}},
      {titled("SettingDefault", number(3)), {warning("SettingDefault", "a key of the format", "3")}},
      {titled("Comment", text("x")), {}},
      {titled("CheckboxesDictionary", Dictionary::make()),
       {warning("CheckboxesDictionary", "nothing; the pane adds this itself", "a dictionary of 0")}},
      {titled("FileFolderArray", Array::make()),
       {warning("FileFolderArray", "nothing; the pane adds this itself", "an array of 0")}},
      {titled("FileFolderRows", Array::make()),
       {warning("FileFolderRows", "nothing; the pane adds this itself", "an array of 0")}},
  });
}

TEST(PluginReview, ALinkThatNoRowShowsIsAWarning) {
  const auto linked = [](const char* type, PropertyList value, PropertyList link) {
    return definitionOf(
        options({with(option(type, std::move(value)), "SettingDetailsURL", std::move(link))}));
  };
  const PropertyList address = text("http://example.com");
  const char* shows = "a type that shows its link";
  expectAll({
      {linked("Checkbox", text("Positive"), address), {}},
      {linked("DisplayOnly", {}, address), {}},
      {linked("DisplayOnly", {}, text("HTTPS://example.com")), {}},
      {linked("Checkboxes", {}, address), {}},
      {linked("FileArray", {}, address), {}},
      {linked("FolderArray", {}, address), {}},
      {linked("TextField", {}, address), {warning("SettingDetailsURL", shows, "TextField")}},
      {linked("UsernameField", {}, address), {warning("SettingDetailsURL", shows, "UsernameField")}},
      {linked("PasswordField", number(8), address), {warning("SettingDetailsURL", shows, "PasswordField")}},
      {linked("NumberPicker", text("1-2"), address), {warning("SettingDetailsURL", shows, "NumberPicker")}},
      {linked("PopUpMenu", texts({"a"}), address), {warning("SettingDetailsURL", shows, "PopUpMenu")}},
      {linked("FilePicker", {}, address), {warning("SettingDetailsURL", shows, "FilePicker")}},
      {linked("FolderPicker", {}, address), {warning("SettingDetailsURL", shows, "FolderPicker")}},
      {linked("DisplayOnly", {}, text("www.example.com")),
       {warning("SettingDetailsURL", kLink, "\"www.example.com\"")}},
      {linked("DisplayOnly", {}, text("")), {warning("SettingDetailsURL", kLink, "\"\"")}},
      {linked("DisplayOnly", {}, number(4)), {warning("SettingDetailsURL", kLink, "4")}},
      {linked("TextField", {}, text("mailto:a@b")), {warning("SettingDetailsURL", kLink, "\"mailto:a@b\"")}},
  });
}

TEST(PluginReview, AParameterThatItsTypeDoesNotUnderstandIsAWarning) {
  const auto typed = [](const char* type, PropertyList value) {
    return definitionOf(options({option(type, std::move(value))}));
  };
  const auto value = [](const char* expected, std::string found) {
    return std::vector<PluginFinding>{warning("SettingType.Value", expected, std::move(found))};
  };
  Array mixed = texts({"a"});
  mixed.append(number(2));
  expectAll({
      {typed("Checkbox", {}), value(kSense, "nothing")},
      {typed("Checkbox", text("positive")), value(kSense, "\"positive\"")},
      {typed("Checkbox", text("Both")), value(kSense, "\"Both\"")},
      {typed("Checkbox", flag(true)), value(kSense, "true")},
      {typed("NumberPicker", {}), value(kRange, "nothing")},
      {typed("NumberPicker", number(10)), value(kRange, "10")},
      {typed("NumberPicker", text("10")), value(kRange, "\"10\"")},
      {typed("NumberPicker", text("")), value(kRange, "\"\"")},
      {typed("NumberPicker", text("1-2-3")), value(kRange, "\"1-2-3\"")},
      {typed("NumberPicker", text("-5-5")), value(kRange, "\"-5-5\"")},
      {typed("NumberPicker", text("1..10")), value(kRange, "\"1..10\"")},
      {typed("NumberPicker", text(",5")), value(kRange, "\",5\"")},
      {typed("NumberPicker", text("a-b")), value(kDigits, "\"a-b\"")},
      {typed("NumberPicker", text("1-")), value(kDigits, "\"1-\"")},
      {typed("NumberPicker", text("-10")), value(kDigits, "\"-10\"")},
      {typed("NumberPicker", text("1-10,x")), value(kDigits, "\"1-10,x\"")},
      {typed("NumberPicker", text("1-10,")), value(kDigits, "\"1-10,\"")},
      {typed("NumberPicker", text("1.5-3")), value(kDigits, "\"1.5-3\"")},
      {typed("NumberPicker", text("1-10,2,3")), value("at most one step", "\"1-10,2,3\"")},
      {typed("NumberPicker", text("1-10,0")), value("a step of at least 1", "\"1-10,0\"")},
      {typed("NumberPicker", text("5-1")), value("a minimum that is not above the maximum", "\"5-1\"")},
      {typed("NumberPicker", text("0-100000")), value("a range of at most 100000 numbers", "\"0-100000\"")},
      {typed("PopUpMenu", {}), value(kTitles, "nothing")},
      {typed("PopUpMenu", Array::make()), value(kTitles, "an array of 0")},
      {typed("PopUpMenu", text("one")), value(kTitles, "\"one\"")},
      {typed("PopUpMenu", mixed), value("titles that are texts", "2")},
      {typed("TextField", text("long")), value(kLength, "\"long\"")},
      {typed("TextField", texts({"5"})), value(kLength, "an array of 1")},
      {typed("UsernameField", text("")), value(kLength, "\"\"")},
      {typed("PasswordField", {}), value(kPasswordLength, "nothing")},
      {typed("PasswordField", number(0)), value(kPasswordLength, "0")},
      {typed("PasswordField", text("long")), value(kPasswordLength, "\"long\"")},
  });
}

/// A client with the definition check_x, its settings and what its options store.
class PluginReviewerTest : public PluginsTabFixture {
 protected:
  PluginReview reviewOf(const Dictionary& one, const PropertyList& value) {
    Dictionary contents = Dictionary::make();
    contents.set(kKey, value);
    store(contents);
    addPlugin("check_x", options({one}));
    return review();
  }
  PluginReview review(const std::string& fileName = "check_x") {
    return reviewer_.review(definitionFile(fileName));
  }
  std::vector<PluginFinding> stored(const char* expected, const std::string& found) {
    return {warning(std::string(kStorage) + ": " + kKey, expected, found)};
  }
  PluginReviewer reviewer_{platform.platform, platform.paths};
};

TEST_F(PluginReviewerTest, WhatIsStoredAndReachedByNoRowIsAWarning) {
  Array mixed = texts({"Add a new entry"});
  mixed.append(number(2));
  const char* names = "a dictionary of names; without it there are no rows";
  const char* add = "a list with \"Add a new entry\"; without it nothing can be added";
  struct StoredCase {
    Dictionary one;
    PropertyList value;
    std::vector<PluginFinding> findings;
  };
  const std::vector<StoredCase> cases = {
      {option("Checkboxes"), Dictionary::make({{"a", flag(true)}}), {}},
      {option("Checkboxes"), {}, stored(names, "nothing")},
      {option("Checkboxes"), Dictionary::make(), stored(names, "a dictionary of 0")},
      {option("Checkboxes"), texts({"a"}), stored(names, "an array of 1")},
      {option("Checkboxes"), Dictionary::make({{"http://a", flag(true)}, {"b", flag(true)}}),
       stored("names that are no addresses; such a row is a link", "\"http://a\"")},
      {option("FileArray"), texts({"Add a new entry"}), {}},
      {option("FileArray"), texts({"add a NEW file", "/a"}), {}},
      {option("FileArray"), {}, stored(add, "nothing")},
      {option("FolderArray"), texts({"/a"}), stored(add, "an array of 1")},
      {option("FolderArray"), text("/a"), stored(add, "\"/a\"")},
      {option("FolderArray"), mixed, stored("entries that are texts", "2")},
      {option("FileArray"), texts({"Add a new entry", "HTTP://a"}),
       stored("entries that are no addresses; such a row is a link", "\"HTTP://a\"")},
      {option("NumberPicker", text("1-10")), number(10), {}},
      {option("NumberPicker", text("1-10")), {}, {}},
      {option("NumberPicker", text("1-10")), number(11), stored("a number within the range", "11")},
      {option("NumberPicker", text("1-10")), number(0), stored("a number within the range", "0")},
      {option("NumberPicker", text("1-10")), text("5"), stored("a number within the range", "\"5\"")},
      {option("PopUpMenu", texts({"a", "b"})), number(1), {}},
      {option("PopUpMenu", texts({"a", "b"})), number(2),
       stored("the number of a title, counted from 0", "2")},
      {option("PopUpMenu", texts({"a", "b"})), number(-1),
       stored("the number of a title, counted from 0", "-1")},
      {option("PopUpMenu", texts({"a", "b"})), text("a"),
       stored("the number of a title, counted from 0", "\"a\"")},
      {option("TextField"), text("x"), {}},
      {option("TextField"), number(5), stored("a text", "something else")},
      {option("FilePicker"), number(5), stored("a text", "something else")},
      {option("PasswordField", number(8)), number(4711), stored("a text", "something else")},
      {option("Checkbox", text("Positive")), flag(false), {}},
  };
  for (const StoredCase& each : cases) {
    const PluginReview review = reviewOf(each.one, each.value);
    EXPECT_THAT(review.findings, ElementsAreArray(each.findings))
        << description(each.one) << " " << description(each.value);
    EXPECT_TRUE(review.isShown);
  }
}

TEST_F(PluginReviewerTest, AStorageFileThatCannotBeReadOrMadeIsAWarning) {
  addPlugin("check_x", options({option("TextField")}));
  EXPECT_THAT(review().findings, IsEmpty()) << "a file in the client's folders is made when it is needed";
  platform.writeText(platform.paths.onDisk(kStorage), "no property list");
  EXPECT_THAT(review().findings, ElementsAre(warning(kStorage, "a property list that is a dictionary",
                                                     "none that can be read")));
  const auto storedAt = [](const char* path) {
    return options({with(option("TextField"), "SettingStoragePath", text(path))});
  };
  addPlugin("check_x", storedAt("/Users/Shared/x.plist"));
  EXPECT_THAT(review().findings,
              ElementsAre(warning("/Users/Shared/x.plist",
                                  "a file that is there, or a path where it may be made", "no such file")));
  store(Dictionary::make(), "/Users/Shared/x.plist");
  EXPECT_THAT(review().findings, IsEmpty());
  addPlugin("check_x", storedAt("/var/root/x.plist"));
  EXPECT_THAT(review().findings, IsEmpty()) << "what only root can read is not looked at";
}

TEST_F(PluginReviewerTest, SettingsThatDoNotAskForThePluginAreTheReasonOrTheWish) {
  const std::string settings = "/Library/Corvane/PluginSupport/check_x_settings.plist";
  addPlugin("check_x", options({option("TextField")}));
  const auto reviewWith = [&](const PropertyList& contents) {
    platform.writePlist(settingsFile("check_x"), contents);
    return review();
  };
  const auto finding = [&](Weight weight, const char* key, const char* expected, const char* found) {
    return PluginFinding{weight, {}, settings + key, expected, found};
  };
  const auto visible = [](PropertyList value) {
    return Dictionary::make({{"PrefPaneVisibility", std::move(value)}});
  };
  EXPECT_TRUE(reviewWith(visible(flag(true))).isShown);
  EXPECT_TRUE(reviewWith(visible(number(1))).isShown);
  EXPECT_TRUE(reviewWith(visible(text("yes"))).isShown);
  const char* key = ": PrefPaneVisibility";
  const PluginReview hidden = reviewWith(visible(flag(false)));
  EXPECT_THAT(hidden.findings, ElementsAre(finding(Weight::Hidden, key, "true", "false")));
  EXPECT_FALSE(hidden.isShown);
  EXPECT_FALSE(hidden.options.at(0).isShown);
  EXPECT_FALSE(hidden.leavesOut()) << "as it is wished";
  EXPECT_THAT(reviewWith(visible(text("no"))).findings,
              ElementsAre(finding(Weight::Hidden, key, "true", "\"no\"")));
  EXPECT_THAT(reviewWith(Dictionary::make()).findings,
              ElementsAre(finding(Weight::LeftOut, key, "true", "nothing")));
  EXPECT_THAT(
      reviewWith(texts({"a"})).findings,
      ElementsAre(finding(Weight::LeftOut, "", "a settings file that is a dictionary", "an array of 1")));
  platform.remove(settingsFile("check_x"));
  EXPECT_THAT(review().findings,
              ElementsAre(finding(Weight::LeftOut, "", "a settings file that is a dictionary", "nothing")));
  EXPECT_TRUE(review().leavesOut());
}

TEST_F(PluginReviewerTest, TheExecutableOfATestIsLookedFor) {
  addDefinition("check_x", with(definitionOf(options({option("PluginValidation")})), "ProgramArguments",
                                texts({"check_x"})));
  EXPECT_THAT(review().findings,
              ElementsAre(pluginWarning("ProgramArguments", "an executable that exists", "\"check_x\"")));
  platform.writeText(platform.paths.plugins + "/check_x", "#!/bin/sh\n");
  EXPECT_THAT(review().findings, IsEmpty());
}

TEST_F(PluginReviewerTest, AFileThatCannotBeReadOrHasAnotherExtensionIsLeftOut) {
  const std::string elsewhere = platform.root.path() + "/check_y.PLIST";
  platform.writePlist(elsewhere, definitionOf(options({option("TextField")})));
  const PluginReview other = reviewer_.review(elsewhere);
  EXPECT_THAT(other.findings, ElementsAre(pluginLeftOut("", "the extension \"plist\"", "\"PLIST\"")));
  EXPECT_FALSE(other.isShown);
  EXPECT_THAT(reviewer_.review(platform.root.path() + "/none.plist").findings,
              ElementsAre(pluginLeftOut("", "a property list that is a dictionary", "no such file")));
  platform.writeText(platform.root.path() + "/text.plist", "text <");
  EXPECT_THAT(
      reviewer_.review(platform.root.path() + "/text.plist").findings,
      ElementsAre(pluginLeftOut("", "a property list that is a dictionary", "none that can be read")));
}

TEST_F(PluginReviewerTest, ADefinitionOutsideThePluginsFolderIsJudgedByItself) {
  const std::string elsewhere = platform.root.path() + "/check_x.plist";
  platform.writePlist(elsewhere, definitionOf(options({option("Checkboxes")})));
  const PluginReview review = reviewer_.review(elsewhere);
  EXPECT_TRUE(review.isShown);
  EXPECT_THAT(review.findings, IsEmpty()) << "neither its settings nor what it stores is known";
}

TEST_F(PluginReviewerTest, TheDefinitionsOfAClientAreThoseOfThePaneAndThoseWithItsExtensionInOtherCases) {
  addPlugin("check_x", options({option("TextField")}));
  addPlugin("extra/check_y", options({option("TextField")}));
  platform.writePlist(platform.paths.plugins + "/check_z.Plist", Dictionary::make());
  platform.writeText(platform.paths.plugins + "/check_x", "#!/bin/sh\n");
  platform.writeText(platform.paths.plugins + "/.plist", "a hidden file without an extension");
  const auto found = reviewer_.definitions();
  ASSERT_TRUE(found);
  EXPECT_THAT(*found, testing::UnorderedElementsAre("check_x.plist", "extra/check_y.plist", "check_z.Plist"));
  platform.remove(platform.paths.plugins);
  EXPECT_FALSE(reviewer_.definitions());
}

TEST_F(PluginReviewerTest, WhatTheReviewCallsShownIsWhatThePaneShows) {
  addPlugin("shown", options({option("TextField"), option("Slider")}));
  addPlugin("all_left_out", options({option("Slider")}));
  addDefinition("no_dictionary", texts({"a"}));
  addPlugin("hidden", options({option("TextField")}));
  platform.writePlist(settingsFile("hidden"), Dictionary::make({{"PrefPaneVisibility", flag(false)}}));
  addPlugin("without_settings", options({option("TextField")}));
  platform.remove(settingsFile("without_settings"));
  awake();
  EXPECT_THAT(pluginNames(), ElementsAre("shown"));
  const auto found = reviewer_.definitions();
  ASSERT_TRUE(found);
  for (const std::string& path : *found) {
    const PluginReview review = reviewer_.review(platform.paths.plugins + "/" + path);
    EXPECT_EQ(review.isShown, path == "shown.plist") << path;
  }
}

}  // namespace
}  // namespace corvane
