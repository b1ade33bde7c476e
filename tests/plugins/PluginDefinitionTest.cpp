#include <string>

#include <gtest/gtest.h>

#include "plugins/PluginDefinition.h"
#include "plugins/PluginsTabFixture.h"
#include "plugins/SettingTypes.h"

namespace corvane {
namespace {

using namespace test;

TEST(PluginDefinition, AnOptionWithItsFourKeysAndATypeIsComplete) {
  EXPECT_TRUE(pluginHasRequiredKeys(without(option("TextField"), "SettingTitleHint")));
}

TEST(PluginDefinition, AnOptionWithoutAnyOneOfItsRequiredKeysIsDropped) {
  for (const char* key : {"SettingStorageKey", "SettingStoragePath", "SettingTitle", "SettingType"}) {
    EXPECT_FALSE(pluginHasRequiredKeys(without(option("TextField"), key))) << key;
  }
  EXPECT_FALSE(pluginHasRequiredKeys(with(option("TextField"), "SettingType", Dictionary::make())));
}

TEST(PluginDefinition, ARequiredKeyMayHoldAnything) {
  for (const char* key : {"SettingStorageKey", "SettingStoragePath", "SettingTitle"}) {
    for (const PropertyList& any : {number(1), flag(true), PropertyList(texts({"a"}))}) {
      EXPECT_TRUE(pluginHasRequiredKeys(with(option("TextField"), key, any))) << key;
    }
  }
}

TEST(PluginDefinition, ASettingTypeHasATypeOrItIsNone) {
  for (const PropertyList& none : {number(1), text("TextField"), PropertyList(texts({"Type"}))}) {
    EXPECT_FALSE(pluginHasRequiredKeys(with(option("TextField"), "SettingType", none)));
  }
  const Dictionary ofNumber =
      with(option("TextField"), "SettingType", Dictionary::make({{"Type", number(1)}}));
  EXPECT_TRUE(acceptedOptions(Dictionary::make({{"PluginOptions", options({ofNumber})}})).empty());
}

TEST(PluginDefinition, EveryTypeNeedsItsStorageEvenWhereItIsNeverUsed) {
  for (const char* type : {"DisplayOnly", "PluginValidation"}) {
    EXPECT_FALSE(pluginHasRequiredKeys(without(option(type), "SettingStoragePath"))) << type;
    EXPECT_FALSE(pluginHasRequiredKeys(without(option(type), "SettingStorageKey"))) << type;
  }
}

TEST(PluginDefinition, TheThirteenTypesAreValid) {
  for (const char* type :
       {"Checkbox", "FolderPicker", "FilePicker", "PopUpMenu", "Checkboxes", "NumberPicker", "TextField",
        "UsernameField", "PasswordField", "DisplayOnly", "PluginValidation", "FileArray", "FolderArray"}) {
    EXPECT_TRUE(pluginIsValidType(type)) << type;
  }
  EXPECT_EQ(setting_type::kAll.size(), 13U);
}

TEST(PluginDefinition, AnyOtherTypeIsInvalidAlsoInAnotherLetterCase) {
  for (const char* type : {"checkbox", "CHECKBOX", "Checkbox ", " Checkbox", "Check", "", "Slider"}) {
    EXPECT_FALSE(pluginIsValidType(type)) << type;
  }
}

TEST(PluginDefinition, TheAcceptedOptionsAreTheDefinitionsOwnObjectsInItsOrder) {
  const Dictionary first = with(option("Checkbox"), "SettingTitle", text("first"));
  const Dictionary last = with(option("TextField"), "SettingTitle", text("last"));
  Array all = options({first, option("Slider"), without(option("TextField"), "SettingTitle"), last});
  all.insert(1, text("no dictionary"));
  const Array accepted = acceptedOptions(Dictionary::make({{"PluginOptions", all}}));
  ASSERT_EQ(accepted.size(), 2U);
  EXPECT_TRUE(accepted.at(0).isSameObject(first));
  EXPECT_TRUE(accepted.at(1).isSameObject(last));
}

TEST(PluginDefinition, ADefinitionWithoutAUsableListOfOptionsHasNone) {
  EXPECT_TRUE(acceptedOptions(Dictionary()).empty());
  EXPECT_TRUE(acceptedOptions(Dictionary::make()).empty());
  EXPECT_TRUE(acceptedOptions(Dictionary::make({{"PluginOptions", Array::make()}})).empty());
  EXPECT_TRUE(acceptedOptions(Dictionary::make({{"PluginOptions", text("Checkbox")}})).empty());
  EXPECT_TRUE(acceptedOptions(Dictionary::make({{"PluginOptions", option("Checkbox")}})).empty());
}

TEST(PluginDefinition, WhatTheCatalogueAddsIsNeverTakenFromTheDefinition) {
  Dictionary smuggled = with(option("FileArray"), "FileFolderArray", texts({"/etc"}));
  smuggled.set("FileFolderRows", texts({"/etc"}));
  smuggled.set("CheckboxesDictionary", Dictionary::make({{"a", flag(true)}}));
  const Array accepted = acceptedOptions(Dictionary::make({{"PluginOptions", options({smuggled})}}));
  ASSERT_EQ(accepted.size(), 1U);
  EXPECT_FALSE(accepted.at(0).asDictionary().contains("FileFolderArray"));
  EXPECT_FALSE(accepted.at(0).asDictionary().contains("FileFolderRows"));
  EXPECT_FALSE(accepted.at(0).asDictionary().contains("CheckboxesDictionary"));
}

TEST(PluginDefinition, ProgramArgumentsAreKeptAsTheyStand) {
  const Array arguments = texts({"check_x", "-v"});
  EXPECT_TRUE(programArguments(Dictionary::make({{"ProgramArguments", arguments}})).isSameObject(arguments));
}

TEST(PluginDefinition, ProgramArgumentsThatAreAbsentOrNotAllTextsAreAnEmptyList) {
  Array mixed = texts({"check_x"});
  mixed.append(number(5));
  for (const PropertyList& arguments : {PropertyList(), text("check_x"), number(1), PropertyList(mixed)}) {
    Dictionary definition = Dictionary::make();
    definition.set("ProgramArguments", arguments);
    const Array read = programArguments(definition);
    EXPECT_TRUE(read);
    EXPECT_TRUE(read.empty());
  }
}

}  // namespace
}  // namespace corvane
