#include "options/OptionsTabFixture.h"
#include "options/VolumeCatalogue.h"

namespace corvane::test {
namespace {

class VolumeCatalogueTest : public OptionsTabTest {
 protected:
  VolumeCatalogue& rebuilt(bool showAll = false) {
    catalogue_.filters().setShowAllVolumeTypes(showAll);
    catalogue_.rebuild();
    return catalogue_;
  }
  Array contents(bool showAll = false) { return rebuilt(showAll).volumes().contents(); }
  [[nodiscard]] bool isDuplicate(const char* name, const char* path) {
    return catalogue_.isVolumeDuplicatePath(name, path);
  }

  SettingsFile store_{platform_.platform, paths_.diskJournal};
  DiskJournal journal_{store_};
  PaneConnection connection_{&pane_};
  VolumeCatalogue catalogue_{platform_.platform, paths_, journal_, connection_};
};

TEST_F(VolumeCatalogueTest, MountedVolumesAppearWithTheSettingsOfNewOnesSortedByName) {
  writeJournal(
      {{"disk1", described("beta", "/Volumes/beta")}, {"disk2", described("Alpha", "/Volumes/Alpha")}});
  EXPECT_EQ(contents(), list({entry("Alpha", "/Volumes/Alpha"), entry("beta", "/Volumes/beta")}));
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(VolumeCatalogueTest, VolumesThatAreNotMountedAreNotAdded) {
  writeJournal(
      {{"disk1", described("Away", "/Volumes/Away"), false}, {"disk2", described("Here", "/Volumes/Here")}});
  EXPECT_EQ(contents(), list({entry("Here", "/Volumes/Here")}));
}

TEST_F(VolumeCatalogueTest, SavedEntriesStayWithTheirSettingsWhetherMountedOrNot) {
  Dictionary here = entry("Here", "/Volumes/Here");
  here.set("UsageThreshold", number(42));
  here.set("Unknown", text("kept"));
  Dictionary away = entry("Away", "/Volumes/Away");
  away.set("MonitorPresence", flag(true));
  writeSavedList({here, away});
  writeJournal({{"disk1", described("Here", "/Volumes/Here")}});
  EXPECT_EQ(contents(), list({away, here}));
}

TEST_F(VolumeCatalogueTest, AVolumeWithTheNameButAnotherPathIsAddedBesideTheSavedOne) {
  writeSavedList({entry("Data", "/Volumes/Data")});
  writeJournal({{"disk1", described("Data", "/Volumes/Data 1")}});
  EXPECT_EQ(contents(), list({entry("Data", "/Volumes/Data"), entry("Data", "/Volumes/Data 1")}));
}

TEST_F(VolumeCatalogueTest, AnEntrySavedUnderAMountPathGetsTheVolumesNameAndKeepsItsSettings) {
  Dictionary saved = entry("/Volumes/Backup", "");
  saved.set("UsageThreshold", number(75));
  saved.set("Unknown", text("kept"));
  writeSavedList({saved});
  writeJournal({{"disk1", described("Safe Copy", "/Volumes/Backup")}});
  Dictionary renamed = saved.shallowCopy();
  renamed.set("VolumeName", text("Safe Copy"));
  renamed.set("VolumePath", text("/Volumes/Backup"));
  EXPECT_EQ(contents(), list({renamed}));
}

TEST_F(VolumeCatalogueTest, AnEntrySavedUnderAMountPathIsRenamedAlsoWhenTheVolumeIsNotMountedNow) {
  writeSavedList({entry("/Volumes/Backup", "/Volumes/Backup")});
  writeJournal({{"disk1", described("Safe Copy", "/Volumes/Backup"), false}});
  EXPECT_EQ(contents(), list({entry("Safe Copy", "/Volumes/Backup")}));
}

TEST_F(VolumeCatalogueTest, AnEntryUnderAMountPathThatIsNotOfferedStaysAsItIs) {
  writeSavedList({entry("/Volumes/Windows", "")});
  writeJournal({{"disk1", described("Windows", "/Volumes/Windows", "ntfs")}});
  EXPECT_EQ(contents(), list({entry("/Volumes/Windows", "")}));
  EXPECT_EQ(contents(true), list({entry("Windows", "/Volumes/Windows")}));
}

TEST_F(VolumeCatalogueTest, EveryEntryUnderTheMountPathIsRenamed) {
  writeSavedList(
      {entry("/Volumes/Backup", "1"), entry("/Volumes/Backup", "2"), entry("Copy", "/Volumes/Backup")});
  writeJournal({{"disk1", described("Copy", "/Volumes/Backup")}});
  EXPECT_EQ(contents(), list({entry("Copy", "/Volumes/Backup"), entry("Copy", "/Volumes/Backup"),
                              entry("Copy", "/Volumes/Backup")}));
}

TEST_F(VolumeCatalogueTest, AnEntryUnderTheMountPathIsRenamedAlsoBehindTheVolumesOwnEntry) {
  writeSavedList({entry("Copy", "/Volumes/Backup"), entry("/Volumes/Backup", "")});
  writeJournal({{"disk1", described("Copy", "/Volumes/Backup")}});
  EXPECT_EQ(contents(), list({entry("Copy", "/Volumes/Backup"), entry("Copy", "/Volumes/Backup")}));
}

TEST_F(VolumeCatalogueTest, WhichVolumesAreOffered) {
  constexpr std::int64_t gibibyte = 1073741824;
  struct Case {
    Dictionary volume;
    bool offered;
    bool offeredWhenAllAreShown;
  };
  const Case cases[] = {
      {described("Data", "/Volumes/Data"), true, true},
      {described("Macintosh HD", "/"), false, false},
      {described("Windows", "/Volumes/Windows", "ntfs"), false, true},
      {described("Update", "/System/Volumes/Update"), false, true},
      {described("Volumes", "/System/Volumes"), true, true},
      {described("VM", "/private/var/vm"), false, true},
      {described("Preboot", "/Volumes/Preboot"), false, true},
      {described("Recovery", "/Volumes/Recovery", "apfs", gibibyte), true, true},
      {described("Recovery", "/Volumes/Recovery", "apfs", gibibyte - 1), false, true},
      {described("Recovery", "/Volumes/Recovery", "apfs", 3 * gibibyte), false, true},  // reads as negative
      {described("Recovery", "/Volumes/Recovery", "apfs", 5 * gibibyte), true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(*c.volume.string("DAVolumePath"));
    writeJournal({{"disk1", c.volume}});
    EXPECT_EQ(rebuilt(false).volumes().size(), c.offered ? 1U : 0U);
    EXPECT_EQ(rebuilt(true).volumes().size(), c.offeredWhenAllAreShown ? 1U : 0U);
  }
}

TEST_F(VolumeCatalogueTest, AJournalWithoutDevicesOffersNothing) {
  writeSavedList({entry("Data", "/Volumes/Data")});
  writeJournalPlist(Dictionary::make());
  EXPECT_EQ(contents(), list({entry("Data", "/Volumes/Data")}));
  platform_.remove(paths_.diskJournal);
  EXPECT_EQ(contents(), list({entry("Data", "/Volumes/Data")}));
}

TEST_F(VolumeCatalogueTest, AnUnusableSavedListCountsAsEmptyAndIsLoggedOnce) {
  writeJournal({{"disk1", described("Data", "/Volumes/Data")}});
  struct Case {
    const char* what;
    const char* file;
  };
  const Case cases[] = {
      {"not a property list", "broken"},
      {"empty", ""},
      {"a dictionary", R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict/></plist>)"},
      {"a text", R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><string>x</string></plist>)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    platform_.writeText(paths_.volumesSettings, c.file);
    platform_.log.lines.clear();
    EXPECT_EQ(contents(), list({entry("Data", "/Volumes/Data")}));
    EXPECT_EQ(platform_.log.lines,
              (std::vector<std::string>{"The volume settings in " + paths_.volumesSettings +
                                        " are not a readable list and count as empty"}));
  }
}

TEST_F(VolumeCatalogueTest, BadElementsOfTheSavedListDisturbNothingAndAreWrittenBackInPlace) {
  const Dictionary nameless = Dictionary::make({{"UsageThreshold", text("70")}});
  const Dictionary wrong = Dictionary::make({{"VolumeName", number(7)}, {"VolumePath", list({})}});
  writeSavedList({text("stranger"), entry("Data", "/Volumes/Data"), nameless, number(3), wrong});
  writeJournal({{"disk1", described("Data", "/Volumes/Data")}, {"disk2", described("New", "/Volumes/New")}});
  rebuilt().write();
  EXPECT_EQ(lastWrittenList(), list({text("stranger"), nameless, wrong, number(3),
                                     entry("Data", "/Volumes/Data"), entry("New", "/Volumes/New")}));
}

TEST_F(VolumeCatalogueTest, TwoEntriesWithOneNameAndDifferentPathsAreDuplicates) {
  writeSavedList({entry("Data", "/1"), entry("Data", "/2"), entry("data", "/3"), entry("Same", "/4"),
                  entry("Same", "/4")});
  writeJournalPlist(Dictionary::make());
  rebuilt();
  EXPECT_TRUE(isDuplicate("Data", "/1"));
  EXPECT_TRUE(isDuplicate("Data", "/2"));
  EXPECT_FALSE(isDuplicate("data", "/3"));
  EXPECT_FALSE(isDuplicate("Same", "/4"));
  EXPECT_TRUE(isDuplicate("Same", "/5"));
  EXPECT_FALSE(isDuplicate("Unknown", "/1"));
}

TEST_F(VolumeCatalogueTest, EntriesWithoutANameAreNotDuplicatesOfEachOther) {
  writeSavedList(
      {Dictionary::make({{"VolumePath", text("/1")}}), Dictionary::make({{"VolumePath", text("/2")}})});
  rebuilt();
  EXPECT_FALSE(isDuplicate("", "/1"));
}

// The other devices are of a kind that is not offered, so that they have no entry.
TEST_F(VolumeCatalogueTest, AnotherMountedDeviceWithTheNameMakesADuplicate) {
  const Dictionary own = described("Data", "/Volumes/Data");
  const Dictionary other = described("Data", "/Volumes/Data 1", "ntfs");
  Dictionary pathless = other.shallowCopy();
  pathless.remove("DAVolumePath");
  struct Case {
    const char* what;
    std::vector<Device> devices;
    bool duplicate;
  };
  const Case cases[] = {
      {"alone", {{"disk1", own}}, false},
      {"another one mounted", {{"disk1", own}, {"disk2", other}}, true},
      {"another one mounted, itself away", {{"disk1", own, false}, {"disk2", other}}, true},
      {"itself unknown", {{"disk2", other}}, true},
      {"another one, not mounted", {{"disk1", own}, {"disk2", other, false}}, false},
      {"none mounted", {{"disk1", own, false}, {"disk2", other, false}}, false},
      {"another name", {{"disk1", own}, {"disk2", described("data", "/Volumes/data", "ntfs")}}, false},
      {"another device with name and path", {{"disk1", own}, {"disk2", own}}, false},
      {"another device without a path", {{"disk1", own}, {"disk2", pathless}}, false},
      // The other name and path belong to the first device that has them, and that one is away.
      {"two others alike, only the second mounted",
       {{"disk1", own}, {"disk2", other, false}, {"disk3", other}},
       false},
      {"two others alike, the first mounted",
       {{"disk1", own}, {"disk2", other}, {"disk3", other, false}},
       true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    writeSavedList({entry("Data", "/Volumes/Data")});
    writeJournal(c.devices);
    EXPECT_EQ(rebuilt().volumes().size(), 1U);
    EXPECT_EQ(isDuplicate("Data", "/Volumes/Data"), c.duplicate);
  }
}

TEST_F(VolumeCatalogueTest, NothingIsADuplicateOfDevicesInAnIncompleteJournal) {
  const Dictionary devices =
      Dictionary::make({{"disk2", list({described("Data", "/Volumes/Data 1", "ntfs")})}});
  writeSavedList({entry("Data", "/Volumes/Data")});
  for (const Dictionary& journal :
       {Dictionary::make({{"Devices", devices}}),
        Dictionary::make({{"Devices", devices}, {"CurrentlyMountedVolumeDevices", list({})}}),
        Dictionary::make({{"CurrentlyMountedVolumeDevices", list({text("disk2")})}})}) {
    // A store keeps keys that its file has lost, so each journal is read by a new one.
    writeJournalPlist(journal);
    SettingsFile store(platform_.platform, paths_.diskJournal);
    DiskJournal fresh(store);
    VolumeCatalogue catalogue(platform_.platform, paths_, fresh, connection_);
    catalogue.rebuild();
    EXPECT_FALSE(catalogue.isVolumeDuplicatePath("Data", "/Volumes/Data"));
  }
}

TEST_F(VolumeCatalogueTest, EveryRebuildReadsBothFilesAnew) {
  writeJournal({{"disk1", described("Data", "/Volumes/Data")}});
  rebuilt();
  platform_.propertyLists.reads.clear();
  rebuilt();
  EXPECT_EQ(platform_.propertyLists.reads, (std::vector{paths_.diskJournal, paths_.volumesSettings}));
}

TEST_F(VolumeCatalogueTest, ManyDevicesGiveOneEntryEach) {
  constexpr int count = 2000;
  std::vector<Device> devices;
  for (int i = 0; i < count; ++i) {
    const std::string name = "Volume " + std::to_string(10000 + i);
    devices.push_back({"disk" + std::to_string(i), described(name, "/Volumes/" + name)});
  }
  writeJournal(devices);
  const VolumeList& volumes = rebuilt().volumes();
  ASSERT_EQ(volumes.size(), static_cast<std::size_t>(count));
  EXPECT_EQ(volumeName(volumes.entryAtRow(0)), "Volume 10000");
  EXPECT_EQ(volumeName(volumes.entryAtRow(count - 1)), "Volume 11999");
}

}  // namespace
}  // namespace corvane::test
