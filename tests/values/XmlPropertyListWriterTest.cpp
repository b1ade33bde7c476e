#include <clocale>
#include <cmath>
#include <limits>
#include <locale>

#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace std::string_literals;

constexpr std::string_view header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view footer = "</plist>\n";

PropertyList text(const std::string& s) { return PropertyList::string(s); }

void expectWritten(const PropertyList& value, const std::string& body) {
  const auto written = writeXmlPropertyList(value);
  ASSERT_TRUE(written) << body;
  EXPECT_EQ(*written, std::string(header) + body + std::string(footer));
  EXPECT_EQ(readPropertyList(*written), value) << body;
}

TEST(XmlPropertyListWriter, WritesHeaderTabsAndSortedKeys) {
  expectWritten(
      Dictionary::make({{"b", PropertyList::boolean(true)},
                        {"a", Array::make({text("x"), Dictionary::make({{"k", PropertyList::integer(-1)}})})},
                        {"C", PropertyList::boolean(false)},
                        {"d", Array::make()},
                        {"e", Dictionary::make()},
                        {"", text("")}}),
      "<dict>\n"
      "\t<key></key>\n"
      "\t<string></string>\n"
      "\t<key>C</key>\n"
      "\t<false/>\n"
      "\t<key>a</key>\n"
      "\t<array>\n"
      "\t\t<string>x</string>\n"
      "\t\t<dict>\n"
      "\t\t\t<key>k</key>\n"
      "\t\t\t<integer>-1</integer>\n"
      "\t\t</dict>\n"
      "\t</array>\n"
      "\t<key>b</key>\n"
      "\t<true/>\n"
      "\t<key>d</key>\n"
      "\t<array/>\n"
      "\t<key>e</key>\n"
      "\t<dict/>\n"
      "</dict>\n");
}

TEST(XmlPropertyListWriter, KeysStandInUtf16Order) {
  expectWritten(Dictionary::make({{"\xEF\xBF\xBD", PropertyList::boolean(true)},
                                  {"\xF0\x9F\x98\x80", PropertyList::boolean(true)},
                                  {"z", PropertyList::boolean(true)}}),
                "<dict>\n"
                "\t<key>z</key>\n\t<true/>\n"
                "\t<key>\xF0\x9F\x98\x80</key>\n\t<true/>\n"
                "\t<key>\xEF\xBF\xBD</key>\n\t<true/>\n"
                "</dict>\n");
}

TEST(XmlPropertyListWriter, EscapesOnlyWhatMustBe) {
  expectWritten(
      text("<a href=\"x\">'&amp;'</a>\r\n\t\x01\x7F\xC3\xA9\xF0\x9F\x98\x80"),
      "<string>&lt;a href=\"x\"&gt;'&amp;amp;'&lt;/a&gt;\r\n\t\x01\x7F\xC3\xA9\xF0\x9F\x98\x80</string>\n");
  expectWritten(Dictionary::make({{"<&>", text("&")}}),
                "<dict>\n\t<key>&lt;&amp;&gt;</key>\n\t<string>&amp;</string>\n</dict>\n");
  expectWritten(text("a\0b"s), "<string>a\0b</string>\n"s);
  expectWritten(text("]]>"), "<string>]]&gt;</string>\n");
  expectWritten(text("  "), "<string>  </string>\n");
}

TEST(XmlPropertyListWriter, WritesIntegersOfTheWholeRange) {
  expectWritten(PropertyList::integer(0), "<integer>0</integer>\n");
  expectWritten(PropertyList::integer(std::numeric_limits<std::int64_t>::min()),
                "<integer>-9223372036854775808</integer>\n");
  expectWritten(PropertyList::integer(std::numeric_limits<std::int64_t>::max()),
                "<integer>9223372036854775807</integer>\n");
  expectWritten(PropertyList::unsignedInteger(std::numeric_limits<std::uint64_t>::max()),
                "<integer>18446744073709551615</integer>\n");
}

const struct {
  double value;
  std::string text;
} reals[] = {
    {0, "0.0"},
    {1, "1"},
    {-1.5, "-1.5"},
    {0.1, "0.10000000000000001"},
    {1.0 / 3, "0.33333333333333331"},
    {123456789.125, "123456789.125"},
    {1e17, "1e+17"},
    {1e16, "10000000000000000"},
    {0.0001, "0.0001"},
    {0.00001, "1.0000000000000001e-05"},
    {1e100, "1e+100"},
    {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
    {std::numeric_limits<double>::denorm_min(), "4.9406564584124654e-324"},
    {std::numeric_limits<double>::infinity(), "+infinity"},
    {-std::numeric_limits<double>::infinity(), "-infinity"},
    {std::numeric_limits<double>::quiet_NaN(), "nan"},
};

TEST(XmlPropertyListWriter, WritesRealsWithSeventeenDigits) {
  for (const auto& [value, digits] : reals)
    expectWritten(PropertyList::real(value), "<real>" + digits + "</real>\n");
  EXPECT_EQ(writeXmlPropertyList(PropertyList::real(-0.0)),
            std::string(header) + "<real>0.0</real>\n" + std::string(footer));
}

class DecimalComma : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

/// Puts a decimal comma wherever a library could take it from, and takes it back.
class CommaLocale {
 public:
  CommaLocale() {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
  }
  ~CommaLocale() {
    std::locale::global(before_);
    std::setlocale(LC_ALL, "C");
  }

 private:
  std::locale before_ = std::locale::global(std::locale(std::locale::classic(), new DecimalComma));
};

TEST(XmlPropertyListWriter, NumbersDoNotDependOnTheLocale) {
  const CommaLocale comma;
  for (const auto& [value, digits] : reals)
    expectWritten(PropertyList::real(value), "<real>" + digits + "</real>\n");
  expectWritten(PropertyList::integer(1234567), "<integer>1234567</integer>\n");
  EXPECT_FALSE(readPropertyList("<real>1,5</real>"));
}

TEST(XmlPropertyListWriter, WritesDatesOfTheYears1To9999) {
  const struct {
    double seconds;
    std::string text;
  } cases[] = {
      {0, "1970-01-01T00:00:00Z"},
      {-1, "1969-12-31T23:59:59Z"},
      {951825600, "2000-02-29T12:00:00Z"},
      {-62135596800, "0001-01-01T00:00:00Z"},
      {253402300799, "9999-12-31T23:59:59Z"},
      {3125865600, "2069-01-20T00:00:00Z"},
  };
  for (const auto& [seconds, digits] : cases) {
    expectWritten(PropertyList::date({seconds}), "<date>" + digits + "</date>\n");
  }
  // Fractions are dropped toward the past.
  EXPECT_EQ(writeXmlPropertyList(PropertyList::date({0.9})), writeXmlPropertyList(PropertyList::date({0})));
  EXPECT_EQ(writeXmlPropertyList(PropertyList::date({-0.1})), writeXmlPropertyList(PropertyList::date({-1})));
  for (const double seconds : {-62135596801.0, 253402300800.0, 1e300, -1e300, std::nan(""),
                               std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(writeXmlPropertyList(PropertyList::date({seconds}))) << seconds;
  }
}

PropertyList bytes(std::size_t count) { return PropertyList::data(PropertyList::Bytes(count, 0)); }

TEST(XmlPropertyListWriter, WritesDataInLinesOf76Columns) {
  expectWritten(PropertyList::data({}), "<data>\n</data>\n");
  expectWritten(PropertyList::data({'M'}), "<data>\nTQ==\n</data>\n");
  expectWritten(PropertyList::data({'M', 'a'}), "<data>\nTWE=\n</data>\n");
  expectWritten(PropertyList::data({0xFB, 0xFF, 0xBF}), "<data>\n+/+/\n</data>\n");
  expectWritten(bytes(57), "<data>\n" + std::string(76, 'A') + "\n</data>\n");
  expectWritten(bytes(58), "<data>\n" + std::string(76, 'A') + "\nAA==\n</data>\n");
}

TEST(XmlPropertyListWriter, EachTabTakesEightColumnsOfADataLineUpToEightTabs) {
  for (std::size_t level = 1; level <= 12; ++level) {
    PropertyList value = bytes(60);
    for (std::size_t i = 0; i < level; ++i) value = Array::make({value});
    const auto written = writeXmlPropertyList(value);
    ASSERT_TRUE(written);
    const std::size_t tabs = std::min<std::size_t>(level, 8);
    const std::size_t columns = 76 - 8 * tabs;
    const std::string data =
        std::string(level, '\t') + "<data>\n" + std::string(tabs, '\t') + std::string(columns, 'A') + "\n";
    EXPECT_NE(written->find(data), std::string::npos) << *written;
    EXPECT_NE(written->find("\n" + std::string(level, '\t') + "</data>\n"), std::string::npos) << *written;
    EXPECT_EQ(readPropertyList(*written), value);
  }
}

TEST(XmlPropertyListWriter, WhatCannotBeWrittenGivesNothing) {
  EXPECT_FALSE(writeXmlPropertyList(PropertyList()));
  EXPECT_FALSE(writeXmlPropertyList(Array::make({PropertyList()})));
  EXPECT_FALSE(writeXmlPropertyList(text("not UTF-8: \xFF")));
  EXPECT_FALSE(writeXmlPropertyList(Dictionary::make({{"\xC3", text("")}})));
}

TEST(XmlPropertyListWriter, NestingIsLimitedTo512Levels) {
  const auto nested = [](std::size_t levels, bool dictionaries) {
    PropertyList value = text("x");
    for (std::size_t i = 0; i < levels; ++i) {
      value =
          dictionaries ? PropertyList(Dictionary::make({{"k", value}})) : PropertyList(Array::make({value}));
    }
    return value;
  };
  for (const bool dictionaries : {false, true}) {
    const auto deepest = nested(512, dictionaries);
    const auto written = writeXmlPropertyList(deepest);
    ASSERT_TRUE(written);
    EXPECT_EQ(readPropertyList(*written), deepest);
    EXPECT_FALSE(writeXmlPropertyList(nested(513, dictionaries)));
    EXPECT_FALSE(writeXmlPropertyList(nested(1'000'000, dictionaries)));
  }
}

TEST(XmlPropertyListWriter, AValueThatContainsItselfIsRefused) {
  auto array = Array::make();
  auto dictionary = Dictionary::make({{"array", array}});
  array.append(dictionary);
  array.append(dictionary);
  EXPECT_FALSE(writeXmlPropertyList(array));
  EXPECT_FALSE(writeXmlPropertyList(dictionary));
  array.replaceAll({});
  EXPECT_TRUE(writeXmlPropertyList(dictionary));
}

TEST(XmlPropertyListWriter, AnObjectThatStandsInSeveralPlacesIsWrittenInEach) {
  const auto shared = Array::make({text("x")});
  expectWritten(Array::make({shared, shared}),
                "<array>\n\t<array>\n\t\t<string>x</string>\n\t</array>\n\t<array>\n\t\t<string>x</"
                "string>\n\t</array>\n</array>\n");
}

}  // namespace
}  // namespace corvane
