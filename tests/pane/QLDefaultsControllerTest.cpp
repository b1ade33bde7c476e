#include <gtest/gtest.h>

#include "pane/QLDefaultsController.h"
#include "support/FakePane.h"
#include "support/TestPlatform.h"
#include "values/Conversions.h"

namespace corvane::test {
namespace {

class QLDefaultsControllerTest : public ::testing::Test {
 protected:
  QLDefaultsController store(const std::string& file) {
    return {file, platform_.files, platform_.propertyLists};
  }
  void writeSettings(std::initializer_list<Dictionary::Entry> entries) {
    platform_.writePlist(platform_.paths.clientSettings, Dictionary::make(entries));
  }

  TestPlatform platform_;
  FakePane pane_;
  const std::string settings_ = platform_.paths.clientSettings;
};

TEST_F(QLDefaultsControllerTest, AMissingClientSettingsFileGivesAnEmptyValidStore) {
  const auto missing = store(settings_);
  EXPECT_TRUE(missing.validValues());
  EXPECT_FALSE(missing.fileExists());
  EXPECT_TRUE(missing.values()->empty());
}

TEST_F(QLDefaultsControllerTest, AMissingAutoDiskMountFileSuppliesTheDefault) {
  const auto missing = store(platform_.paths.autoDiskMount);
  EXPECT_FALSE(missing.fileExists());
  EXPECT_EQ(missing.values()->contents(),
            Dictionary::make({{"AutomountDisksWithoutUserLogin", PropertyList::boolean(false)}}));
}

TEST_F(QLDefaultsControllerTest, AnAutoDiskMountFileWithoutKeysSuppliesTheDefaultToo) {
  platform_.writePlist(platform_.paths.autoDiskMount, Dictionary::make());
  const auto empty = store(platform_.paths.autoDiskMount);
  EXPECT_TRUE(empty.fileExists());
  EXPECT_EQ(empty.value("AutomountDisksWithoutUserLogin"), PropertyList::boolean(false));
}

TEST_F(QLDefaultsControllerTest, AnAutoDiskMountFileWithKeysKeepsItsOwnAndGetsNoDefault) {
  const Dictionary other = Dictionary::make({{"Other", PropertyList::integer(1)}});
  const Dictionary on = Dictionary::make({{"AutomountDisksWithoutUserLogin", PropertyList::boolean(true)}});
  for (const Dictionary& contents : {other, on}) {
    platform_.writePlist(platform_.paths.autoDiskMount, contents);
    EXPECT_EQ(store(platform_.paths.autoDiskMount).values()->contents(), contents);
  }
}

TEST_F(QLDefaultsControllerTest, AnUnreadableAutoDiskMountFileIsInvalidAndHasNoDefault) {
  platform_.writeText(platform_.paths.autoDiskMount, "not a property list");
  const auto broken = store(platform_.paths.autoDiskMount);
  EXPECT_TRUE(broken.fileExists());
  EXPECT_FALSE(broken.validValues());
  EXPECT_EQ(broken.values(), nullptr);
  EXPECT_FALSE(broken.value("AutomountDisksWithoutUserLogin"));
}

TEST_F(QLDefaultsControllerTest, NoOtherFileGetsDefaults) {
  writeSettings({});
  EXPECT_TRUE(store(settings_).values()->empty());
}

TEST_F(QLDefaultsControllerTest, FilesThatHoldNoDictionaryMakeTheStoreInvalid) {
  struct Case {
    const char* name;
    const char* contents;
  };
  for (const Case& broken :
       {Case{"empty", ""}, Case{"text", "hello"}, Case{"truncated", "<?xml version=\"1.0\"?><plist><dict>"},
        Case{"array root", "<plist version=\"1.0\"><array/></plist>"},
        Case{"string root", "<plist version=\"1.0\"><string>x</string></plist>"}}) {
    platform_.writeText(settings_, broken.contents);
    EXPECT_FALSE(store(settings_).validValues()) << broken.name;
  }
}

TEST_F(QLDefaultsControllerTest, AFolderInPlaceOfTheFileMakesTheStoreInvalid) {
  std::filesystem::create_directories(settings_);
  const auto folder = store(settings_);
  EXPECT_TRUE(folder.fileExists());
  EXPECT_FALSE(folder.validValues());
}

TEST_F(QLDefaultsControllerTest, AnInvalidStoreIgnoresEditsRefreshesAndCommits) {
  platform_.writeText(settings_, "junk");
  auto broken = store(settings_);
  broken.setDelegate(&pane_);
  writeSettings({{"ClientGroup", PropertyList::string("lab")}});
  broken.refreshValues();
  broken.setValueForKey("ClientGroup", PropertyList::string("x"));
  broken.commitChanges();
  EXPECT_FALSE(broken.validValues()) << "an invalid store is replaced, never repaired";
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(QLDefaultsControllerTest, ARefreshOfAnInvalidStoreStillNotesWhetherTheFileExists) {
  platform_.writeText(settings_, "junk");
  auto broken = store(settings_);
  platform_.remove(settings_);
  broken.refreshValues();
  EXPECT_FALSE(broken.fileExists());
}

TEST_F(QLDefaultsControllerTest, ChangingAKeyOfTheFileCommitsTheWholeDictionaryOnce) {
  writeSettings({{"ClientGroup", PropertyList::string("lab")}, {"Unknown", PropertyList::integer(7)}});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.values()->set("ClientGroup", PropertyList::string("office"));
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].path, settings_);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"ClientGroup", PropertyList::string("office")},
                                                      {"Unknown", PropertyList::integer(7)}}));
}

TEST_F(QLDefaultsControllerTest, EveryChangeCommitsAtOnceWithoutBatching) {
  writeSettings({{"A", PropertyList::integer(1)}, {"B", PropertyList::integer(2)}});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.values()->set("A", PropertyList::integer(3));
  edited.values()->set("B", PropertyList::integer(4));
  edited.values()->set("B", PropertyList::integer(4));
  EXPECT_EQ(pane_.writes.size(), 3U);
}

TEST_F(QLDefaultsControllerTest, ADirectChangeOfAKeyThatTheFileDidNotHoldIsNotCommitted) {
  writeSettings({});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.values()->set("New", PropertyList::integer(1));
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(QLDefaultsControllerTest, TheEditOfABoundControlCommitsOnceAlsoForANewKey) {
  writeSettings({});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.setValueForKey("New", PropertyList::integer(1));
  edited.setValueForKey("New", PropertyList::integer(2));
  ASSERT_EQ(pane_.writes.size(), 2U);
  EXPECT_EQ(pane_.writes[1].values, Dictionary::make({{"New", PropertyList::integer(2)}}));
}

TEST_F(QLDefaultsControllerTest, AClearedGroupIsCommittedOnceAsAnEmptyText) {
  writeSettings({{"ClientGroup", PropertyList::string("lab")}});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.setValueForKey("ClientGroup", {});
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make({{"ClientGroup", PropertyList::string("")}}));
}

TEST_F(QLDefaultsControllerTest, AnyOtherClearedKeyIsDropped) {
  writeSettings({{"Other", PropertyList::string("x")}});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.setValueForKey("Other", {});
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(pane_.writes[0].values, Dictionary::make());
}

TEST_F(QLDefaultsControllerTest, ARefreshKeepsAKeyThatTheFileHasLost) {
  writeSettings({{"Kept", PropertyList::integer(1)}, {"Changed", PropertyList::integer(2)}});
  auto refreshed = store(settings_);
  writeSettings({{"Changed", PropertyList::integer(3)}, {"Added", PropertyList::integer(4)}});
  refreshed.refreshValues();
  EXPECT_EQ(refreshed.values()->contents(), Dictionary::make({{"Kept", PropertyList::integer(1)},
                                                              {"Changed", PropertyList::integer(3)},
                                                              {"Added", PropertyList::integer(4)}}));
}

TEST_F(QLDefaultsControllerTest, RefreshingAnUnchangedFileReplacesEveryValueWithoutCommitting) {
  writeSettings({{"Text", PropertyList::string("x")}, {"List", Array::make({PropertyList::integer(1)})}});
  auto refreshed = store(settings_);
  refreshed.setDelegate(&pane_);
  const PropertyList text = refreshed.value("Text");
  const PropertyList list = refreshed.value("List");
  refreshed.refreshValues();
  EXPECT_EQ(refreshed.value("Text"), text);
  EXPECT_FALSE(refreshed.value("Text").isSameObject(text));
  EXPECT_FALSE(refreshed.value("List").isSameObject(list));
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(QLDefaultsControllerTest, KeysThatARefreshAddedCommitWhenTheyAreChanged) {
  writeSettings({});
  auto refreshed = store(settings_);
  refreshed.setDelegate(&pane_);
  writeSettings({{"Added", PropertyList::integer(1)}});
  refreshed.refreshValues();
  refreshed.refreshValues();
  refreshed.values()->set("Added", PropertyList::integer(2));
  EXPECT_EQ(pane_.writes.size(), 1U) << "observed exactly once, however often it was refreshed";
}

TEST_F(QLDefaultsControllerTest, AKeyThatWasRemovedAndComesBackStillCommits) {
  writeSettings({{"A", PropertyList::integer(1)}});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.values()->set("A", {});
  edited.values()->set("A", PropertyList::integer(2));
  EXPECT_EQ(pane_.writes.size(), 2U);
}

TEST_F(QLDefaultsControllerTest, AKeyThatWasSetDirectlyCommitsOnceTheFileHoldsItToo) {
  writeSettings({});
  auto edited = store(settings_);
  edited.setDelegate(&pane_);
  edited.values()->set("New", PropertyList::integer(1));
  edited.values()->set("New", PropertyList::integer(2));
  ASSERT_TRUE(pane_.writes.empty());
  writeSettings({{"New", PropertyList::integer(3)}});
  edited.refreshValues();
  edited.values()->set("New", PropertyList::integer(4));
  EXPECT_EQ(pane_.writes.size(), 1U);
}

TEST_F(QLDefaultsControllerTest, AKeyThatTheFileHasLostStillCommits) {
  writeSettings({{"Kept", PropertyList::integer(1)}});
  auto refreshed = store(settings_);
  refreshed.setDelegate(&pane_);
  writeSettings({});
  refreshed.refreshValues();
  refreshed.values()->set("Kept", PropertyList::integer(2));
  EXPECT_EQ(pane_.writes.size(), 1U);
}

TEST_F(QLDefaultsControllerTest, ARefreshTellsTheOtherObserversOfTheKeysOfTheFileWithAllNewValuesInPlace) {
  struct Recorder final : KeyObserver {
    explicit Recorder(QLDefaultsController& observed) : store(observed) {}
    void observeValueForKey(const std::string& key, const PropertyList& newValue) override {
      calls.push_back(key + "=" + description(newValue) + " B=" + description(store.value("B")));
    }
    QLDefaultsController& store;
    std::vector<std::string> calls;
  };
  writeSettings(
      {{"A", PropertyList::integer(1)}, {"B", PropertyList::integer(2)}, {"C", PropertyList::integer(3)}});
  auto refreshed = store(settings_);
  refreshed.setDelegate(&pane_);
  Recorder recorder(refreshed);
  refreshed.values()->addObserver(recorder, "A");
  refreshed.values()->addObserver(recorder, "C");
  writeSettings({{"A", PropertyList::integer(1)}, {"B", PropertyList::integer(20)}});
  refreshed.refreshValues();
  EXPECT_EQ(recorder.calls, std::vector<std::string>{"A=1 B=20"}) << "C is gone from the file and stays";
  EXPECT_TRUE(pane_.writes.empty());
}

TEST_F(QLDefaultsControllerTest, AnEditThatAnObserverMakesDuringARefreshIsCommitted) {
  struct Editor final : KeyObserver {
    explicit Editor(QLDefaultsController& edited) : store(edited) {}
    void observeValueForKey(const std::string& /*key*/, const PropertyList& /*newValue*/) override {
      store.setValueForKey("B", PropertyList::integer(9));
    }
    QLDefaultsController& store;
  };
  writeSettings({{"A", PropertyList::integer(1)}, {"B", PropertyList::integer(2)}});
  auto refreshed = store(settings_);
  refreshed.setDelegate(&pane_);
  Editor editor(refreshed);
  refreshed.values()->addObserver(editor, "A");
  refreshed.refreshValues();
  ASSERT_EQ(pane_.writes.size(), 1U);
  EXPECT_EQ(refreshed.value("B"), PropertyList::integer(9));
}

TEST_F(QLDefaultsControllerTest, AnUnreadableFileAtARefreshChangesNothingButTheExistence) {
  writeSettings({{"A", PropertyList::integer(1)}});
  auto refreshed = store(settings_);
  platform_.writeText(settings_, "junk");
  refreshed.refreshValues();
  EXPECT_TRUE(refreshed.validValues());
  EXPECT_TRUE(refreshed.fileExists());
  EXPECT_EQ(refreshed.values()->contents(), Dictionary::make({{"A", PropertyList::integer(1)}}));
  platform_.remove(settings_);
  refreshed.refreshValues();
  EXPECT_FALSE(refreshed.fileExists());
  EXPECT_EQ(refreshed.values()->contents(), Dictionary::make({{"A", PropertyList::integer(1)}}));
}

TEST_F(QLDefaultsControllerTest, WhetherTheFileExistsHoldsAsItWasSetUntilTheNextRefresh) {
  auto missing = store(settings_);
  missing.setFileExists(true);
  EXPECT_TRUE(missing.fileExists());
  missing.refreshValues();
  EXPECT_FALSE(missing.fileExists());
}

TEST_F(QLDefaultsControllerTest, AStoreWithoutADelegateKeepsTheEditAndWritesNothing) {
  writeSettings({{"A", PropertyList::integer(1)}});
  auto silent = store(settings_);
  silent.values()->set("A", PropertyList::integer(2));
  EXPECT_EQ(silent.value("A"), PropertyList::integer(2));
}

TEST_F(QLDefaultsControllerTest, KeyPathsStandBelowValues) {
  EXPECT_EQ(QLDefaultsController::keyPath("ClientGroup"), "values.ClientGroup");
}

}  // namespace
}  // namespace corvane::test
