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

constexpr const char* kRefusal = "Cannot create file, not in the Corvane Directory.";
constexpr const char* kBadSense =
    "You should not be here.  Value is neither Postive or Negative for a checkbox";
constexpr const char* kRootStorage = "/var/root/Library/x.plist";

/// What becomes of the user's edits.
class PluginEditsTest : public PluginsTabFixture {
 protected:
  static Dictionary in(const char* storage, Dictionary one) {
    return with(std::move(one), "SettingStoragePath", text(storage));
  }
  bool isNothing(const ObjectValue& value) { return std::holds_alternative<std::monostate>(value); }
  /// The contents that the last edit wrote to the options' storage file.
  PropertyList lastWrite() {
    if (pane.writes.empty()) return {};
    EXPECT_EQ(pane.writes.back().path, platform.paths.onDisk(kStorage));
    return pane.writes.back().values;
  }
};

struct WriteCase {
  const char* type;
  PropertyList edited;
  PropertyList written;
};
void PrintTo(const WriteCase& write, std::ostream* stream) { *stream << write.type; }

class PluginEditsWriteTest : public PluginEditsTest, public testing::WithParamInterface<WriteCase> {};

TEST_P(PluginEditsWriteTest, AnEditIsWrittenUnderTheKeyAndTheRestOfTheFileSurvives) {
  store(Dictionary::make({{"Other", texts({"kept"})}, {kKey, text("before")}}));
  awakeWith(option(GetParam().type));
  countReloads();
  set(valueRow(), GetParam().edited);
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(lastWrite(), Dictionary::make({{"Other", texts({"kept"})}, {kKey, GetParam().written}}));
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{valueRow()});
}

INSTANTIATE_TEST_SUITE_P(SingleValues, PluginEditsWriteTest,
                         testing::Values(WriteCase{"NumberPicker", number(7), number(7)},
                                         WriteCase{"NumberPicker", text("12"), number(12)},
                                         WriteCase{"NumberPicker", text("7x"), number(7)},
                                         WriteCase{"NumberPicker", text(""), number(0)},
                                         WriteCase{"NumberPicker", PropertyList::real(2.9), number(2)},
                                         WriteCase{"PopUpMenu", number(2), number(2)},
                                         WriteCase{"TextField", text("a"), text("a")},
                                         WriteCase{"TextField", text(""), text("")},
                                         WriteCase{"UsernameField", text("b"), text("b")},
                                         WriteCase{"PasswordField", text("c"), text("c")}));

TEST_F(PluginEditsTest, AnEditStartsFromTheFileAsItIsNow) {
  store(Dictionary::make({{kKey, text("before")}}));
  awakeWith(option("TextField"));
  store(Dictionary::make({{"New", number(1)}}));
  set(valueRow(), text("after"));
  EXPECT_EQ(lastWrite(), Dictionary::make({{"New", number(1)}, {kKey, text("after")}}));
}

TEST_F(PluginEditsTest, ValuesThatChangeThroughButtonsAreNotWrittenByAnEdit) {
  store(Dictionary::make({{kKey, texts({"/a"})}}));
  for (const char* type : {"FileArray", "FolderArray", "FilePicker", "FolderPicker", "PluginValidation"}) {
    addPlugin("check_x", options({option(type)}));
    awake();
    countReloads();
    set(valueRow(), text("/b"));
    EXPECT_TRUE(pane.writes.empty()) << type;
    EXPECT_TRUE(reloadedItems.empty()) << type;
  }
}

TEST_F(PluginEditsTest, AMissingFileIsCreatedWhereThatIsAllowed) {
  for (const char* path : {kStorage, "/library/corvane/new/x.plist", kRootStorage}) {
    addPlugin("check_x",
              options({in(path, option("TextField")), in(path, option("Checkbox", text("Positive")))}));
    awake();
    pane.writesReachTheFile = false;
    pane.writes.clear();
    set(valueRow(), text("a"));
    set(optionRow(1), flag(true));
    ASSERT_EQ(pane.writes.size(), 2U) << path;
    EXPECT_EQ(pane.writes[0].path, platform.paths.onDisk(path));
    EXPECT_EQ(pane.writes[0].values, Dictionary::make({{kKey, text("a")}}));
    EXPECT_EQ(pane.writes[1].values, Dictionary::make({{kKey, flag(true)}}));
  }
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginEditsTest, AMissingFileElsewhereDropsTheEditAndLogs) {
  for (const char* path : {"/tmp/x.plist", "/Library/Corvane/../../etc/x.plist", "relative.plist", ""}) {
    addPlugin("check_x",
              options({in(path, option("TextField")), in(path, option("Checkbox", text("Positive")))}));
    awake();
    countReloads();
    platform.log.lines.clear();
    set(valueRow(), text("a"));
    set(optionRow(1), flag(true));
    EXPECT_EQ(platform.log.lines, (Texts{kRefusal, kRefusal})) << path;
    EXPECT_TRUE(reloadedItems.empty()) << path;
  }
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginEditsTest, AnExistingFileElsewhereIsWritten) {
  store(Dictionary::make({{"Other", number(1)}}), "/etc/x.plist");
  awakeWith(in("/etc/x.plist", option("TextField")));
  set(valueRow(), text("a"));
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(pane.writes[0].path, platform.paths.onDisk("/etc/x.plist"));
  EXPECT_EQ(pane.writes[0].values, Dictionary::make({{"Other", number(1)}, {kKey, text("a")}}));
}

TEST_F(PluginEditsTest, AnEditInRootsHomeReplacesAFileThatTheUserCanNotRead) {
  pane.rootFile = Dictionary::make({{kKey, text("secret")}, {"Other", number(1)}});
  awakeWith(in(kRootStorage, option("TextField")));
  EXPECT_EQ(shownValue(valueRow()), text("secret"));
  pane.rootReads.clear();
  pane.writesReachTheFile = false;
  set(valueRow(), text("new"));
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(pane.writes[0].values, Dictionary::make({{kKey, text("new")}}));
  EXPECT_TRUE(pane.rootReads.empty()) << "the read before a write is direct";
}

TEST_F(PluginEditsTest, TheSecondOptionOfAFileInRootsHomeDropsTheKeyOfTheFirst) {
  addPlugin("check_x",
            options({in(kRootStorage, option("TextField")),
                     with(in(kRootStorage, option("TextField")), "SettingStorageKey", text("Second"))}));
  awake();
  pane.writesReachTheFile = false;  // as it is for a user who can't read it
  set(valueRow(), text("a"));
  set(outline().childrenOfItem(optionRow(1)).at(0), text("b"));
  EXPECT_EQ(pane.writes.back().values, Dictionary::make({{"Second", text("b")}}));
}

TEST_F(PluginEditsTest, AFileThatIsNoDictionaryIsReplacedWithALineInTheLog) {
  platform.writePlist(platform.paths.onDisk(kStorage), texts({"no dictionary"}));
  awakeWith(option("TextField"));
  set(valueRow(), text("a"));
  EXPECT_EQ(lastWrite(), Dictionary::make({{kKey, text("a")}}));
  EXPECT_EQ(platform.log.lines, Texts{"The settings in " + platform.paths.onDisk(kStorage) +
                                      " are not a readable dictionary and count as empty"});
}

TEST_F(PluginEditsTest, ABoxOfASetWritesTheWholeSetAndShowsTheNewStateAtOnce) {
  store(Dictionary::make(
      {{kKey, Dictionary::make({{"a", flag(false)}, {"b", text("odd")}})}, {"Other", number(1)}}));
  awakeWith(option("Checkboxes"));
  countReloads();
  const Dictionary loaded = optionRow().object().asDictionary().dictionary("CheckboxesDictionary");
  set(valueRow(0), flag(true));
  const Dictionary expected = Dictionary::make({{"a", flag(true)}, {"b", text("odd")}});
  EXPECT_EQ(lastWrite(), Dictionary::make({{kKey, expected}, {"Other", number(1)}}));
  EXPECT_EQ(loaded, expected);
  EXPECT_TRUE(optionRow().object().asDictionary().value("CheckboxesDictionary").isSameObject(loaded));
  EXPECT_EQ(shownValue(valueRow(0)), flag(true));
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{valueRow(0)});
}

TEST_F(PluginEditsTest, ABoxOfASetWhoseFileLostTheKeyWritesTheLoadedSet) {
  store(Dictionary::make({{kKey, Dictionary::make({{"a", flag(true)}, {"b", flag(false)}})}}));
  awakeWith(option("Checkboxes"));
  store(Dictionary::make({{"Other", number(1)}}));
  set(valueRow(1), flag(true));
  EXPECT_EQ(lastWrite(),
            Dictionary::make(
                {{"Other", number(1)}, {kKey, Dictionary::make({{"a", flag(true)}, {"b", flag(true)}})}}));
}

TEST_F(PluginEditsTest, AnAddressBelowASetThatDoesNotBeginLikeOneIsNoNameInTheSet) {
  for (const PropertyList& inFile : {PropertyList(Dictionary::make({{"a", flag(true)}})),
                                     PropertyList(texts({"no set"})), PropertyList()}) {
    Dictionary contents = Dictionary::make({{"Other", number(1)}});
    contents.set(kKey, inFile);
    store(contents);
    addPlugin("check_x",
              options({with(option("Checkboxes"), "SettingDetailsURL", text("ftp://example.com"))}));
    awake();
    click(outline().childrenOfItem(optionRow()).back());
    EXPECT_TRUE(pane.writes.empty());
    EXPECT_EQ(stored(), contents);
  }
}

TEST_F(PluginEditsTest, ARowOfATypeWithoutARuleRewritesItsFileAsItIs) {
  const Dictionary contents = Dictionary::make({{"Other", number(1)}});
  store(contents);
  // The one way to a value row of such a type: an address that does not begin like one.
  awakeWith(with(option("DisplayOnly"), "SettingDetailsURL", text("ftp://example.com")));
  countReloads();
  EXPECT_TRUE(isNothing(shown(valueRow())));
  set(valueRow(), text("x"));
  EXPECT_EQ(lastWrite(), contents);
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{valueRow()});
}

TEST_F(PluginEditsTest, APositiveCheckboxStoresTheClickedStateAndShowsIt) {
  store(Dictionary::make({{kKey, flag(false)}, {"Other", number(1)}}));
  awakeWith(option("Checkbox", text("Positive")));
  click(optionRow());
  EXPECT_EQ(lastWrite(), Dictionary::make({{kKey, flag(true)}, {"Other", number(1)}}));
  EXPECT_TRUE(cell<ButtonCell>(optionRow()).on);
  click(optionRow());
  EXPECT_EQ(lastWrite(), Dictionary::make({{kKey, flag(false)}, {"Other", number(1)}}));
  EXPECT_FALSE(cell<ButtonCell>(optionRow()).on);
}

TEST_F(PluginEditsTest, ANegativeCheckboxStoresTheInverse) {
  store(Dictionary::make());
  awakeWith(option("Checkbox", text("Negative")));
  for (const bool state : {true, false}) {
    set(optionRow(), flag(state));
    EXPECT_EQ(lastWrite(), Dictionary::make({{kKey, flag(!state)}}));
  }
}

TEST_F(PluginEditsTest, ANegativeCheckboxNeverChangesItsFileByClicks) {
  awakeWith(option("Checkbox", text("Negative")));
  for (const bool state : {true, false}) {
    store(Dictionary::make({{kKey, flag(state)}}));
    for (int clicks = 1; clicks <= 3; ++clicks) {
      click(optionRow());
      EXPECT_EQ(stored(), Dictionary::make({{kKey, flag(state)}}));
      EXPECT_EQ(cell<ButtonCell>(optionRow()).on, state);
    }
  }
  EXPECT_EQ(pane.writes.size(), 6U);
}

TEST_F(PluginEditsTest, ACheckboxWithoutASenseIsNeverWrittenAndLogsEachClick) {
  store(Dictionary::make({{kKey, flag(false)}}));
  for (const PropertyList& sense :
       {text("positive"), text("Sideways"), text(""), PropertyList(), number(1)}) {
    addPlugin("check_x", options({option("Checkbox", sense)}));
    awake();
    countReloads();
    platform.log.lines.clear();
    click(optionRow());
    click(optionRow());
    EXPECT_EQ(platform.log.lines, (Texts{kBadSense, kBadSense}));
    EXPECT_TRUE(reloadedItems.empty());
  }
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginEditsTest, RowsThatHoldNoValueAreOnlyShownAfresh) {
  addPlugin("check_x",
            options({with(option("DisplayOnly"), "SettingDetailsURL", text("http://example.com"))}));
  awake();
  for (const OutlineItem& item : {plugin(), optionRow(), valueRow()}) {
    reloadedItems.clear();
    countReloads();
    set(item, text("x"));
    EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{item});
  }
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginEditsTest, AnEditWithoutAValueOnlyShowsTheRowAfresh) {
  store(Dictionary::make({{kKey, text("kept")}}));
  awakeWith(option("TextField"));
  countReloads();
  set(valueRow(), {});
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{valueRow()});
}

TEST_F(PluginEditsTest, NothingIsWrittenWhileTheLockIsClosed) {
  store(Dictionary::make({{kKey, text("kept")}}));
  awakeWith(option("TextField"));
  pane.setUnlocked(false);
  set(valueRow(), text("x"));
  controller->outlineViewSetObjectValueForTableColumnByItem(outline(), flag(false), enabledColumn(),
                                                            plugin());
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(controller->catalogue().blacklistPlugins().empty());
}

// The Enabled column.

TEST_F(PluginEditsTest, TheEnabledBoxWritesThePluginsSettingsAndShowsTheNewState) {
  awakeWith(option("Checkbox"));
  countReloads();
  outline().clickCell(outline().itemAtRow(0), enabledColumn());
  ASSERT_EQ(pane.writes.size(), 1U);
  EXPECT_EQ(pane.writes[0].path, settingsFile("check_x"));
  EXPECT_EQ(pane.writes[0].values,
            Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Plugin_Enabled", flag(false)}}));
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(false));
  EXPECT_EQ(reloadedItems, std::vector<OutlineItem>{plugin()});
  outline().clickCell(outline().itemAtRow(0), enabledColumn());
  EXPECT_EQ(pane.writes[1].values,
            Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Plugin_Enabled", flag(true)}}));
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(true));
}

TEST_F(PluginEditsTest, ADisabledPluginShowsAnUntickedBox) {
  addPlugin("check_x", options({option("Checkbox")}));
  platform.writePlist(settingsFile("check_x"), Dictionary::make({{"PrefPaneVisibility", flag(true)},
                                                                 {"Plugin_Enabled", flag(false)}}));
  awake();
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(false));
}

TEST_F(PluginEditsTest, EnablingAPluginThatWasDisabledTwiceIsRecordedAlthoughTheBoxStaysOff) {
  awakeWith(option("Checkbox"));
  const auto setEnabled = [&](bool state) {
    controller->outlineViewSetObjectValueForTableColumnByItem(outline(), flag(state), enabledColumn(),
                                                              plugin());
  };
  setEnabled(false);
  setEnabled(false);
  setEnabled(true);
  EXPECT_EQ(pane.writes.back().values.asDictionary().value("Plugin_Enabled"), flag(true));
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(false));
  controller->refresh();
  EXPECT_EQ(std::get<PropertyList>(enabledShown(plugin())), flag(true));
}

TEST_F(PluginEditsTest, TheEnabledColumnOfRowsBelowAPluginTakesNothing) {
  awakeWith(option("TextField"));
  countReloads();
  for (const OutlineItem& item : {optionRow(), valueRow()}) {
    controller->outlineViewSetObjectValueForTableColumnByItem(outline(), flag(false), enabledColumn(), item);
  }
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(reloadedItems.empty());
}

TEST_F(PluginEditsTest, ARowThatIsNoLongerInTheCatalogueCanNotBeEnabledOrDisabled) {
  awakeWith(option("Checkbox"));
  const OutlineItem gone = plugin();
  platform.remove(definitionFile("check_x"));
  controller->refresh();
  countReloads();
  EXPECT_TRUE(isNothing(enabledShown(gone)));
  controller->outlineViewSetObjectValueForTableColumnByItem(outline(), flag(false), enabledColumn(), gone);
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_TRUE(reloadedItems.empty());
}

}  // namespace
}  // namespace corvane
