#include <vector>

#include <gtest/gtest.h>

#include "plugins/FileFolderList.h"
#include "plugins/PluginsTabFixture.h"
#include "support/AsciiTexts.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

using namespace test;

AsciiTexts comparison;

struct SortCase {
  Array before;
  Array after;
};

TEST(FileFolderList, SortingPutsTheAddEntryInFrontAndTheRestInOrderRegardlessOfCase) {
  const std::vector<SortCase> cases = {
      {texts({}), texts({"Add a new entry"})},
      {texts({"/tmp/c", "Add a new entry", "/tmp/b"}), texts({"Add a new entry", "/tmp/b", "/tmp/c"})},
      {texts({"/b", "/C", "/a"}), texts({"Add a new entry", "/a", "/b", "/C"})},
      {texts({"Add a new entry", "/a", "Add a new entry"}),
       texts({"Add a new entry", "/a", "Add a new entry"})},
      {texts({"/z", "Add a new folder"}), texts({"Add a new entry", "/z", "Add a new folder"})},
      {texts({"add a new entry", "/a"}), texts({"Add a new entry", "/a", "add a new entry"})},
      {texts({"/A", "/a"}), texts({"Add a new entry", "/A", "/a"})},
  };
  for (const SortCase& one : cases) {
    Array list = one.before;
    sortArrays(list, comparison);
    EXPECT_EQ(list, one.after) << description(list);
  }
}

TEST(FileFolderList, SortingMakesANewAddEntry) {
  Array list = texts({"Add a new entry"});
  const PropertyList before = list.at(0);
  sortArrays(list, comparison);
  EXPECT_FALSE(list.at(0).isSameObject(before));
}

TEST(FileFolderList, AnElementThatBeginsWithAddANewInAnyCaseStandsForAdding) {
  for (const char* element : {"Add a new entry", "add a new folder", "ADD A NEW", "Add A New Entry"}) {
    EXPECT_TRUE(isAddEntry(element)) << element;
  }
  for (const char* element : {"", "/Add a new entry", " Add a new entry", "Add a ne", "/tmp"}) {
    EXPECT_FALSE(isAddEntry(element)) << element;
  }
}

}  // namespace
}  // namespace corvane
