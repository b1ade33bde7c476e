#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "plugins/PluginCatalogue.h"
#include "plugins/PluginsTabFixture.h"
#include "values/Text.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using Names = std::vector<std::string>;

class PluginCatalogueTest : public PluginsTabFixture {
 protected:
  Names loaded() {
    catalogue.refresh();
    Names names;
    for (const Dictionary& entry : catalogue.plugins()) names.push_back(*entry.string("PluginFileName"));
    return names;
  }
  void addNamed(const std::string& fileName, const PropertyList& name) {
    Dictionary definition = Dictionary::make({{"PluginOptions", options({option("Checkbox")})}});
    definition.set("PluginName", name);
    addDefinition(fileName, definition);
  }
  void writeSettings(const std::string& fileName, const Dictionary& settings) {
    platform.writePlist(settingsFile(fileName), settings);
  }
  Dictionary onlyOption() { return catalogue.plugins().at(0).array("PluginOptions").at(0).asDictionary(); }

  PluginStorage storage{platform.platform, platform.paths};
  PluginCatalogue catalogue{platform.platform, platform.paths, storage};
};

// Loading.

TEST_F(PluginCatalogueTest, AnEntryHoldsTheNameTheArgumentsTheOptionsAndTheFileName) {
  addDefinition("check_x", Dictionary::make({{"PluginName", text("Check X")},
                                             {"ProgramArguments", texts({"check_x", "-v"})},
                                             {"PluginOptions", options({option("DisplayOnly")})},
                                             {"Unknown", number(1)}}));
  ASSERT_EQ(loaded(), Names{"check_x"});
  EXPECT_EQ(catalogue.plugins()[0], Dictionary::make({{"PluginName", text("Check X")},
                                                      {"ProgramArguments", texts({"check_x", "-v"})},
                                                      {"PluginOptions", options({option("DisplayOnly")})},
                                                      {"PluginFileName", text("check_x")}}));
}

TEST_F(PluginCatalogueTest, AbsentArgumentsAreANewEmptyListAndAnAbsentNameStaysAbsent) {
  addDefinition("check_x", Dictionary::make({{"PluginOptions", options({option("Checkbox")})}}));
  ASSERT_EQ(loaded(), Names{"check_x"});
  EXPECT_EQ(catalogue.plugins()[0].value("ProgramArguments"), Array::make());
  EXPECT_FALSE(catalogue.plugins()[0].contains("PluginName"));
}

TEST_F(PluginCatalogueTest, DefinitionsInSubfoldersAreFoundAndKeepTheirSettingsInTheSameSubfolder) {
  addPlugin("extra/check_y", options({option("Checkbox")}));
  EXPECT_EQ(loaded(), Names{"extra/check_y"});
  EXPECT_TRUE(platform.files.exists(platform.paths.pluginSupport + "/extra/check_y_settings.plist"));
  writeSettings("extra/check_y",
                Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Plugin_Enabled", flag(false)}}));
  catalogue.refresh();
  EXPECT_EQ(catalogue.blacklistPlugins(), Names{"extra/check_y.plugin"});
}

TEST_F(PluginCatalogueTest, OnlyFilesWithTheExtensionPlistAreDefinitions) {
  addPlugin("check_x", options({option("Checkbox")}));
  for (const char* name :
       {"check_a.PLIST", "check_b.plist.txt", "check_c", "check_d_plist", ".plist", "plist"}) {
    fs::copy_file(definitionFile("check_x"), platform.paths.plugins + "/" + name);
    fs::copy_file(settingsFile("check_x"), settingsFile(deletingPathExtension(name)));
  }
  fs::create_directory(platform.paths.plugins + "/folder.plist");
  fs::copy_file(settingsFile("check_x"), settingsFile("folder"));
  EXPECT_EQ(loaded(), Names{"check_x"});
}

TEST_F(PluginCatalogueTest, AMissingPluginsFolderGivesNoPluginsAndNoMessage) {
  platform.remove(platform.paths.plugins);
  EXPECT_TRUE(loaded().empty());
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginCatalogueTest, ADefinitionThatDoesNotFitIsSkippedSilentlyAndLoadingGoesOn) {
  addPlugin("a_good", options({option("Checkbox")}));
  addDefinition("b_no_dictionary", texts({"x"}));
  addDefinition("c_no_options", Dictionary::make({{"PluginName", text("C")}}));
  addPlugin("d_empty_options", Array::make());
  addPlugin("e_invalid_options", options({option("checkbox"), without(option("Checkbox"), "SettingTitle")}));
  addPlugin("f_no_list", Array::make());
  platform.writeText(definitionFile("f_no_list"), "this is no property list");
  addPlugin("z_good", options({option("Checkbox")}));
  EXPECT_EQ(loaded(), (Names{"a_good", "z_good"}));
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginCatalogueTest, OnlyTheAcceptedOptionsOfAPluginAreKept) {
  addPlugin("check_x", options({option("Slider"), with(option("TextField"), "SettingTitle", text("kept"))}));
  ASSERT_EQ(loaded(), Names{"check_x"});
  EXPECT_EQ(catalogue.plugins()[0].array("PluginOptions").size(), 1U);
  EXPECT_EQ(*onlyOption().string("SettingTitle"), "kept");
}

struct VisibilityCase {
  const char* what;
  PropertyList settings;
  bool visible;
};

TEST_F(PluginCatalogueTest, APluginIsShownOnlyWhenItsSettingsAskForIt) {
  const std::vector<VisibilityCase> cases = {
      {"true", Dictionary::make({{"PrefPaneVisibility", flag(true)}}), true},
      {"false", Dictionary::make({{"PrefPaneVisibility", flag(false)}}), false},
      {"one", Dictionary::make({{"PrefPaneVisibility", number(1)}}), true},
      {"zero", Dictionary::make({{"PrefPaneVisibility", number(0)}}), false},
      {"text YES", Dictionary::make({{"PrefPaneVisibility", text("YES")}}), true},
      {"text NO", Dictionary::make({{"PrefPaneVisibility", text("NO")}}), false},
      {"key missing", Dictionary::make({{"Other", flag(true)}}), false},
      {"of another type", Dictionary::make({{"PrefPaneVisibility", texts({"YES"})}}), false},
      {"no dictionary", texts({"PrefPaneVisibility"}), false},
  };
  addPlugin("check_x", options({option("Checkbox")}));
  for (const VisibilityCase& one : cases) {
    platform.writePlist(settingsFile("check_x"), one.settings);
    EXPECT_EQ(loaded().size(), one.visible ? 1U : 0U) << one.what;
  }
  platform.remove(settingsFile("check_x"));
  EXPECT_TRUE(loaded().empty()) << "no settings file";
}

TEST_F(PluginCatalogueTest, PluginsAreSortedByNameWithCapitalsFirst) {
  addNamed("one", text("beta"));
  addNamed("two", text("alpha"));
  addNamed("three", text("Zeta"));
  EXPECT_EQ(loaded(), (Names{"three", "two", "one"}));
}

TEST_F(PluginCatalogueTest, PluginsWithoutANameComeFirstAndEqualOnesStayInTheOrderOfTheWalk) {
  addNamed("d", text("Same"));
  addNamed("c", text("Same"));
  addNamed("b", number(5));
  addNamed("a", PropertyList());
  EXPECT_EQ(loaded(), (Names{"a", "b", "c", "d"}));
}

TEST_F(PluginCatalogueTest, OddFileNamesAreFileNamesLikeOthers) {
  const Names names = {"..", "check.v1", "extra/.", "na me", "n\nl", "\xC3\xBC\xF0\x9F\x98\x80", "%@%d"};
  for (const std::string& name : names) addNamed(name, text(name));
  Names expected = names;
  std::ranges::sort(expected);
  ASSERT_EQ(loaded(), expected);
  for (const std::string& name : names) {
    storage.setPane(pane);
    catalogue.saveBlacklistPluginWithEnabled(name + ".plugin", false);
    ASSERT_FALSE(pane.writes.empty()) << name;
    EXPECT_EQ(pane.writes.back().path, settingsFile(name));
  }
}

TEST_F(PluginCatalogueTest, FoldersAHundredLevelsDeepAndLinksBackUpAreWalkedOnce) {
  std::string deep;
  for (int level = 0; level < 100; ++level) deep += "d/";
  addNamed(deep + "check_deep", text("Deep"));
  addNamed("check_x", text("X"));
  fs::create_directory_symlink(platform.paths.plugins, platform.paths.plugins + "/d/up");
  fs::create_directory_symlink(platform.paths.plugins + "/loop", platform.paths.plugins + "/loop");
  EXPECT_EQ(loaded(), (Names{deep + "check_deep", "check_x"}));
}

TEST_F(PluginCatalogueTest, EveryRefreshStartsAnew) {
  addPlugin("check_x", options({option("Checkbox")}));
  writeSettings("check_x",
                Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Plugin_Enabled", flag(false)}}));
  catalogue.refresh();
  const Dictionary before = catalogue.plugins().at(0);
  catalogue.refresh();
  EXPECT_EQ(catalogue.plugins().at(0), before);
  EXPECT_FALSE(catalogue.plugins().at(0).isSameObject(before));
  EXPECT_EQ(catalogue.blacklistPlugins(), Names{"check_x.plugin"});
  platform.remove(definitionFile("check_x"));
  catalogue.refresh();
  EXPECT_TRUE(catalogue.plugins().empty());
  EXPECT_TRUE(catalogue.blacklistPlugins().empty());
}

TEST_F(PluginCatalogueTest, TheDefinitionAndTheSettingsOfAPluginAreEachReadOnce) {
  addPlugin("check_x", options({option("TextField")}));
  platform.propertyLists.reads.clear();
  catalogue.refresh();
  EXPECT_EQ(platform.propertyLists.reads, (Names{definitionFile("check_x"), settingsFile("check_x")}));
}

TEST_F(PluginCatalogueTest, WhatIsNoRegularFileIsNeverReadAndDisturbsNothing) {
  addPlugin("check_x", options({option("FileArray")}));
  addNamed("check_y", text("check_y"));
  const std::string notRead[] = {definitionFile("pipe"), settingsFile("check_y"),
                                 platform.paths.onDisk(kStorage)};
  platform.remove(settingsFile("check_y"));
  for (const std::string& path : notRead) ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);  // reading would wait
  fs::create_symlink("/dev/zero", definitionFile("endless"));
  fs::create_directory(definitionFile("folder"));
  EXPECT_EQ(loaded(), Names{"check_x"});
  EXPECT_EQ(onlyOption(), option("FileArray"));
  EXPECT_TRUE(platform.log.lines.empty());
}

// What is attached to list options.

TEST_F(PluginCatalogueTest, TheStoredSetIsAttachedToACheckboxesOption) {
  store(Dictionary::make({{kKey, Dictionary::make({{"a", flag(true)}})}}));
  addPlugin("check_x", options({option("Checkboxes")}));
  catalogue.refresh();
  EXPECT_EQ(onlyOption().value("CheckboxesDictionary"), Dictionary::make({{"a", flag(true)}}));
  EXPECT_FALSE(onlyOption().contains("FileFolderArray"));
}

TEST_F(PluginCatalogueTest, TheStoredListIsAttachedToAFileOrFolderListUnsorted) {
  store(Dictionary::make({{kKey, texts({"/b", "/a", "Add a new entry"})}}));
  for (const char* type : {"FileArray", "FolderArray"}) {
    addPlugin("check_x", options({option(type)}));
    catalogue.refresh();
    EXPECT_EQ(onlyOption().value("FileFolderArray"), texts({"/b", "/a", "Add a new entry"})) << type;
  }
}

TEST_F(PluginCatalogueTest, NothingIsAttachedWithoutAStorageFileAKeyOrAValueOfTheRightType) {
  const std::vector<PropertyList> contents = {PropertyList(), Dictionary::make({{"Other", texts({"/a"})}}),
                                              Dictionary::make({{kKey, text("/a")}}), texts({kKey})};
  for (const char* type : {"Checkboxes", "FileArray", "FolderArray"}) {
    addPlugin("check_x", options({option(type)}));
    for (const PropertyList& content : contents) {
      platform.remove(platform.paths.onDisk(kStorage));
      if (content) platform.writePlist(platform.paths.onDisk(kStorage), content);
      catalogue.refresh();
      EXPECT_EQ(onlyOption(), option(type)) << type;
    }
  }
}

TEST_F(PluginCatalogueTest, NothingIsAttachedToOtherTypes) {
  store(Dictionary::make({{kKey, texts({"/a"})}}));
  addPlugin("check_x", options({option("TextField")}));
  catalogue.refresh();
  EXPECT_EQ(onlyOption(), option("TextField"));
}

TEST_F(PluginCatalogueTest, AListInRootsHomeIsReadAsTheUser) {
  constexpr const char* kRootStorage = "/var/root/x.plist";
  store(Dictionary::make({{kKey, texts({"/a"})}}), kRootStorage);
  addPlugin("check_x", options({with(option("FileArray"), "SettingStoragePath", text(kRootStorage))}));
  storage.setPane(pane);
  catalogue.refresh();
  EXPECT_EQ(onlyOption().value("FileFolderArray"), texts({"/a"}));
  EXPECT_TRUE(pane.rootReads.empty());
}

// Enabled and disabled.

struct EnabledCase {
  const char* what;
  PropertyList enabled;
  bool isDisabled;
};

TEST_F(PluginCatalogueTest, APluginIsDisabledOnlyWhenItsSettingsSayFalse) {
  const std::vector<EnabledCase> cases = {
      {"false", flag(false), true},     {"true", flag(true), false},           {"zero", number(0), true},
      {"one", number(1), false},        {"missing", PropertyList(), false},    {"text NO", text("NO"), true},
      {"text YES", text("YES"), false}, {"of another type", texts({}), false},
  };
  addPlugin("check_x", options({option("Checkbox")}));
  for (const EnabledCase& one : cases) {
    Dictionary settings = Dictionary::make({{"PrefPaneVisibility", flag(true)}});
    settings.set("Plugin_Enabled", one.enabled);
    writeSettings("check_x", settings);
    catalogue.refresh();
    EXPECT_EQ(catalogue.isPluginBlacklisted("check_x.plugin"), one.isDisabled) << one.what;
  }
}

TEST_F(PluginCatalogueTest, AHiddenPluginIsNotInTheListOfDisabledOnes) {
  addPlugin("check_x", options({option("Checkbox")}));
  writeSettings("check_x",
                Dictionary::make({{"PrefPaneVisibility", flag(false)}, {"Plugin_Enabled", flag(false)}}));
  EXPECT_TRUE(loaded().empty());
  EXPECT_TRUE(catalogue.blacklistPlugins().empty());
}

TEST_F(PluginCatalogueTest, NamesOfDisabledPluginsAreComparedExactly) {
  EXPECT_FALSE(catalogue.isPluginBlacklisted("check_x.plugin"));
  catalogue.setPluginEnabled("check_x.plugin", false);
  EXPECT_TRUE(catalogue.isPluginBlacklisted("check_x.plugin"));
  EXPECT_FALSE(catalogue.isPluginBlacklisted("Check_x.plugin"));
  EXPECT_FALSE(catalogue.isPluginBlacklisted("check_x"));
}

TEST_F(PluginCatalogueTest, APluginThatWasDisabledTwiceStaysDisabledWhenItIsEnabledOnce) {
  catalogue.setPluginEnabled("check_x.plugin", false);
  catalogue.setPluginEnabled("check_x.plugin", false);
  catalogue.setPluginEnabled("check_x.plugin", true);
  EXPECT_EQ(catalogue.blacklistPlugins(), Names{"check_x.plugin"});
  catalogue.setPluginEnabled("check_x.plugin", true);
  EXPECT_TRUE(catalogue.blacklistPlugins().empty());
}

TEST_F(PluginCatalogueTest, EnablingAPluginThatIsNotDisabledLeavesTheListAlone) {
  catalogue.setPluginEnabled("check_y.plugin", false);
  catalogue.setPluginEnabled("check_x.plugin", true);
  EXPECT_EQ(catalogue.blacklistPlugins(), Names{"check_y.plugin"});
}

TEST_F(PluginCatalogueTest, TheNewStateIsSavedAndEveryOtherKeySurvives) {
  storage.setPane(pane);
  writeSettings("check_x", Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Own", texts({"a"})}}));
  for (const bool enabled : {false, true}) {
    catalogue.saveBlacklistPluginWithEnabled("check_x.plugin", enabled);
    ASSERT_FALSE(pane.writes.empty());
    EXPECT_EQ(pane.writes.back().path, settingsFile("check_x"));
    EXPECT_EQ(pane.writes.back().values, Dictionary::make({{"PrefPaneVisibility", flag(true)},
                                                           {"Own", texts({"a"})},
                                                           {"Plugin_Enabled", flag(enabled)}}));
  }
}

TEST_F(PluginCatalogueTest, ASettingsFileIsNeverCreated) {
  storage.setPane(pane);
  catalogue.setPluginEnabled("check_x.plugin", false);
  EXPECT_TRUE(catalogue.isPluginBlacklisted("check_x.plugin"));
  EXPECT_TRUE(pane.writes.empty());
  EXPECT_FALSE(platform.files.exists(settingsFile("check_x")));
  EXPECT_TRUE(platform.log.lines.empty());
}

// Where a storage file may be created.

struct CreationCase {
  std::string path;
  bool allowed;
};

TEST_F(PluginCatalogueTest, AStorageFileMayBeCreatedBelowTheInstallFolderAndInRootsHomeOnly) {
  const std::vector<CreationCase> cases = {
      {"/Library/Corvane/PluginSupport/x.plist", true},
      {"/library/corvane/PluginSupport/x.plist", true},
      {"/LIBRARY/CORVANE/x.plist", true},
      {"/var/root/Library/x.plist", true},
      {"/VAR/Root/x.plist", true},
      {"/tmp/x.plist", false},
      {"/Library/Corvane", false},
      {"/Library/Corvane/", false},
      {"/Library/CorvaneX/x.plist", false},
      {"/var/rootx/x.plist", false},
      {"/tmp/Library/Corvane/x.plist", false},
      {"/tmp/var/root/x.plist", false},
      {"Library/Corvane/x.plist", false},
      {"", false},
      // Judged as it stands and by what is really meant.
      {"/Library/Corvane/../../etc/x.plist", false},
      {"/Library/Corvane/../x.plist", false},
      {"/var/root/../x.plist", false},
      {"/var/root/../../Library/Corvane/x.plist", false},
      {"/tmp/../Library/Corvane/x.plist", false},
      {"/Library/Corvane/a/../b/./x.plist", true},
      {"/Library/Corvane//x.plist", true},
      {"//Library//Corvane//x.plist", false},
  };
  for (const CreationCase& one : cases) {
    platform.log.lines.clear();
    EXPECT_EQ(storage.canICreateDestinationPlist(one.path), one.allowed) << one.path;
    const Names refusal = {"Cannot create file, not in the Corvane Directory."};
    EXPECT_EQ(platform.log.lines, one.allowed ? Names() : refusal) << one.path;
  }
}

}  // namespace
}  // namespace corvane
