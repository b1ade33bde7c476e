// What reading a file takes in memory, and what becomes of a file for which there is not enough.
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/BinaryFile.h"
#include "values/MemoryWatch.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using test::bigEndian;
using test::BinaryFile;
using test::MemoryWatch;

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

std::string lengthOf(char marker, std::size_t count) {
  return std::string(1, static_cast<char>(marker | 15)) + "\x12" + bigEndian(count, 4);
}
/// A file of about the size whose root is an array of references to one object.
std::string manyOf(const std::vector<std::string>& objects, std::size_t size) {
  BinaryFile file;
  file.objects = {lengthOf('\xA0', size) + std::string(size, '\1')};
  file.objects.insert(file.objects.end(), objects.begin(), objects.end());
  file.offsetSize = 4;
  return file.bytes();
}
/// Containers of references to the next one, the last to the object: as many values as the levels' product.
std::string levels(const std::string& innermost, std::size_t wide, char deep, char marker) {
  BinaryFile file;
  for (char level = 1; level <= deep; ++level) {
    const auto next = std::string(wide, level);
    file.objects.push_back(lengthOf(marker, wide) + next + (marker == '\xD0' ? next : ""));
  }
  file.objects.push_back(innermost);
  file.offsetSize = 4;
  return file.bytes();
}

struct Hostile {
  const char* name;
  std::function<std::string()> bytes;
};
void PrintTo(const Hostile& file, std::ostream* stream) { *stream << file.name; }

class MemoryOfBinaryFiles : public testing::TestWithParam<Hostile> {};

TEST_P(MemoryOfBinaryFiles, IsAtMost256TimesTheFileAndFourMegabytes) {
  const std::string bytes = GetParam().bytes();
  const std::size_t promised = 4 * kMegabyte + 256 * bytes.size();
  const MemoryWatch watch;
  const auto value = readPropertyList(bytes);
  EXPECT_LE(watch.peak(), promised) << static_cast<double>(watch.peak()) / static_cast<double>(bytes.size());
}

std::string text(std::size_t size) { return lengthOf('\x50', size) + std::string(size, 'x'); }
/// A dictionary of `count` entries whose keys stand in the wrong order.
std::string unsortedDictionary(std::size_t copies, char count) {
  BinaryFile file;
  std::string dictionary(1, static_cast<char>('\xD0' | count));
  for (char key = 0; key < count; ++key) dictionary += static_cast<char>(2 + key);
  dictionary += std::string(static_cast<std::size_t>(count), '\2');
  file.objects = {lengthOf('\xA0', copies) + std::string(copies, '\1'), dictionary};
  for (char key = 0; key < count; ++key) file.objects.push_back("\x51"s + static_cast<char>('z' - key));
  file.offsetSize = 4;
  return file.bytes();
}

INSTANTIATE_TEST_SUITE_P(
    Files, MemoryOfBinaryFiles,
    testing::Values(
        Hostile{"ManyBooleans", [] { return manyOf({"\x09"}, kMegabyte); }},
        Hostile{"ManyLongTexts", [] { return manyOf({text(400)}, kMegabyte); }},
        Hostile{"ManyTextsOfLatin1",
                [] { return manyOf({lengthOf('\x50', 40) + std::string(40, '\xE9')}, kMegabyte); }},
        Hostile{"ManyTextsOfUtf16", [] { return manyOf({"\x6C"s + std::string(24, '\x30')}, kMegabyte); }},
        Hostile{"ManyArraysOfOne",
                [] {
                  return manyOf({"\xA1\2", "\x09"}, kMegabyte);
                }},
        Hostile{"ManyUnsortedDictionaries", [] { return unsortedDictionary(kMegabyte, 3); }},
        Hostile{"ManyLargeUnsortedDictionaries", [] { return unsortedDictionary(kMegabyte, 14); }},
        Hostile{"ArraysInArrays", [] { return levels("\x51x", 1000, 4, '\xA0'); }},
        Hostile{"ArraysOfEmptyArrays", [] { return levels("\xA0", 100, 9, '\xA0'); }},
        Hostile{"LargeArraysOfLargeArrays", [] { return levels("\x09", kMegabyte / 2, 2, '\xA0'); }},
        Hostile{"ShortKeyOfManyValues",
                [] {
                  BinaryFile file{{lengthOf('\xD0', kMegabyte / 2) + std::string(kMegabyte, '\1'), "\x51k"}};
                  file.offsetSize = 4;
                  return file.bytes();
                }},
        Hostile{"ManyValuesInATinyFile", [] { return levels("\x51x", 10, 12, '\xA0'); }}),
    [](const testing::TestParamInfo<Hostile>& value) { return value.param.name; });

/// Fills a file with references until it stands for as much as is still read: what is counted must be what is
/// taken.
class MemoryOfFullBinaryFiles : public testing::TestWithParam<Hostile> {};

TEST_P(MemoryOfFullBinaryFiles, IsAtMost256TimesTheFileAndFourMegabytes) {
  bool accepted = false;
  bool refused = false;
  for (std::size_t wide = 0; !refused; wide += 1 + wide / 8) {
    BinaryFile file;
    const std::size_t many = kMegabyte / 32;
    file.objects = {lengthOf('\xA0', many) + std::string(many, '\1'),
                    lengthOf('\xA0', wide) + std::string(wide, '\2'),
                    GetParam().bytes(),
                    "\x09",
                    "\x51z",
                    "\x51y"};
    file.offsetSize = 4;
    const std::string bytes = file.bytes();
    const MemoryWatch watch;
    const bool read = static_cast<bool>(readPropertyList(bytes));
    (read ? accepted : refused) = true;
    ASSERT_LT(wide, 200u);
    ASSERT_LE(watch.peak(), 4 * kMegabyte + 256 * bytes.size())
        << wide << ": " << static_cast<double>(watch.peak()) / static_cast<double>(bytes.size());
  }
  EXPECT_TRUE(accepted);
}
INSTANTIATE_TEST_SUITE_P(Files, MemoryOfFullBinaryFiles,
                         testing::Values(Hostile{"OfBooleans", [] { return "\x09"s; }},
                                         Hostile{"OfShortTexts", [] { return "\x51x"s; }},
                                         Hostile{"OfLongTexts", [] { return text(200); }},
                                         Hostile{"OfTextsOutsideTheirNodes", [] { return text(16); }},
                                         Hostile{"OfData", [] { return "\x41x"s; }},
                                         Hostile{"OfEmptyArrays", [] { return "\xA0"s; }},
                                         Hostile{"OfArrays", [] { return "\xA1\3"s; }},
                                         Hostile{"OfDictionaries", [] { return "\xD1\4\3"s; }},
                                         Hostile{"OfUnsortedDictionaries", [] { return "\xD2\4\5\3\3"s; }},
                                         Hostile{"OfArchiveIdentifiers", [] { return "\x80\1"s; }}),
                         [](const testing::TestParamInfo<Hostile>& value) { return value.param.name; });

TEST(MemoryOfBinaryFilesThatAMacWrites, IsNeverRefused) {
  // A Mac writes each text once and refers to it from everywhere.
  const std::size_t count = 20000;
  BinaryFile file;
  file.referenceSize = 2;
  file.offsetSize = 4;
  const std::size_t keys = 6;
  std::string entry = "\xD6";
  for (std::size_t i = 0; i < 2 * keys; ++i) entry += bigEndian(1 + i, 2);
  std::string all = lengthOf('\xA0', count);
  for (std::size_t i = 0; i < count; ++i) all += bigEndian(1 + 2 * keys + i, 2);
  file.objects = {all};
  for (std::size_t i = 0; i < 2 * keys; ++i)
    file.objects.push_back(lengthOf('\x50', 40) + std::string(39, 'k') + static_cast<char>('a' + i));
  for (std::size_t i = 0; i < count; ++i) file.objects.push_back(entry);
  EXPECT_EQ(readPropertyList(file.bytes()).asArray().size(), count);
}

class MemoryOfXmlFiles : public testing::TestWithParam<Hostile> {};

TEST_P(MemoryOfXmlFiles, IsAtMost24TimesTheFileAndFourMegabytes) {
  const std::string bytes = GetParam().bytes();
  const MemoryWatch watch;
  EXPECT_TRUE(readPropertyList(bytes));
  EXPECT_LE(watch.peak(), 4 * kMegabyte + 24 * bytes.size())
      << static_cast<double>(watch.peak()) / static_cast<double>(bytes.size());
}

std::string repeated(const std::string& what, const std::string& frame) {
  std::string body;
  for (std::size_t i = 0; i < 2 * kMegabyte / what.size(); ++i) body += what;
  return "<" + frame + ">" + body + "</" + frame + ">";
}
std::string declared(const std::string& encoding, const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>" + body;
}

INSTANTIATE_TEST_SUITE_P(
    Files, MemoryOfXmlFiles,
    testing::Values(Hostile{"ManyBooleans", [] { return repeated("<true/>", "array"); }},
                    Hostile{"ManyNumbers", [] { return repeated("<integer>1</integer>", "array"); }},
                    Hostile{"ManyEmptyTexts", [] { return repeated("<key/>", "array"); }},
                    Hostile{"ManyTextsOutsideTheirNodes",
                            [] { return repeated("<key>0123456789abcdef</key>", "array"); }},
                    Hostile{"ManyEmptyArrays", [] { return repeated("<array/>", "array"); }},
                    Hostile{"ManyEmptyDictionaries", [] { return repeated("<dict/>", "array"); }},
                    Hostile{"ManyEntries", [] { return repeated("<key/><dict/>", "dict"); }},
                    Hostile{"ManyUnsortedEntries",
                            [] { return repeated("<key>b</key><key/><key/><key/>", "dict"); }},
                    Hostile{"ManyData", [] { return repeated("<data>AA==</data>", "array"); }},
                    Hostile{"OneTextInPieces", [] { return repeated("<![CDATA[]]>x", "string"); }},
                    Hostile{"OneTextOfLatin1",
                            [] {
                              return declared("ISO-8859-1",
                                              "<string>" + std::string(2 * kMegabyte, '\xE9') + "</string>");
                            }}),
    [](const testing::TestParamInfo<Hostile>& value) { return value.param.name; });

/// A file of each format with every kind of value, large enough for every kind of growth.
std::vector<std::string> soundFiles() {
  Dictionary all = Dictionary::make();
  for (int i = 0; i < 200; ++i) {
    const auto name = std::to_string(i * 7919 % 200) + " of a longer name";
    all.set(name, Array::make({PropertyList::string(name + name), PropertyList::integer(i),
                               PropertyList::data({1, 2, 3}), PropertyList::date({1e9}),
                               PropertyList::real(0.5), Dictionary::make({{name, Array::make()}})}));
  }
  const std::string xml = writeXmlPropertyList(all).value_or("");
  std::string utf16 = "\xFE\xFF";
  for (const char c : xml) utf16 += {'\0', c};
  BinaryFile binary{{"\xD3\1\2\3\4\5\6"s, text(40), "\x51z"s, "\x62\x20\xAC\x20\xAC"s, "\xA3\1\5\6"s,
                     "\x4F\x10\x20" + std::string(32, 'd'), "\x80\7"s}};
  binary.offsetSize = 2;
  return {xml, utf16, declared("ISO-8859-1", xml.substr(xml.find('>') + 1)), binary.bytes()};
}

TEST(MemoryThatRunsOut, MakesAFileUnreadableAtAnyAllocationAndEndsNothing) {
  for (const std::string& bytes : soundFiles()) {
    const auto whole = readPropertyList(bytes);
    ASSERT_TRUE(whole) << bytes.substr(0, 60);
    std::size_t allocations = 0;
    for (bool refused = true; refused; ++allocations) {
      PropertyList value;
      {
        const MemoryWatch watch(MemoryWatch::kUnlimited, allocations);
        value = readPropertyList(bytes);
        refused = watch.refused();
      }
      // Sorting makes do with less memory; everything else is all or nothing.
      if (refused && !value) continue;
      ASSERT_EQ(value, whole) << allocations;
    }
    EXPECT_GT(allocations, 5u) << bytes.substr(0, 60);
  }
}

TEST(MemoryThatRunsOut, MakesAFileOfEightMegabytesUnreadableBelowItsBound) {
  const std::string bytes = manyOf({"\x51x"}, 8 * kMegabyte);
  for (const std::size_t limit : {kMegabyte, 64 * kMegabyte, 256 * kMegabyte}) {
    const MemoryWatch watch(limit);
    EXPECT_FALSE(readPropertyList(bytes));
    EXPECT_TRUE(watch.refused());
  }
}

TEST(MemoryThatRunsOut, MakesAWriteFailAtAnyAllocationAndEndsNothing) {
  const auto value = readPropertyList(soundFiles().front());
  const auto whole = writeXmlPropertyList(value);
  std::size_t allocations = 0;
  for (bool refused = true; refused; ++allocations) {
    const MemoryWatch watch(MemoryWatch::kUnlimited, allocations);
    const auto written = writeXmlPropertyList(value);
    refused = watch.refused();
    ASSERT_EQ(written.has_value(), !refused);
    if (written) {
      ASSERT_EQ(written, whole);
    }
  }
  EXPECT_GT(allocations, 5u);
}

TEST(MemoryOfAWrite, IsBoundedAlsoWhereFewNodesStandForAnEndlessText) {
  PropertyList value = PropertyList::string("x");
  for (int level = 0; level < 60; ++level) value = Array::make({value, value});
  const MemoryWatch watch;
  EXPECT_FALSE(writeXmlPropertyList(value));
  EXPECT_LE(watch.peak(), 3 * kLargestPropertyListFile);
}

}  // namespace
}  // namespace corvane
