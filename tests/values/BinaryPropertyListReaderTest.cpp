#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "support/BinaryFile.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace std::string_literals;

using test::bigEndian;
using File = test::BinaryFile;

PropertyList read(std::vector<std::string> objects) {
  return readPropertyList(File{std::move(objects)}.bytes());
}
PropertyList number(std::int64_t n) { return PropertyList::integer(n); }
PropertyList text(const std::string& s) { return PropertyList::string(s); }

TEST(BinaryPropertyListReader, ReadsEveryKindOfScalar) {
  const struct {
    std::string object;
    PropertyList value;
  } cases[] = {
      {"\x08"s, PropertyList::boolean(false)},
      {"\x09"s, PropertyList::boolean(true)},
      {"\x10\x7F"s, number(127)},
      {"\x10\xFF"s, number(255)},
      {"\x11\xFF\xFE"s, number(65534)},
      {"\x12\xFF\xFF\xFF\xFF"s, number(4294967295)},
      {"\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, number(-1)},
      {"\x13\x80\0\0\0\0\0\0\0"s, number(std::numeric_limits<std::int64_t>::min())},
      {"\x14\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
       PropertyList::unsignedInteger(18446744073709551615ULL)},
      {"\x14\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\5"s, number(5)},
      {"\x22\x3F\xC0\0\0"s, PropertyList::real(1.5)},
      {"\x23\xBF\xF8\0\0\0\0\0\0"s, PropertyList::real(-1.5)},
      {"\x23\x7F\xF8\0\0\0\0\0\0"s, PropertyList::real(std::nan(""))},
      {"\x33\0\0\0\0\0\0\0\0"s, PropertyList::date({978307200})},
      {"\x33\xBF\xE0\0\0\0\0\0\0"s, PropertyList::date({978307199.5})},
      {"\x40"s, PropertyList::data({})},
      {"\x43\x01\0\xFF"s, PropertyList::data({1, 0, 255})},
      {"\x50"s, text("")},
      {"\x53"
       "abc"s,
       text("abc")},
      {"\x53"
       "a\0b"s,
       text("a\0b"s)},
      {"\x5F\x10\x10"
       "0123456789abcdef"s,
       text("0123456789abcdef")},
      {"\x5F\x11\0\3"
       "abc"s,
       text("abc")},
      {"\x51\x80"s, text("\xC2\x80")},  // what is no ASCII is Latin-1
      {"\x53"
       "a\xE9\xFF"s,
       text("a\xC3\xA9\xC3\xBF")},
      {"\x61\x20\xAC"s, text("\xE2\x82\xAC")},
      {"\x62\xD8\x3D\xDE\x00"s, text("\xF0\x9F\x98\x80")},
      {"\xA0"s, Array::make()},
      {"\xD0"s, Dictionary::make()},
      {"\x80\x05"s, Dictionary::make({{"CF$UID", number(5)}})},
      {"\x83\xFF\xFF\xFF\xFF"s, Dictionary::make({{"CF$UID", number(4294967295)}})},
  };
  for (const auto& [object, value] : cases) {
    const auto found = read({object});
    EXPECT_TRUE(found) << testing::PrintToString(object);
    EXPECT_EQ(found, value) << testing::PrintToString(object);
  }
}

TEST(BinaryPropertyListReader, ABadScalarMakesTheFileUnreadable) {
  for (const auto& object : {
           "\x00"s,  // null
           "\x01"s,
           "\x0F"s,  // no such marker
           "\x10"s,
           "\x11\0"s,
           "\x13\0\0\0\0\0\0\0"s,  // cut
           "\x14\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\0"s,
           "\x14\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\x15"s + std::string(32, '\0'),  // 256 bits
           "\x20\0"s,
           "\x21\0\0"s,
           "\x22\0\0\0"s,
           "\x24"s + std::string(16, '\0'),  // reals of other sizes
           "\x30\0"s,
           "\x33\0\0\0\0\0\0\0"s,  // dates
           "\x33\x7F\xF8\0\0\0\0\0\0"s,
           "\x33\x7F\xF0\0\0\0\0\0\0"s,
           "\x33\x43\0\0\0\0\0\0\0"s,
           "\x41"s,
           "\x4F"s,
           "\x4F\x10"s,
           "\x4F\x10\x01"s,
           "\x4F\x50"s,  // data
           "\x4F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\x4F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\x51"s,
           "\x52"
           "a"s,
           "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\x60"s,
           "\x6F\x10\0"s,  // an empty text in UTF-16
           "\x61\0"s,
           "\x61\xD8\x3D"s,
           "\x61\xDE\0"s,
           "\x62\xD8\x3D\0a"s,
           "\x6F\x13\x80\0\0\0\0\0\0\0"s,
           "\x6F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\x70"s,
           "\x90"s,
           "\xB0"s,
           "\xC0"s,
           "\xE0"s,
           "\xF0"s,  // sets and what there is not
           "\x80"s,
           "\x84\1\0\0\0\0"s,
           "\xAF"s,
           "\xA1"s,
           "\xD1\0"s,
           "\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
           "\xDF\x13\x40\0\0\0\0\0\0\0"s,
           "\xDF\x13\x80\0\0\0\0\0\0\0"s,
       }) {
    EXPECT_FALSE(read({object})) << testing::PrintToString(object);
  }
}

TEST(BinaryPropertyListReader, ReadsContainers) {
  EXPECT_EQ(read({"\xA3\1\2\1"s,
                  "\x51"
                  "a"s,
                  "\xA1\1"s}),
            Array::make({text("a"), Array::make({text("a")}), text("a")}));
  EXPECT_EQ(read({"\xD2\1\2\3\4"s,
                  "\x51"
                  "b"s,
                  "\x51"
                  "a"s,
                  "\x10\1"s, "\xD1\1\3"s}),
            Dictionary::make({{"a", Dictionary::make({{"b", number(1)}})}, {"b", number(1)}}));
}

TEST(BinaryPropertyListReader, OfEqualKeysTheFirstWins) {
  EXPECT_EQ(read({"\xD3\1\2\1\3\4\5"s,
                  "\x51"
                  "a"s,
                  "\x51"
                  "b"s,
                  "\x10\1"s, "\x10\2"s, "\x10\3"s}),
            Dictionary::make({{"a", number(1)}, {"b", number(2)}}));
}

TEST(BinaryPropertyListReader, KeysMustBeStrings) {
  for (const auto& key : {"\x10\1"s, "\x09"s, "\xA0"s, "\xD0"s, "\x41\1"s})
    EXPECT_FALSE(read({"\xD1\1\2"s, key, "\x09"s}));
}

TEST(BinaryPropertyListReader, ReferencesMustNameObjects) {
  EXPECT_FALSE(read({"\xA1\1"s}));
  EXPECT_FALSE(read({"\xA1\xFF"s}));
  EXPECT_FALSE(read({"\xD1\0\1"s,
                     "\x51"
                     "a"s}));
}

TEST(BinaryPropertyListReader, NumbersOfTheTableMayHaveAnySize) {
  for (std::size_t offsetSize = 1; offsetSize <= 20; ++offsetSize) {
    for (std::size_t referenceSize = 1; referenceSize <= 20; ++referenceSize) {
      File file;
      file.objects = {"\xA2"s + bigEndian(1, referenceSize) + bigEndian(2, referenceSize),
                      "\x51"
                      "a"s,
                      "\x09"s};
      file.offsetSize = offsetSize;
      file.referenceSize = referenceSize;
      EXPECT_EQ(readPropertyList(file.bytes()), Array::make({text("a"), PropertyList::boolean(true)}));
    }
  }
}

TEST(BinaryPropertyListReader, NumbersOfTheTableMustBeLargeEnoughForEveryObjectAndEveryPlace) {
  File many;
  many.objects.assign(257, "\xA0");
  many.offsetSize = 2;
  EXPECT_FALSE(readPropertyList(many.bytes()));
  many.referenceSize = 2;
  EXPECT_TRUE(readPropertyList(many.bytes()));
  File large{{"\x5F\x11"s + bigEndian(300, 2) + std::string(300, 'x')}};
  EXPECT_FALSE(readPropertyList(large.bytes()));
  large.offsetSize = 2;
  EXPECT_TRUE(readPropertyList(large.bytes()));
}

TEST(BinaryPropertyListReader, TheTableHoldsNothingButOffsets) {
  File file{{"\x09"s}};
  file.offsetSize = 2;
  std::string bytes = file.bytes();
  ASSERT_TRUE(readPropertyList(bytes));
  bytes.insert(bytes.size() - 32, 1, '\0');
  EXPECT_FALSE(readPropertyList(bytes));
}

TEST(BinaryPropertyListReader, TheRootMayBeAnyObjectAndTheVersionAnyDigit) {
  File file{
      {"\x51"
       "a"s,
       "\x51"
       "b"s}};
  file.top = 1;
  file.signature = "bplist01";
  EXPECT_EQ(readPropertyList(file.bytes()), text("b"));
}

TEST(BinaryPropertyListReader, TheTrailerMustFitTheFile) {
  const std::string good = File{
      {"\xA1\1"s,
       "\x51"
       "a"s}}.bytes();
  ASSERT_TRUE(readPropertyList(good));
  const std::size_t trailer = good.size() - 32;
  const struct {
    std::size_t at;
    std::string bytes;
  } changes[] = {
      {0, "bplist1"},
      {0, "Bplist0"},
      {6, "\0"s},  // offset size
      {6, "\x02"s},
      {6, "\xFF"s},
      {7, "\0"s},            // reference size
      {8, bigEndian(0, 8)},  // objects
      {8, bigEndian(1, 8)},
      {8, bigEndian(3, 8)},
      {8, bigEndian(std::numeric_limits<std::uint64_t>::max(), 8)},
      {8, bigEndian(std::uint64_t{1} << 63, 8)},
      {16, bigEndian(2, 8)},  // root
      {16, bigEndian(std::numeric_limits<std::uint64_t>::max(), 8)},
      {24, bigEndian(0, 8)},  // table
      {24, bigEndian(8, 8)},
      {24, bigEndian(11, 8)},
      {24, bigEndian(13, 8)},
      {24, bigEndian(std::numeric_limits<std::uint64_t>::max(), 8)},
      {24, bigEndian(std::numeric_limits<std::uint64_t>::max() - 20, 8)},
  };
  for (const auto& [at, bytes] : changes) {
    std::string changed = good;
    changed.replace(bytes.size() == 7 ? at : trailer + at, bytes.size(), bytes);
    EXPECT_FALSE(readPropertyList(changed)) << at << " " << testing::PrintToString(bytes);
  }
  // The six bytes before are unused.
  std::string changed = good;
  changed.replace(trailer, 6, "unused");
  EXPECT_TRUE(readPropertyList(changed));
}

TEST(BinaryPropertyListReader, OffsetsMustLieAmongTheObjects) {
  const std::string good = File{
      {"\xA1\1"s,
       "\x51"
       "a"s}}.bytes();
  const std::size_t table = good.size() - 32 - 2;
  for (const int offset : {0, 7, 12, 13, 200}) {
    std::string changed = good;
    changed[table + 1] = static_cast<char>(offset);
    EXPECT_FALSE(readPropertyList(changed)) << offset;
  }
  // Those of objects that nothing refers to as well.
  std::string unused = File{{"\xA0"s, "\x09"s}}.bytes();
  ASSERT_TRUE(readPropertyList(unused));
  unused[unused.size() - 32 - 1] = 10;  // where the table begins
  EXPECT_FALSE(readPropertyList(unused));
}

TEST(BinaryPropertyListReader, AFileCutAnywhereOrLongerIsUnreadable) {
  const std::string good = File{{"\xD1\1\2"s,
                                 "\x51"
                                 "k"s,
                                 "\xA3\1\3\4"s, "\x23\x3F\xF8\0\0\0\0\0\0"s, "\x33\0\0\0\0\0\0\0\0"s}}
                               .bytes();
  ASSERT_TRUE(readPropertyList(good));
  for (std::size_t size = 0; size < good.size(); ++size)
    EXPECT_FALSE(readPropertyList(good.substr(0, size))) << size;
  for (std::size_t start = 1; start < good.size(); ++start)
    EXPECT_FALSE(readPropertyList(good.substr(start))) << start;
  EXPECT_FALSE(readPropertyList(good + "x"));
}

TEST(BinaryPropertyListReader, EveryChangedByteGivesAValueOrNothing) {
  const std::string good = File{
      {"\xD1\1\2"s,
       "\x51"
       "k"s,
       "\xA3\1\3\4"s,
       "\x5F\x10\2"
       "ab"s,
       "\x61\x20\xAC"s}}.bytes();
  std::size_t readable = 0;
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string changed = good;
      changed[at] = static_cast<char>(byte);
      const auto value = readPropertyList(changed);
      if (!value) continue;
      ++readable;
      const auto written = writeXmlPropertyList(value);
      ASSERT_TRUE(written) << at << " " << byte;
      ASSERT_EQ(readPropertyList(*written), value) << at << " " << byte;
    }
  }
  EXPECT_GT(readable, good.size());
}

TEST(BinaryPropertyListReader, AContainerThatContainsItselfMakesTheFileUnreadable) {
  EXPECT_FALSE(read({"\xA1\0"s}));
  EXPECT_FALSE(read({"\xA2\0\0"s}));
  EXPECT_FALSE(read({"\xA1\1"s, "\xA1\0"s}));
  EXPECT_FALSE(read({"\xD1\1\0"s,
                     "\x51"
                     "k"s}));
}

TEST(BinaryPropertyListReader, NestingIsLimitedTo512Levels) {
  const auto nested = [](std::size_t levels, const std::string& innermost = "\xA0") {
    File file;
    file.offsetSize = 4;
    file.referenceSize = 4;
    for (std::size_t i = 0; i + 1 < levels; ++i) file.objects.push_back("\xA1"s + bigEndian(i + 1, 4));
    file.objects.push_back(innermost);
    return readPropertyList(file.bytes());
  };
  const auto deepest = nested(512);
  ASSERT_TRUE(deepest);
  EXPECT_TRUE(writeXmlPropertyList(deepest));
  EXPECT_FALSE(nested(513));
  EXPECT_FALSE(nested(29'000));
  const std::string archiveIdentifier = "\x80\x05";
  EXPECT_TRUE(writeXmlPropertyList(nested(512, archiveIdentifier)));
  EXPECT_FALSE(nested(513, archiveIdentifier));
}

TEST(BinaryPropertyListReader, ASmallFileCannotStandForAnEndlessTree) {
  File file;
  for (char i = 1; i <= 30; ++i) file.objects.push_back("\xA2"s + i + i);
  file.objects.push_back("\xA0"s);
  EXPECT_LT(file.bytes().size(), 200u);
  EXPECT_FALSE(readPropertyList(file.bytes()));
  // The same with a long text in place of many containers.
  File texts;
  const std::string longText = "\x5F\x12"s + bigEndian(1'000'000, 4) + std::string(1'000'000, 'x');
  std::string array = "\xAF\x11"s + bigEndian(10'000, 2);
  for (int i = 0; i < 10'000; ++i) array += '\1';
  texts.objects = {array, longText};
  texts.offsetSize = 4;
  EXPECT_FALSE(readPropertyList(texts.bytes()));
  // And with one as the key of every entry.
  File keys;
  std::string dictionary = "\xDF\x11"s + bigEndian(10'000, 2);
  for (int i = 0; i < 10'000; ++i) dictionary += '\1';
  for (int i = 0; i < 10'000; ++i) dictionary += '\2';
  keys.objects = {dictionary, "\x5F\x12"s + bigEndian(100'000, 4) + std::string(100'000, 'k'), "\x09"s};
  keys.offsetSize = 4;
  EXPECT_FALSE(readPropertyList(keys.bytes()));
}

TEST(BinaryPropertyListReader, AKeyBeyondAsciiIsLatin1Too) {
  EXPECT_EQ(read({"\xD1\1\2"s, "\x52z\xFC"s, "\x09"s}),
            Dictionary::make({{"z\xC3\xBC", PropertyList::boolean(true)}}));
}

TEST(BinaryPropertyListReader, AnObjectReferredToTwiceIsReadIntoTwo) {
  const auto array = read({"\xA2\1\1"s, "\xA1\2"s,
                           "\x51"
                           "a"s})
                         .asArray();
  ASSERT_EQ(array.size(), 2u);
  EXPECT_EQ(array.at(0), array.at(1));
  EXPECT_FALSE(array.at(0).isSameObject(array.at(1)));
}

}  // namespace
}  // namespace corvane
