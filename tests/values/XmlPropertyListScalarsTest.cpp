#include <chrono>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"
#include "values/XmlFiles.h"

namespace corvane {
namespace {

using namespace std::string_literals;

TEST(XmlPropertyListScalars, ReadsIntegersAsAMacDoes) {
  expectValues({
      {"<integer>0</integer>", number(0)},
      {"<integer>-0</integer>", number(0)},
      {"<integer>010</integer>", number(10)},
      {"<integer>0000000000000000000000000001</integer>", number(1)},
      {"<integer>+7</integer>", number(7)},
      {"<integer>-7</integer>", number(-7)},
      {"<integer> \n\t7</integer>", number(7)},
      {"<integer>- 7</integer>", number(-7)},
      {"<integer>0x1F</integer>", number(31)},
      {"<integer>0Xff</integer>", number(255)},
      {"<integer>-0x10</integer>", number(-16)},
      {"<integer>0x0</integer>", number(0)},
      {"<integer>0x0010</integer>", number(16)},
      {"<integer>9223372036854775807</integer>", number(std::numeric_limits<std::int64_t>::max())},
      {"<integer>-9223372036854775808</integer>", number(std::numeric_limits<std::int64_t>::min())},
      {"<integer>9223372036854775808</integer>", PropertyList::unsignedInteger(9223372036854775808ULL)},
      {"<integer>18446744073709551615</integer>", PropertyList::unsignedInteger(18446744073709551615ULL)},
      {"<integer>0xFFFFFFFFFFFFFFFF</integer>", PropertyList::unsignedInteger(18446744073709551615ULL)},
      {"<integer>-0x8000000000000000</integer>", number(std::numeric_limits<std::int64_t>::min())},
  });
}

TEST(XmlPropertyListScalars, AFileWithABadIntegerIsUnreadable) {
  expectUnreadable({
      "<integer></integer>",
      "<integer/>",
      "<integer/>5</integer>",
      "<integer> </integer>",
      "<integer>-</integer>",
      "<integer>+</integer>",
      "<integer>junk</integer>",
      "<integer>5 </integer>",
      "<integer>5a</integer>",
      "<integer>5.0</integer>",
      "<integer>1e3</integer>",
      "<integer>--5</integer>",
      "<integer>+-5</integer>",
      "<integer>0x</integer>",
      "<integer>0x-5</integer>",
      "<integer>00x5</integer>",
      "<integer>0xG</integer>",
      "<integer>1F</integer>",
      "<integer>18446744073709551616</integer>",
      "<integer>-9223372036854775809</integer>",
      "<integer>0x10000000000000000</integer>",
      "<integer>99999999999999999999999999</integer>",
      "<integer>&#53;</integer>",
      "<integer><![CDATA[5]]></integer>",
      "<integer>5<!-- five --></integer>",
      "<integer><integer>5</integer></integer>",
  });
}

TEST(XmlPropertyListScalars, ReadsReals) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    std::string text;
    double value;
  } cases[] = {
      {"0", 0},
      {"1.5", 1.5},
      {"+1.5", 1.5},
      {"-1.5", -1.5},
      {" 1.5", 1.5},
      {".5", 0.5},
      {"5.", 5},
      {"1e3", 1000},
      {"1E-3", 0.001},
      {"0.10000000000000001", 0.1},
      {"1.7976931348623157e+308", std::numeric_limits<double>::max()},
      {"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
      {"infinity", infinity},
      {"+Infinity", infinity},
      {"-INFINITY", -infinity},
      {"inf", infinity},
      {"+inf", infinity},
      {"-inf", -infinity},
      {"1&#46;5", 1.5},
      {"<![CDATA[1.5]]>", 1.5},
  };
  for (const auto& [digits, value] : cases) {
    EXPECT_EQ(readPropertyList(file("<real>" + digits + "</real>")).asReal(), value) << digits;
  }
  EXPECT_TRUE(std::isnan(readPropertyList(file("<real>NaN</real>")).asReal().value_or(0)));
}

TEST(XmlPropertyListScalars, AFileWithABadRealIsUnreadable) {
  expectUnreadable({"<real></real>", "<real/>", "<real> </real>", "<real>junk</real>", "<real>1,5</real>",
                    "<real>1.5 </real>", "<real>1.5x</real>", "<real>1e</real>", "<real>.</real>",
                    "<real>--1</real>", "<real>+-1</real>", "<real>-nan</real>", "<real>nan(1)</real>",
                    "<real>0x10</real>", "<real>1e999</real>", "<real>-1e999</real>", "<real> inf</real>"});
}

TEST(XmlPropertyListScalars, BooleansAreEmptyElements) {
  expectValues({{"<true/>", PropertyList::boolean(true)},
                {"<false/>", PropertyList::boolean(false)},
                {"<true />", PropertyList::boolean(true)},
                {"<true></true>", PropertyList::boolean(true)},
                {"<false></false>", PropertyList::boolean(false)}});
  expectUnreadable(
      {"<true>x</true>", "<true> </true>", "<true><true/></true>", "<true><!-- --></true>", "<TRUE/>"});
}

TEST(XmlPropertyListScalars, ReadsDatesOfTheYears1To9999) {
  using namespace std::chrono;
  for (int year = 1; year <= 9999; year += year < 1900 || year > 2100 ? 13 : 1) {
    for (const auto& [month, day] : {std::pair(1, 1), std::pair(2, 28), std::pair(3, 1), std::pair(12, 31)}) {
      char digits[64];
      std::snprintf(digits, sizeof digits, "<date>%04d-%02d-%02dT23:59:58Z</date>", year, month, day);
      const auto expected = sys_days(std::chrono::year(year) / month / day) + 23h + 59min + 58s;
      const auto found = readPropertyList(file(digits)).asDate();
      ASSERT_TRUE(found) << digits;
      ASSERT_EQ(found->secondsSince1970, static_cast<double>(expected.time_since_epoch().count())) << digits;
    }
  }
}

TEST(XmlPropertyListScalars, KnowsWellKnownDates) {
  const struct {
    std::string text;
    double value;
  } cases[] = {
      {"1970-01-01T00:00:00Z", 0},
      {"2001-01-01T00:00:00Z", 978307200},
      {"2000-02-29T12:00:00Z", 951825600},
      {"1969-12-31T23:59:59Z", -1},
      {"2069-01-20T00:00:00Z", 3125865600},
      {"1932-12-12T00:00:00Z", -1169337600},
      {"0001-01-01T00:00:00Z", -62135596800},
      {"9999-12-31T23:59:59Z", 253402300799},
      {"1-01-01T00:00:00Z", -62135596800},
      // Too long a month or day runs on.
      {"2023-02-30T00:00:00Z", 1677715200},
      {"1970-01-01T24:00:00Z", 86400},
      {"1970-01-01T00:00:60Z", 60},
  };
  for (const auto& [digits, value] : cases) {
    const auto found = readPropertyList(file("<date>" + digits + "</date>")).asDate();
    ASSERT_TRUE(found) << digits;
    EXPECT_EQ(found->secondsSince1970, value) << digits;
  }
}

TEST(XmlPropertyListScalars, AFileWithABadDateIsUnreadable) {
  for (const auto* digits : {"",
                             " ",
                             "junk",
                             "2024",
                             "2024-01-01",
                             "2024-01-01T00:00:00",
                             "2024-01-01 00:00:00Z",
                             "2024-1-01T00:00:00Z",
                             "2024-01-01T00:00:00.5Z",
                             "2024-01-01T00:00:00+01:00",
                             "2024-00-01T00:00:00Z",
                             "2024-13-01T00:00:00Z",
                             "0000-12-31T00:00:00Z",
                             "10000-01-01T00:00:00Z",
                             "-001-01-01T00:00:00Z",
                             "9999-12-31T23:59:60Z",
                             " 2024-01-01T00:00:00Z",
                             "2024-01-01T00:00:00Z ",
                             "2024-01-01T00:00:0xZ",
                             "-01-01T00:00:00Z"}) {
    expectUnreadable({"<date>"s + digits + "</date>"});
  }
  expectUnreadable({"<date/>"});
}

TEST(XmlPropertyListScalars, ReadsDataAsLenientlyAsAMac) {
  const auto data = [](PropertyList::Bytes bytes) { return PropertyList::data(std::move(bytes)); };
  expectValues({
      {"<data></data>", data({})},
      {"<data>\n</data>", data({})},
      {"<data>TWFu</data>", data({'M', 'a', 'n'})},
      {"<data>TWE=</data>", data({'M', 'a'})},
      {"<data>TQ==</data>", data({'M'})},
      {"<data>T Q\n=\t= </data>", data({'M'})},
      {"<data>+/+/</data>", data({0xFB, 0xFF, 0xBF})},
      {"<data>T*W-F_u</data>", data({'M', 'a', 'n'})},
      {"<data>TWFuTW</data>", data({'M', 'a', 'n'})},
      {"<data>TQ</data>", data({})},
  });
  expectUnreadable({"<data/>", "<data>TWF\xC3\xA9</data>", "<data><!-- -->TWFu</data>"});
}

TEST(XmlPropertyListScalars, DecodesEscapesStrictly) {
  expectValues({
      {"<string>&lt;&gt;&amp;&apos;&quot;</string>", text("<>&'\"")},
      {"<string>a&amp;lt;b</string>", text("a&lt;b")},
      {"<string>&#65;&#x42;&#x63;</string>", text("ABc")},
      {"<string>&#233;&#x20AC;&#x1F600;</string>", text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80")},
      {"<string>&#00065;</string>", text("A")},
      {"<string>&#x00000041;</string>", text("A")},
      {"<string>&#x10FFFF;</string>", text("\xF4\x8F\xBF\xBF")},
      {"<string>a&#0;b</string>", text("a\0b"s)},
      {"<string>a\0b</string>"s, text("a\0b"s)},
      {"<string>]]> \" '</string>", text("]]> \" '")},
      {"<dict><key>a&amp;b</key><true/></dict>", Dictionary::make({{"a&b", PropertyList::boolean(true)}})},
  });
  expectUnreadable({
      "<string>&</string>",
      "<string>a & b</string>",
      "<string>&amp</string>",
      "<string>&unknown;</string>",
      "<string>&AMP;</string>",
      "<string>&;</string>",
      "<string>&#;</string>",
      "<string>&#x;</string>",
      "<string>&#X41;</string>",
      "<string>&#4G;</string>",
      "<string>&# 65;</string>",
      "<string>&#-65;</string>",
      "<string>&#+65;</string>",
      "<string>&#xD800;</string>",
      "<string>&#xDFFF;</string>",
      "<string>&#x110000;</string>",
      "<string>&#99999999;</string>",
      "<string>&#4294967361;</string>",
      "<string>&#x000000041;</string>",
      "<string>&#000000000065;</string>",
      "<dict><key>&bad;</key><true/></dict>",
  });
}

TEST(XmlPropertyListScalars, CharacterDataIsTakenLiterally) {
  expectValues({
      {"<string><![CDATA[<&amp;>]]></string>", text("<&amp;>")},
      {"<string>a<![CDATA[b]]>c</string>", text("abc")},
      {"<string> \n<![CDATA[ b ]]>\t</string>", text(" \n b \t")},
      {"<string><![CDATA[a]]><![CDATA[b]]></string>", text("ab")},
      {"<string><![CDATA[]]></string>", text("")},
      {"<string><![CDATA[</string>]]></string>", text("</string>")},
      {"<array> <string><![CDATA[a]]></string> <string> </string> </array>",
       Array::make({text("a"), text(" ")})},
      {"<dict> <key><![CDATA[a]]></key> <string/> </dict>", Dictionary::make({{"a", text("")}})},
  });
  expectUnreadable({"<string><![CDATA[a</string>", "<![CDATA[a]]>", "<array><![CDATA[]]></array>",
                    "<string><![cdata[a]]></string>"});
}

}  // namespace
}  // namespace corvane
