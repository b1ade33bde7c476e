#include "options/OptionsTabFixture.h"
#include "options/VolumeList.h"
#include "values/PropertyListCodec.h"

namespace corvane::test {
namespace {

AsciiTexts comparison;

VolumeList listOf(std::initializer_list<PropertyList> saved) {
  VolumeList result;
  result.setSavedList(Array::make(saved));
  return result;
}

std::vector<std::string> namesOf(const VolumeList& volumes) {
  std::vector<std::string> result;
  for (const Dictionary& volume : volumes.entries()) result.emplace_back(volumeName(volume));
  return result;
}

TEST(VolumeList, NothingSavedGivesAnEmptyList) {
  VolumeList volumes;
  volumes.setSavedList(Array());
  EXPECT_TRUE(volumes.empty());
  EXPECT_EQ(volumes.contents(), Array::make());
}

TEST(VolumeList, ANewVolumeGetsTheDefaultSettings) {
  VolumeList volumes;
  volumes.appendNewVolume("Data", "/Volumes/Data");
  EXPECT_EQ(volumes.entryAtRow(0), entry("Data", "/Volumes/Data"));
}

TEST(VolumeList, ElementsThatAreNoEntriesStayWhereTheyStood) {
  const PropertyList a = entry("A", "/a");
  const PropertyList b = entry("B", "/b");
  const PropertyList x = text("x");
  const PropertyList y = list({number(7)});
  const PropertyList z = number(3);
  struct Case {
    const char* what;
    std::vector<PropertyList> saved;
    int removedRow;
    std::vector<PropertyList> written;
  };
  const Case cases[] = {
      {"none", {b, a}, -1, {a, b}},
      {"first", {x, b, a}, -1, {x, a, b}},
      {"between", {b, x, a}, -1, {a, x, b}},
      {"last", {b, a, x}, -1, {a, b, x}},
      {"several together", {x, y, b, a, z}, -1, {x, y, a, b, z}},
      {"several apart", {x, b, y, a, z}, -1, {x, a, y, b, z}},
      {"only such", {x, y}, -1, {x, y}},
      {"beyond a list that became shorter", {b, a, x}, 0, {b, x}},
      {"all entries removed", {x, a, y}, 0, {x, y}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    VolumeList volumes;
    volumes.setSavedList(Array::fromElements(c.saved));
    volumes.sortByName(comparison);
    volumes.removeRow(c.removedRow);
    EXPECT_EQ(volumes.contents(), Array::fromElements(c.written));
  }
}

TEST(VolumeList, ASavedListReplacesTheFormerOneWhole) {
  VolumeList volumes;
  volumes.setSavedList(Array::make({entry("A", "/a"), text("x")}));
  const Array saved = Array::make({text("y"), entry("B", "/b")});
  volumes.setSavedList(saved);
  EXPECT_EQ(volumes.contents(), saved);
}

TEST(VolumeList, RowsAreOnlyTheEntries) {
  const VolumeList volumes = listOf({text("x"), entry("A", "/a"), number(1), Dictionary::make()});
  EXPECT_EQ(volumes.size(), 2U);
  EXPECT_EQ(volumes.entryAtRow(0), entry("A", "/a"));
  EXPECT_EQ(volumes.entryAtRow(1), Dictionary::make());
  EXPECT_FALSE(volumes.entryAtRow(2));
  EXPECT_FALSE(volumes.entryAtRow(-1));
}

TEST(VolumeList, NewVolumesAreWrittenAfterTheSavedOnesAroundOtherElements) {
  VolumeList volumes = listOf({entry("A", "/a"), text("x")});
  volumes.appendNewVolume("B", "/b");
  EXPECT_EQ(volumes.contents(), Array::make({entry("A", "/a"), text("x"), entry("B", "/b")}));
}

TEST(VolumeList, SortsByNameRegardlessOfCaseAndKeepsTheOrderOfEqualNames) {
  VolumeList volumes = listOf({entry("beta", "/1"), entry("Alpha", "/2"), entry("BETA", "/3"),
                               entry("alpha", "/4"), entry("Zeta", "/5"), entry("Beta", "/6")});
  volumes.sortByName(comparison);
  EXPECT_EQ(namesOf(volumes), (std::vector<std::string>{"Alpha", "alpha", "beta", "BETA", "Beta", "Zeta"}));
}

TEST(VolumeList, EntriesWithoutANameComeFirst) {
  const Dictionary nameless = Dictionary::make({{"VolumePath", text("/n")}});
  const Dictionary numbered = Dictionary::make({{"VolumeName", number(5)}, {"VolumePath", text("/5")}});
  VolumeList volumes = listOf({entry("A", "/a"), nameless, numbered});
  volumes.sortByName(comparison);
  EXPECT_EQ(volumes.contents(), Array::make({nameless, numbered, entry("A", "/a")}));
}

TEST(VolumeList, FindsTheFirstRowWithNameAndPath) {
  const VolumeList volumes = listOf(
      {entry("A", "/1"), entry("A", "/2"), entry("A", "/2"), Dictionary::make({{"VolumeName", text("B")}})});
  EXPECT_EQ(volumes.rowOf("A", "/1"), 0);
  EXPECT_EQ(volumes.rowOf("A", "/2"), 1);
  EXPECT_EQ(volumes.rowOf("a", "/2"), std::nullopt);
  EXPECT_EQ(volumes.rowOf("A", "/3"), std::nullopt);
  EXPECT_EQ(volumes.rowOf("B", ""), 3);
}

TEST(VolumeList, AnEntryWithoutANameHasNotEvenTheEmptyName) {
  EXPECT_TRUE(hasName(entry("", "/a"), ""));
  EXPECT_TRUE(hasName(entry("A", "/a"), "A"));
  EXPECT_FALSE(hasName(entry("A", "/a"), "a"));
  EXPECT_FALSE(hasName(Dictionary::make(), ""));
  EXPECT_FALSE(hasName(Dictionary::make({{"VolumeName", number(1)}}), "1"));
}

TEST(VolumeList, EqualEntriesThatAreOneObjectInTheFileAreEditedApart) {
  const Dictionary shared = entry("A", "/a");
  VolumeList volumes = listOf({shared, shared});
  Dictionary first = volumes.entryAtRow(0);
  first.set("UsageThreshold", number(50));
  EXPECT_EQ(volumes.entryAtRow(0).value("UsageThreshold"), number(50));
  EXPECT_EQ(volumes.entryAtRow(1), entry("A", "/a"));
}

TEST(VolumeList, UnknownKeysOfAnEntryAreWrittenBack) {
  Dictionary saved = entry("A", "/a");
  saved.set("Comment", text("keep me"));
  saved.set("Nested", list({Dictionary::make({{"k", number(1)}})}));
  EXPECT_EQ(listOf({saved}).contents(), Array::make({saved}));
}

}  // namespace
}  // namespace corvane::test
