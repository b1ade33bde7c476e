#include "options/DiskJournal.h"
#include "options/OptionsTabFixture.h"

namespace corvane::test {
namespace {

class DiskJournalTest : public OptionsTabTest {
 protected:
  /// The journal over the file as it is now.
  DiskJournal& journal() {
    store_ = std::make_unique<SettingsFile>(platform_.platform, paths_.diskJournal);
    journal_ = std::make_unique<DiskJournal>(*store_);
    return *journal_;
  }

 private:
  std::unique_ptr<SettingsFile> store_;
  std::unique_ptr<DiskJournal> journal_;
};

TEST_F(DiskJournalTest, AVolumeIsTheFirstDeviceWithExactlyItsNameAndPath) {
  writeJournal({{"disk1", described("Data", "/Volumes/Data")},
                {"disk2", described("Data", "/Volumes/Data 1")},
                {"disk3", described("Data", "/Volumes/Data")},
                {"disk4", described("Other", "/Volumes/Data")}});
  DiskJournal& journal = this->journal();
  EXPECT_EQ(journal.volumeIdForNamePath("Data", "/Volumes/Data"), "disk1");
  EXPECT_EQ(journal.volumeIdForNamePath("Data", "/Volumes/Data 1"), "disk2");
  EXPECT_EQ(journal.volumeIdForNamePath("Other", "/Volumes/Data"), "disk4");
  EXPECT_EQ(journal.volumeIdForNamePath("data", "/Volumes/Data"), "");
  EXPECT_EQ(journal.volumeIdForNamePath("Data", "/volumes/data"), "");
  EXPECT_EQ(journal.volumeIdForNamePath("Data", "/Volumes/Data/"), "");
  EXPECT_EQ(journal.volumeIdForNamePath("", ""), "");
}

TEST_F(DiskJournalTest, OnlyTheLastDescriptionOfADeviceCounts) {
  writeJournalPlist(
      Dictionary::make({{"Devices", Dictionary::make({{"disk1", list({described("Old", "/Volumes/Old"),
                                                                      described("New", "/Volumes/New")})}})},
                        {"CurrentlyMountedVolumeDevices", list({text("disk1")})}}));
  DiskJournal& journal = this->journal();
  EXPECT_EQ(journal.volumeIdForNamePath("Old", "/Volumes/Old"), "");
  EXPECT_EQ(journal.volumeIdForNamePath("New", "/Volumes/New"), "disk1");
  EXPECT_FALSE(journal.isVolumePresentPath("Old", "/Volumes/Old"));
  EXPECT_TRUE(journal.isVolumePresentPath("New", "/Volumes/New"));
}

TEST_F(DiskJournalTest, AVolumeIsPresentWhenItsDeviceIsMounted) {
  writeJournal({{"disk1", described("Data", "/Volumes/Data"), true},
                {"disk2", described("Away", "/Volumes/Away"), false}});
  DiskJournal& journal = this->journal();
  EXPECT_TRUE(journal.isVolumePresent("disk1"));
  EXPECT_FALSE(journal.isVolumePresent("disk2"));
  EXPECT_FALSE(journal.isVolumePresent("DISK1"));
  EXPECT_FALSE(journal.isVolumePresent(""));
  EXPECT_TRUE(journal.isVolumePresentPath("Data", "/Volumes/Data"));
  EXPECT_FALSE(journal.isVolumePresentPath("Away", "/Volumes/Away"));
  EXPECT_FALSE(journal.isVolumePresentPath("Unknown", "/Volumes/Unknown"));
}

TEST_F(DiskJournalTest, AnEmptyIdentifierIsNotPresentEvenWhenTheJournalListsOne) {
  writeJournalPlist(Dictionary::make({{"CurrentlyMountedVolumeDevices", list({text("")})}}));
  EXPECT_FALSE(journal().isVolumePresent(""));
}

TEST_F(DiskJournalTest, NothingIsPresentInAJournalThatLacksWhatItShouldHold) {
  const Dictionary devices = Dictionary::make({{"disk1", list({described("Data", "/Volumes/Data")})}});
  const PropertyList mounted = list({text("disk1")});
  struct Case {
    const char* what;
    PropertyList journal;
    const char* identifier;
  };
  const Case cases[] = {
      {"no keys", Dictionary::make(), ""},
      {"no devices", Dictionary::make({{"CurrentlyMountedVolumeDevices", mounted}}), ""},
      {"no mounted devices", Dictionary::make({{"Devices", devices}}), "disk1"},
      {"none mounted", Dictionary::make({{"Devices", devices}, {"CurrentlyMountedVolumeDevices", list({})}}),
       "disk1"},
      {"mounted is a text",
       Dictionary::make({{"Devices", devices}, {"CurrentlyMountedVolumeDevices", text("disk1")}}), "disk1"},
      {"mounted holds numbers",
       Dictionary::make({{"Devices", devices}, {"CurrentlyMountedVolumeDevices", list({number(1)})}}),
       "disk1"},
      {"devices is an array",
       Dictionary::make({{"Devices", list({devices})}, {"CurrentlyMountedVolumeDevices", mounted}}), ""},
      {"a device is no array",
       Dictionary::make({{"Devices", Dictionary::make({{"disk1", described("Data", "/Volumes/Data")}})},
                         {"CurrentlyMountedVolumeDevices", mounted}}),
       ""},
      {"a device without descriptions",
       Dictionary::make({{"Devices", Dictionary::make({{"disk1", list({})}})},
                         {"CurrentlyMountedVolumeDevices", mounted}}),
       ""},
      {"a description that is a text",
       Dictionary::make({{"Devices", Dictionary::make({{"disk1", list({text("Data")})}})},
                         {"CurrentlyMountedVolumeDevices", mounted}}),
       ""},
      {"the file is a list", list({devices}), ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    writeJournalPlist(c.journal);
    DiskJournal& journal = this->journal();
    EXPECT_EQ(journal.volumeIdForNamePath("Data", "/Volumes/Data"), c.identifier);
    EXPECT_FALSE(journal.isVolumePresentPath("Data", "/Volumes/Data"));
  }
}

TEST_F(DiskJournalTest, ADescriptionWithoutNameOrPathIsNobody) {
  Dictionary nameless = described("", "/Volumes/Data");
  nameless.remove("DAVolumeName");
  Dictionary pathless = described("Data", "");
  pathless.remove("DAVolumePath");
  writeJournal({{"disk1", nameless}, {"disk2", pathless}});
  DiskJournal& journal = this->journal();
  EXPECT_EQ(journal.volumeIdForNamePath("", "/Volumes/Data"), "");
  EXPECT_EQ(journal.volumeIdForNamePath("Data", ""), "");
}

TEST_F(DiskJournalTest, AnUnreadableJournalIsReadAgainWhenItIsRefreshed) {
  platform_.writeText(paths_.diskJournal, "broken");
  DiskJournal& journal = this->journal();
  EXPECT_FALSE(journal.isVolumePresent("disk1"));
  writeJournal({{"disk1", described("Data", "/Volumes/Data")}});
  journal.refresh();
  EXPECT_TRUE(journal.isVolumePresent("disk1"));
}

}  // namespace
}  // namespace corvane::test
