// What the Configuration tab shows: its texts, the two dates, and which controls are there and enabled.
#include <set>
#include <utility>
#include <vector>

#include "ConfigurationTabTest.h"
#include "support/NamedControls.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ConfigurationTabStatus : public ConfigurationTabTest {};

TEST_F(ConfigurationTabStatus, TheLineUnderTheUninstallButtonSaysWhatIsRemoved) {
  openTab();
  EXPECT_EQ(view_.removeClientField.stringValue(), "Removes the client from this computer");
}

TEST_F(ConfigurationTabStatus, EveryControlForTheUserHasATextAndAUniqueAccessibleName) {
  std::set<std::string> names;
  const std::vector<const Control*> controls = {&view_.runClientButton, &view_.updateClientNowButton,
                                                &view_.runIntervalTextField, &view_.clientGroupTextField,
                                                &view_.uninstallButton};
  for (const Control* control : controls) {
    EXPECT_THAT(control->toolTip(), ::testing::Not(IsEmpty()));
    EXPECT_TRUE(names.insert(test::spokenName(*control)).second) << test::spokenName(*control);
  }
  EXPECT_FALSE(names.contains(""));
}

TEST_F(ConfigurationTabStatus, ShowsBothDatesInGmt) {
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  openTab();
  EXPECT_EQ(view_.lastRunClientField.stringValue(), kMidnightText);
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
}

TEST_F(ConfigurationTabStatus, EachDateIsReadAfreshByItsOwnOperation) {
  openTab();
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  const std::string before = view_.lastRunUpdaterField.stringValue();
  tab_->updateLastRunTime();
  EXPECT_EQ(view_.lastRunClientField.stringValue(), kMidnightText);
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), before);
  tab_->updateLastUpdateTime();
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
}

TEST_F(ConfigurationTabStatus, ARefreshReadsTheSettingsThenTheUpdateTimeThenTheRunTime) {
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  openTab();
  test_.propertyLists.reads.clear();
  tab_->refresh();
  EXPECT_THAT(test_.propertyLists.reads,
              ElementsAre(test_.paths.clientSettings, test_.paths.updateStatus, test_.paths.clientSettings));
}

/// A state of a status file from which no date can be taken.
struct NoDate {
  const char* name;
  std::string contents;
};
void PrintTo(const NoDate& noDate, std::ostream* stream) { *stream << noDate.name; }

std::string plist(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + body + "</plist>\n";
}

class ConfigurationTabWithoutADate : public ConfigurationTabTest,
                                     public ::testing::WithParamInterface<NoDate> {};

TEST_P(ConfigurationTabWithoutADate, KeepsWhatTheFieldsShowed) {
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  openTab();
  test_.writeText(test_.paths.clientSettings, GetParam().contents);
  test_.writeText(test_.paths.updateStatus, GetParam().contents);
  tab_->refresh();
  EXPECT_EQ(view_.lastRunClientField.stringValue(), kMidnightText);
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
  EXPECT_THAT(test_.log.lines, IsEmpty());
  EXPECT_THAT(test_.dialogs.sheets, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, ConfigurationTabWithoutADate,
    ::testing::Values(NoDate{"empty file", ""}, NoDate{"no property list", "<html>"},
                      NoDate{"an array", plist("<array/>")}, NoDate{"no keys", plist("<dict/>")},
                      NoDate{"texts", plist("<dict><key>Date_Client_Run</key><string>today</string>"
                                            "<key>Date_Last_Checked</key><string>today</string></dict>")},
                      NoDate{"numbers", plist("<dict><key>Date_Client_Run</key><integer>5</integer>"
                                              "<key>Date_Last_Checked</key><real>5</real></dict>")},
                      NoDate{"year 0",
                             plist("<dict><key>Date_Client_Run</key><date>0000-01-01T00:00:00Z</date>"
                                   "<key>Date_Last_Checked</key><date>0000-01-01T00:00:00Z</date>"
                                   "</dict>")}));

TEST_F(ConfigurationTabStatus, MissingFilesKeepWhatTheFieldsShowed) {
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  openTab();
  test_.remove(test_.paths.clientSettings);
  test_.remove(test_.paths.updateStatus);
  tab_->refresh();
  EXPECT_EQ(view_.lastRunClientField.stringValue(), kMidnightText);
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
  EXPECT_FALSE(tab_->errorLoadingPlists());
}

TEST_F(ConfigurationTabStatus, AFolderInThePlaceOfAStatusFileKeepsWhatTheFieldsShowed) {
  writeLastChecked(PropertyList::date(kAfternoon));
  openTab();
  test_.remove(test_.paths.updateStatus);
  test_.root.makeFolder("Library/Corvane/Utilities/UpdaterSupport/UpdateStatus.plist");
  tab_->updateLastUpdateTime();
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
}

TEST_F(ConfigurationTabStatus, UpdaterControlsAreShownWhereTheUtilitiesFolderExists) {
  view_.lastRunUpdaterField.setHidden(true);
  view_.updateClientNowButton.setHidden(true);
  openTab();
  EXPECT_FALSE(view_.lastRunUpdaterLabel.hidden());
  EXPECT_FALSE(view_.lastRunUpdaterField.hidden());
  EXPECT_FALSE(view_.updateClientNowButton.hidden());
}

TEST_F(ConfigurationTabStatus, WithoutTheUtilitiesFolderUpdaterControlsAreHidden) {
  test_.remove(test_.paths.utilities);
  openTab();
  EXPECT_TRUE(view_.lastRunUpdaterLabel.hidden());
  EXPECT_TRUE(view_.lastRunUpdaterField.hidden());
  EXPECT_TRUE(view_.updateClientNowButton.hidden());
  EXPECT_FALSE(view_.lastRunClientField.hidden());
  EXPECT_FALSE(view_.runClientButton.hidden());
}

TEST_F(ConfigurationTabStatus, HiddenUpdaterControlsStillFollowTheUpdateTime) {
  test_.remove(test_.paths.utilities);
  openTab();
  writeLastChecked(PropertyList::date(kAfternoon));
  tab_->updateLastUpdateTime();
  EXPECT_EQ(view_.lastRunUpdaterField.stringValue(), kAfternoonText);
  EXPECT_TRUE(view_.lastRunUpdaterField.hidden()) << "what is shown is decided once";
}

TEST_F(ConfigurationTabStatus, AllThatNeedsRightsIsDisabledWhileLocked) {
  openTab();
  const std::vector<std::pair<const char*, const Control*>> controls = {
      {"run", &view_.runClientButton},
      {"update", &view_.updateClientNowButton},
      {"interval", &view_.runIntervalTextField},
      {"group", &view_.clientGroupTextField},
      {"uninstall", &view_.uninstallButton}};
  for (const bool unlocked : {false, true, false}) {
    pane_.setUnlocked(unlocked);
    for (const auto& [name, control] : controls) EXPECT_EQ(control->enabled(), unlocked) << name;
  }
}

TEST_F(ConfigurationTabStatus, ATabThatOpensInAnUnlockedPaneIsEnabled) {
  pane_.setUnlocked(true);
  openTab();
  EXPECT_TRUE(view_.runIntervalTextField.enabled());
  EXPECT_TRUE(view_.runClientButton.enabled());
}

TEST_F(ConfigurationTabStatus, ClicksWhileLockedStartNothing) {
  openTab();
  view_.runClientButton.click();
  view_.updateClientNowButton.click();
  view_.uninstallButton.click();
  EXPECT_THAT(pane_.helperCalls, IsEmpty());
  EXPECT_THAT(test_.dialogs.sheets, IsEmpty());
}

TEST_F(ConfigurationTabStatus, ARefreshBeforeTheViewIsSetUpShowsTheDatesAndEnablesNothing) {
  writeSettings({{client_key::kDateClientRun, PropertyList::date(kMidnight)}});
  writeLastChecked(PropertyList::date(kAfternoon));
  makeTab();
  tab_->refresh();
  EXPECT_EQ(view_.lastRunClientField.stringValue(), kMidnightText);
  EXPECT_FALSE(view_.updateClientNowButton.enabled());
}

}  // namespace
}  // namespace corvane
