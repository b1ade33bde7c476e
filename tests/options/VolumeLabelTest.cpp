#include "options/OptionsTabFixture.h"
#include "options/VolumeLabel.h"

namespace corvane::test {
namespace {

enum class Presence { Present, Missing };
enum class Copies { One, Two };

class VolumeLabelTest : public OptionsTabTest {
 protected:
  /// The label of a volume "Data" in this situation.
  AttributedText labelOfData(Presence presence, Copies copies, const PropertyList& monitored, bool unlocked) {
    Dictionary data = entry("Data", "/Volumes/Data");
    data.set("MonitorPresence", monitored);
    platform_.writePlist(paths_.volumesSettings, copies == Copies::One
                                                     ? list({data})
                                                     : list({data, entry("Data", "/Volumes/Data 1")}));
    writeJournal({{"disk1", described("Data", "/Volumes/Data"), presence == Presence::Present},
                  {"disk9", described("Other", "/Volumes/Other")}});
    closeTab();
    pane_.setUnlocked(unlocked);
    openTab();
    return label(0);
  }
};

AttributedText remark(const char* shown, TextColor color) {
  TextAttributes attributes;
  attributes.font = Font{.family = Font::Family::User, .size = 13, .italic = true};
  attributes.color = color;
  return {shown, attributes};
}

AttributedText gray(const char* shown) {
  TextAttributes attributes;
  attributes.color = TextColor::Gray;
  return {shown, attributes};
}

TEST_F(VolumeLabelTest, ShowsTheNameDressedByPresenceDuplicatesMonitoringAndLock) {
  struct Case {
    Presence presence;
    Copies copies;
    bool monitored;
    bool unlocked;
    AttributedText expected;
  };
  const Case cases[] = {
      {Presence::Present, Copies::One, false, true, AttributedText("Data")},
      {Presence::Present, Copies::One, true, true, AttributedText("Data")},
      {Presence::Present, Copies::One, false, false, gray("Data")},
      {Presence::Present, Copies::One, true, false, gray("Data")},
      {Presence::Missing, Copies::Two, false, true, remark("Data (Duplicate, Missing)", TextColor::Red)},
      {Presence::Missing, Copies::Two, true, true, remark("Data (Duplicate, Missing)", TextColor::Red)},
      {Presence::Missing, Copies::Two, true, false, remark("Data (Duplicate, Missing)", TextColor::Red)},
      {Presence::Present, Copies::Two, false, true, remark("Data (Duplicate)", TextColor::Red)},
      {Presence::Present, Copies::Two, true, false, remark("Data (Duplicate)", TextColor::Red)},
      {Presence::Missing, Copies::One, true, true, remark("Data (Missing)", TextColor::Red)},
      {Presence::Missing, Copies::One, true, false, remark("Data (Missing)", TextColor::Red)},
      {Presence::Missing, Copies::One, false, true, remark("Data (Missing)", TextColor::DarkGray)},
      {Presence::Missing, Copies::One, false, false, remark("Data (Missing)", TextColor::DarkGray)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expected.text + (c.monitored ? ", monitored" : "") + (c.unlocked ? ", unlocked" : ""));
    EXPECT_EQ(labelOfData(c.presence, c.copies, flag(c.monitored), c.unlocked), c.expected);
  }
}

TEST_F(VolumeLabelTest, MonitoringIsReadAsABooleanWhateverItsType) {
  struct Case {
    PropertyList monitored;
    TextColor color;
  };
  const Case cases[] = {
      {number(1), TextColor::Red},     {number(0), TextColor::DarkGray},
      {text("YES"), TextColor::Red},   {text("no"), TextColor::DarkGray},
      {list({}), TextColor::DarkGray}, {PropertyList(), TextColor::DarkGray},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(labelOfData(Presence::Missing, Copies::One, c.monitored, true),
              remark("Data (Missing)", c.color));
  }
}

TEST_F(VolumeLabelTest, TwoMountedDevicesWithOneNameAreBothDuplicates) {
  writeJournal(
      {{"disk1", described("Data", "/Volumes/Data")}, {"disk2", described("Data", "/Volumes/Data 1")}});
  openUnlockedTab();
  ASSERT_EQ(view_.volumesTable.numberOfRows(), 2);
  EXPECT_EQ(label(0), remark("Data (Duplicate)", TextColor::Red));
  EXPECT_EQ(label(1), remark("Data (Duplicate)", TextColor::Red));
}

TEST_F(VolumeLabelTest, AJournalWithoutDevicesMakesEverySavedEntryMissing) {
  writeSavedList({entry("A", "/a"), entry("B", "/b")});
  writeJournalPlist(Dictionary::make());
  openUnlockedTab();
  EXPECT_EQ(labels(), (std::vector<std::string>{"A (Missing)", "B (Missing)"}));
}

TEST_F(VolumeLabelTest, AnEntryWithoutANameIsShownAsMissing) {
  writeSavedList({Dictionary::make()});
  openUnlockedTab();
  EXPECT_EQ(label(0), remark(" (Missing)", TextColor::DarkGray));
}

}  // namespace
}  // namespace corvane::test
