// The editable fields of the Configuration tab and the settings store behind them.
#include <functional>
#include <utility>

#include "ConfigurationTabTest.h"

namespace corvane {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A field that is bound to a key of the client settings.
struct BoundField {
  const char* name;
  const char* key;
  TextField ConfigurationTabView::*field;
  PropertyList stored;
  std::string shown;
  std::string typed;
  PropertyList expected;
};
void PrintTo(const BoundField& field, std::ostream* stream) { *stream << field.name; }

class ConfigurationTabBinding : public ConfigurationTabTest,
                                public ::testing::WithParamInterface<BoundField> {
 protected:
  ConfigurationTabBinding() {
    writeSettings({{GetParam().key, GetParam().stored},
                   {client_key::kDateClientRun, PropertyList::date(kMidnight)},
                   {"Unknown_Key", unknown_}});
  }
  [[nodiscard]] TextField& field() { return view_.*GetParam().field; }
  void edit() {
    ASSERT_TRUE(field().typeText(GetParam().typed));
    field().endEditing();
  }

  const PropertyList unknown_ = Dictionary::make({{"Depth", Array::make({PropertyList::real(0.5)})}});
};

TEST_P(ConfigurationTabBinding, ShowsTheStoredValue) {
  openTab();
  EXPECT_EQ(field().stringValue(), GetParam().shown);
}

TEST_P(ConfigurationTabBinding, AnEditIsOneCommitOfTheWholeDictionaryWithItsUnknownKeys) {
  openUnlockedTab();
  edit();
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].path, test_.paths.clientSettings);
  EXPECT_EQ(pane_.writes[0].values,
            Dictionary::make({{GetParam().key, GetParam().expected},
                              {client_key::kDateClientRun, PropertyList::date(kMidnight)},
                              {"Unknown_Key", unknown_}}));
  EXPECT_EQ(test_.readPlist(test_.paths.clientSettings), pane_.writes[0].values);
}

TEST_P(ConfigurationTabBinding, AnEditOfAKeyThatTheFileDoesNotHoldIsOneCommitToo) {
  writeSettings({{"Unknown_Key", unknown_}});
  openUnlockedTab();
  edit();
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].values,
            Dictionary::make({{GetParam().key, GetParam().expected}, {"Unknown_Key", unknown_}}));
}

TEST_P(ConfigurationTabBinding, NeitherARefreshNorLeavingAnUntouchedFieldWrites) {
  openUnlockedTab();
  tab_->refresh();
  field().endEditing();
  EXPECT_THAT(pane_.writes, IsEmpty());
}

TEST_P(ConfigurationTabBinding, WhileLockedNothingCanBeTyped) {
  openTab();
  EXPECT_FALSE(field().typeText(GetParam().typed));
  field().endEditing();
  EXPECT_THAT(pane_.writes, IsEmpty());
  EXPECT_EQ(field().stringValue(), GetParam().shown);
}

TEST_P(ConfigurationTabBinding, WhatIsTypedWhenTheLockClosesIsDropped) {
  openUnlockedTab();
  ASSERT_TRUE(field().typeText(GetParam().typed));
  pane_.setUnlocked(false);
  field().endEditing();
  EXPECT_THAT(pane_.writes, IsEmpty());
  EXPECT_EQ(field().stringValue(), GetParam().shown);
}

TEST_P(ConfigurationTabBinding, ARefreshShowsWhatTheClientHasWritten) {
  openTab();
  writeSettings({{GetParam().key, GetParam().expected}});
  tab_->refresh();
  EXPECT_EQ(field().stringValue(), GetParam().typed);
}

TEST_P(ConfigurationTabBinding, AValueOfAnotherKindShowsAsAbsentAndStaysInTheFile) {
  writeSettings({{GetParam().key, Array::make()}, {"Unknown_Key", unknown_}});
  openTab();
  EXPECT_EQ(field().stringValue(), "");
  tab_->refresh();
  EXPECT_THAT(pane_.writes, IsEmpty());
}

TEST_P(ConfigurationTabBinding, AnInvalidStoreIsReplacedOnRefreshAndTheFieldFollowsTheNewOne) {
  test_.writeText(test_.paths.clientSettings, "no property list");
  openUnlockedTab();
  EXPECT_TRUE(tab_->errorLoadingPlists());
  EXPECT_EQ(field().stringValue(), "");
  edit();
  EXPECT_THAT(pane_.writes, IsEmpty()) << "what could not be read must not be overwritten";

  writeSettings({{GetParam().key, GetParam().stored}, {"Unknown_Key", unknown_}});
  tab_->refresh();
  EXPECT_FALSE(tab_->errorLoadingPlists());
  EXPECT_EQ(field().stringValue(), GetParam().shown);
  edit();
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].values,
            Dictionary::make({{GetParam().key, GetParam().expected}, {"Unknown_Key", unknown_}}));
}

INSTANTIATE_TEST_SUITE_P(
    Fields, ConfigurationTabBinding,
    ::testing::Values(BoundField{"run interval", "Run_Interval", &ConfigurationTabView::runIntervalTextField,
                                 PropertyList::integer(2), "2", "6", PropertyList::integer(6)},
                      BoundField{"group", "ClientGroup", &ConfigurationTabView::clientGroupTextField,
                                 PropertyList::string("Staff"), "Staff", "Büro – 3. Stock 🦜",
                                 PropertyList::string("Büro – 3. Stock 🦜")}));

class ConfigurationTabSettings : public ConfigurationTabTest {
 protected:
  void type(TextField& field, const std::string& text) {
    ASSERT_TRUE(field.typeText(text));
    field.endEditing();
  }
};

TEST_F(ConfigurationTabSettings, OnlyRunIntervalsFrom1To6AreTaken) {
  writeSettings({{client_key::kRunInterval, PropertyList::integer(2)}});
  openUnlockedTab();
  for (const char* refused : {"0", "7", "10", "-1", "1.", "1.5", "x", " 2", "99999999999"}) {
    EXPECT_FALSE(view_.runIntervalTextField.typeText(refused)) << refused;
    EXPECT_EQ(view_.runIntervalTextField.stringValue(), "2");
  }
  for (const char* taken : {"1", "2", "3", "4", "5", "6"}) {
    EXPECT_TRUE(view_.runIntervalTextField.typeText(taken)) << taken;
  }
}

TEST_F(ConfigurationTabSettings, AClearedRunIntervalShowsAndStoresTheDefault) {
  writeSettings({{client_key::kRunInterval, PropertyList::integer(5)}});
  openUnlockedTab();
  type(view_.runIntervalTextField, "");
  EXPECT_EQ(view_.runIntervalTextField.stringValue(), "1");
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].values.asDictionary().value(client_key::kRunInterval), PropertyList::integer(1));
}

TEST_F(ConfigurationTabSettings, ARunIntervalOutsideTheRangeInTheFileIsShownAsItIs) {
  writeSettings({{client_key::kRunInterval, PropertyList::integer(48)}});
  openTab();
  EXPECT_EQ(view_.runIntervalTextField.stringValue(), "48");
}

TEST_F(ConfigurationTabSettings, AClearedGroupIsWrittenAsAnEmptyTextAndNeverDropped) {
  writeSettings({{client_key::kClientGroup, PropertyList::string("Staff")}});
  openUnlockedTab();
  type(view_.clientGroupTextField, "");
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{client_key::kClientGroup, PropertyList::string("")}}));
}

TEST_F(ConfigurationTabSettings, AGroupOf10000CharactersIsShownEditedAndWrittenWhole) {
  const std::string before(10000, 'a');
  const std::string after(10000, 'b');
  writeSettings({{client_key::kClientGroup, PropertyList::string(before)}});
  openUnlockedTab();
  EXPECT_EQ(view_.clientGroupTextField.stringValue(), before);
  type(view_.clientGroupTextField, after);
  EXPECT_EQ(test_.readPlist(test_.paths.clientSettings),
            Dictionary::make({{client_key::kClientGroup, PropertyList::string(after)}}));
}

TEST_F(ConfigurationTabSettings, AGroupWithControlCharactersIsShownAndHandedOverAsItIs) {
  const std::string odd = "a\tb\x01\x1b[31m\x7f";
  openUnlockedTab();
  type(view_.clientGroupTextField, odd);
  ASSERT_THAT(pane_.writes, SizeIs(1));
  EXPECT_EQ(pane_.writes[0].values,
            Dictionary::make({{client_key::kClientGroup, PropertyList::string(odd)}}));
  EXPECT_EQ(test_.readPlist(test_.paths.clientSettings), pane_.writes[0].values);
  tab_->refresh();
  EXPECT_EQ(view_.clientGroupTextField.stringValue(), odd);
}

TEST_F(ConfigurationTabSettings, AMissingSettingsFileIsAnEmptyValidStore) {
  openTab();
  EXPECT_FALSE(tab_->errorLoadingPlists());
  EXPECT_EQ(view_.runIntervalTextField.stringValue(), "");
  EXPECT_EQ(view_.clientGroupTextField.stringValue(), "");
}

TEST_F(ConfigurationTabSettings, AStoreThatStaysInvalidIsReportedAgainAfterARefresh) {
  test_.writeText(test_.paths.clientSettings, "no property list");
  openTab();
  tab_->refresh();
  EXPECT_TRUE(tab_->errorLoadingPlists());
}

TEST_F(ConfigurationTabSettings, ARefreshWhileTheUserTypesLeavesTheTypedTextAlone) {
  writeSettings({{client_key::kClientGroup, PropertyList::string("Staff")}});
  openUnlockedTab();
  ASSERT_TRUE(view_.clientGroupTextField.typeText("Stu"));
  writeSettings({{client_key::kClientGroup, PropertyList::string("Guests")}});
  tab_->refresh();
  EXPECT_EQ(view_.clientGroupTextField.stringValue(), "Stu");
  view_.clientGroupTextField.abortEditing();
  EXPECT_EQ(view_.clientGroupTextField.stringValue(), "Guests");
}

}  // namespace
}  // namespace corvane
