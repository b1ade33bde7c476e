#include <chrono>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace std::string_literals;

std::string file(const std::string& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">\n" +
         body + "\n</plist>\n";
}

PropertyList text(const std::string& s) { return PropertyList::string(s); }
PropertyList number(std::int64_t n) { return PropertyList::integer(n); }

struct Case {
  std::string body;
  PropertyList value;
};

void expectValues(const std::vector<Case>& cases) {
  for (const auto& [body, value] : cases) {
    const PropertyList found = readPropertyList(file(body));
    EXPECT_TRUE(found) << body;
    EXPECT_EQ(found, value) << body;
  }
}

void expectUnreadable(const std::vector<std::string>& bodies) {
  for (const auto& body : bodies) EXPECT_FALSE(readPropertyList(file(body))) << body;
}

TEST(XmlPropertyListReader, ReadsEveryKindOfValue) {
  const auto value = readPropertyList(file(R"(<dict>
    <key>string</key><string>text</string>
    <key>integer</key><integer>42</integer>
    <key>real</key><real>1.5</real>
    <key>yes</key><true/>
    <key>no</key><false/>
    <key>date</key><date>1970-01-02T00:00:01Z</date>
    <key>data</key><data>AAEC</data>
    <key>array</key><array><string>a</string><array/><dict/></array>
    <key>dict</key><dict><key>inner</key><integer>1</integer></dict>
  </dict>)"));
  EXPECT_EQ(value, Dictionary::make({{"string", text("text")},
                                     {"integer", number(42)},
                                     {"real", PropertyList::real(1.5)},
                                     {"yes", PropertyList::boolean(true)},
                                     {"no", PropertyList::boolean(false)},
                                     {"date", PropertyList::date({86401})},
                                     {"data", PropertyList::data({0, 1, 2})},
                                     {"array", Array::make({text("a"), Array::make(), Dictionary::make()})},
                                     {"dict", Dictionary::make({{"inner", number(1)}})}}));
}

TEST(XmlPropertyListReader, ReadsIntegersAsAMacDoes) {
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

TEST(XmlPropertyListReader, AFileWithABadIntegerIsUnreadable) {
  expectUnreadable({
      "<integer></integer>",
      "<integer/>",
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

TEST(XmlPropertyListReader, ReadsReals) {
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

TEST(XmlPropertyListReader, AFileWithABadRealIsUnreadable) {
  expectUnreadable({"<real></real>", "<real/>", "<real> </real>", "<real>junk</real>", "<real>1,5</real>",
                    "<real>1.5 </real>", "<real>1.5x</real>", "<real>1e</real>", "<real>.</real>",
                    "<real>--1</real>", "<real>+-1</real>", "<real>-nan</real>", "<real>nan(1)</real>",
                    "<real>0x10</real>", "<real>1e999</real>", "<real>-1e999</real>", "<real> inf</real>"});
}

TEST(XmlPropertyListReader, BooleansAreEmptyElements) {
  expectValues({{"<true/>", PropertyList::boolean(true)},
                {"<false/>", PropertyList::boolean(false)},
                {"<true />", PropertyList::boolean(true)},
                {"<true></true>", PropertyList::boolean(true)},
                {"<false></false>", PropertyList::boolean(false)}});
  expectUnreadable(
      {"<true>x</true>", "<true> </true>", "<true><true/></true>", "<true><!-- --></true>", "<TRUE/>"});
}

TEST(XmlPropertyListReader, ReadsDatesOfTheYears1To9999) {
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

TEST(XmlPropertyListReader, KnowsWellKnownDates) {
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

TEST(XmlPropertyListReader, AFileWithABadDateIsUnreadable) {
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

TEST(XmlPropertyListReader, ReadsDataAsLenientlyAsAMac) {
  const auto data = [](PropertyList::Bytes bytes) { return PropertyList::data(std::move(bytes)); };
  expectValues({
      {"<data></data>", data({})},
      {"<data/>", data({})},
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
  expectUnreadable({"<data>TWF\xC3\xA9</data>", "<data><!-- -->TWFu</data>"});
}

TEST(XmlPropertyListReader, DecodesEscapesStrictly) {
  expectValues({
      {"<string>&lt;&gt;&amp;&apos;&quot;</string>", text("<>&'\"")},
      {"<string>a&amp;lt;b</string>", text("a&lt;b")},
      {"<string>&#65;&#x42;&#x63;</string>", text("ABc")},
      {"<string>&#233;&#x20AC;&#x1F600;</string>", text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80")},
      {"<string>&#00065;</string>", text("A")},
      {"<string>&#x10FFFF;</string>", text("\xF4\x8F\xBF\xBF")},
      {"<string>a&#0;b</string>", text("a\0b"s)},
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
      "<string>&#000000000065;</string>",
      "<dict><key>&bad;</key><true/></dict>",
  });
}

TEST(XmlPropertyListReader, CharacterDataIsTakenLiterally) {
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

TEST(XmlPropertyListReader, CommentsAndInstructionsMayStandBetweenElementsButNotInTexts) {
  expectValues({
      {"<!-- a --><string>x</string><!-- b -->", text("x")},
      {"<?target data?><string>x</string><?target?>", text("x")},
      {"<array><!-- <string>no</string> --><string>x</string><?p q?></array>", Array::make({text("x")})},
      {"<dict><!----><key>k</key><!-- between --><string>x</string></dict>",
       Dictionary::make({{"k", text("x")}})},
      {"<!-- -- - --><string>x</string>", text("x")},
  });
  expectUnreadable({"<string>a<!-- b -->c</string>", "<string><!-- b --></string>",
                    "<string>a<?p q?>c</string>", "<dict><key>a<!-- b --></key><true/></dict>",
                    "<!-- unterminated <string>x</string>", "<string>x</string><!-- unterminated",
                    "<array><!DOCTYPE x></array>"});
}

TEST(XmlPropertyListReader, BlanksAreKeptInTextsAndIgnoredBetweenElements) {
  expectValues({
      {"<string></string>", text("")},
      {"<string/>", text("")},
      {"<string />", text("")},
      {"<string> </string>", text(" ")},
      {"<string>\n\ta \r\n</string>", text("\n\ta \r\n")},
      {"<string\n>x</string\t >", text("x")},
      {"<array>\r\n</array>", Array::make()},
      {"<dict>\n\t\n</dict>", Dictionary::make()},
      {"<dict><key/><true/></dict>", Dictionary::make({{"", PropertyList::boolean(true)}})},
  });
  expectUnreadable({"<array>junk</array>", "<array><true/>junk</array>", "<dict>junk</dict>",
                    "<dict><key>a</key>junk<true/></dict>", "junk<true/>", "<true/>junk"});
}

TEST(XmlPropertyListReader, AttributesAreIgnored) {
  expectValues(
      {{"<string kind=\"a\" other='b'>x</string>", text("x")}, {"<array id=\"1\"/>", Array::make()}});
}

TEST(XmlPropertyListReader, ADictionaryIsKeysEachWithAValue) {
  const auto yes = PropertyList::boolean(true);
  expectValues({
      {"<dict><key>a</key><true/><key>b</key><true/></dict>", Dictionary::make({{"a", yes}, {"b", yes}})},
      // A Mac takes a key in the place of a value for a string.
      {"<dict><key>a</key><key>b</key></dict>", Dictionary::make({{"a", text("b")}})},
      {"<array><key>a</key></array>", Array::make({text("a")})},
  });
  expectUnreadable({
      "<dict><key>a</key></dict>",
      "<dict><key>a</key><true/><key>b</key></dict>",
      "<dict><key>a</key><key>b</key><true/></dict>",
      "<dict><true/></dict>",
      "<dict><string>a</string><true/></dict>",
      "<dict><key>a</key><true/><true/></dict>",
      "<dict><key><true/></key><true/></dict>",
  });
}

TEST(XmlPropertyListReader, OfEqualKeysTheLastWins) {
  expectValues(
      {{"<dict><key>a</key><integer>1</integer><key>b</key><true/><key>a</key><integer>2</integer>"
        "<key>a</key><integer>3</integer></dict>",
        Dictionary::make({{"a", number(3)}, {"b", PropertyList::boolean(true)}})}});
}

TEST(XmlPropertyListReader, UnknownElementsMakeTheFileUnreadable) {
  expectUnreadable({"<foo/>", "<array><foo/></array>", "<dict><key>a</key><foo/></dict>", "<Dict/>",
                    "<ustring/>", "<dictionary/>", "<string><string>a</string></string>",
                    "<string>a<b/></string>"});
}

TEST(XmlPropertyListReader, AFileHoldsExactlyOneValue) {
  expectUnreadable({"", "   ", "<!-- only a comment -->", "<true/><true/>", "<true/><dict/>"});
  EXPECT_FALSE(readPropertyList("<plist/>"));
  EXPECT_FALSE(readPropertyList("<plist></plist>"));
}

TEST(XmlPropertyListReader, TheFrameOfAFile) {
  const struct {
    std::string bytes;
    bool readable;
  } cases[] = {
      {"<plist version=\"1.0\"><string>x</string></plist>", true},
      {"<plist><string>x</string></plist>", true},
      {"<string>x</string>", true},
      {"\n \t<plist><string>x</string></plist>", true},
      {"<!-- c --><?p q?><plist><string>x</string></plist>", true},
      {"<!DOCTYPE plist [ <!ENTITY a \"b\"> ]><plist><string>x</string></plist>", true},
      {"<!DOCTYPE anything><plist><string>x</string></plist>", true},
      {"<plist><plist><string>x</string></plist></plist>", true},
      // What follows does not matter.
      {"<plist><string>x</string></plist>junk", true},
      {"<plist><string>x</string></plist>\n<more", true},
      {"<plist><string>x</string></plist></plist>", true},
      {"<plist><string>x</string></plist><plist><foo/>", true},
      {"<plist><string>x</string></plist>&&& <<< >>>", true},
      {"<!-- </plist> --><plist><!-- </plist> <x> --><string>x</string></plist><", true},
      {"<?p </plist>?><plist><string ><![CDATA[x]]></string></plist><![CDATA[", true},
      {"<plist><string>x</string></plist>\0junk"s, true},
      {"<string>x</string></plist>", true},
      // What is missing or wrong does.
      {"", false},
      {" ", false},
      {"x", false},
      {"junk<plist><string>x</string></plist>", false},
      {"<![CDATA[x]]><plist><string>x</string></plist>", false},
      {"<plist><string>x</string>", false},
      {"<plist><string>x</string></plis", false},
      {"<plist><string>x</string></plist", false},
      {"<plist><string>x</string></dict>", false},
      {"<plist><string>x</string></Plist>", false},
      {"<plist><string>x</strin></plist>", false},
      {"<plist><string>x</plist>", false},
      {"<plist><array><string>x</string></plist></array>", false},
      {"</plist>", false},
      {"<foo><string>x</string></foo>", false},
      {"<PLIST><string>x</string></PLIST>", false},
      {"<html><body>Not found</body></html>", false},
      {"{ a = b; }", false},
      {"{\"a\": 1}", false},
      {std::string("\0", 1), false},
      {"<plist><string>a\0b</string></plist>"s, false},
      {"<plist>\0<string>x</string></plist>"s, false},
  };
  for (const auto& [bytes, readable] : cases) {
    const auto value = readPropertyList(bytes);
    EXPECT_EQ(bool(value), readable) << bytes;
    EXPECT_EQ(value, readable ? text("x") : PropertyList()) << bytes;
  }
}

TEST(XmlPropertyListReader, InvalidUtf8MakesTheFileUnreadable) {
  const std::string valid[] = {"\xC2\x80",     "\xDF\xBF",     "\xE0\xA0\x80",     "\xED\x9F\xBF",
                               "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"};
  for (const auto& bytes : valid)
    expectValues({{"<string>12345678" + bytes + "</string>", text("12345678" + bytes)}});
  const std::string invalid[] = {"\x80",
                                 "\xBF",
                                 "\xC0\x80",
                                 "\xC1\xBF",
                                 "\xC3",
                                 "\xC3(",
                                 "\xE0\x9F\xBF",
                                 "\xE2\x82",
                                 "\xE2(\xA1",
                                 "\xED\xA0\x80",
                                 "\xED\xBF\xBF",
                                 "\xF0\x8F\xBF\xBF",
                                 "\xF0\x9F\x98",
                                 "\xF4\x90\x80\x80",
                                 "\xF5\x80\x80\x80",
                                 "\xFE",
                                 "\xFF"};
  for (const auto& bytes : invalid) {
    expectUnreadable({"<string>" + bytes + "</string>", "<string>12345678" + bytes + "123456789</string>",
                      "<dict><key>" + bytes + "</key><true/></dict>",
                      "<string><![CDATA[" + bytes + "]]></string>"});
  }
}

std::string utf16(const std::u16string& units, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : units) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

std::string utf32(const std::u32string& units, bool bigEndian) {
  std::string bytes;
  for (const char32_t unit : units) {
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(unit >> 8 * (bigEndian ? 3 - i : i) & 0xFF);
  }
  return bytes;
}

TEST(XmlPropertyListReader, ReadsUnicodeInEveryFormWithOrWithoutMark) {
  const auto expected = text("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(readPropertyList("\xEF\xBB\xBF" + file("<string>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</string>")),
            expected);
  const std::u16string body16 =
      u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><plist><string>\u00E9\u20AC\U0001F600</string></plist>";
  const std::u32string body32 = U"<plist><string>\u00E9\u20AC\U0001F600</string></plist>";
  for (const bool bigEndian : {true, false}) {
    EXPECT_EQ(readPropertyList(utf16(u"\uFEFF" + body16, bigEndian)), expected);
    EXPECT_EQ(readPropertyList(utf16(body16, bigEndian)), expected);
    EXPECT_EQ(readPropertyList(utf32(U"\uFEFF" + body32, bigEndian)), expected);
  }
}

TEST(XmlPropertyListReader, Utf16WithABrokenPairOrACutUnitIsUnreadable) {
  for (const bool bigEndian : {true, false}) {
    for (const char16_t lone : {char16_t(0xD83D), char16_t(0xDE00)}) {
      EXPECT_FALSE(
          readPropertyList(utf16(u"\uFEFF<plist><string>a"s + lone + u"b</string></plist>", bigEndian)));
      EXPECT_FALSE(readPropertyList(utf16(u"\uFEFF<plist><string>a</string></plist>"s + lone, bigEndian)));
    }
    EXPECT_FALSE(readPropertyList(utf16(u"\uFEFF<plist><string>a</string></plist>", bigEndian) + "x"));
    EXPECT_FALSE(readPropertyList(
        utf32(U"\uFEFF<plist><string>"s + char32_t(0x110000) + U"</string></plist>", bigEndian)));
    EXPECT_FALSE(readPropertyList(utf16(u"\uFEFF", bigEndian)));
  }
}

TEST(XmlPropertyListReader, ReadsTheDeclaredEncoding) {
  const struct {
    std::string declaration;
    std::string content;
    PropertyList value;
  } cases[] = {
      {"encoding=\"ISO-8859-1\"", "\xE9\xFF", text("\xC3\xA9\xC3\xBF")},
      {"encoding='iso-8859-1'", "\xE9", text("\xC3\xA9")},
      {"encoding=\"UTF-8\"", "\xC3\xA9", text("\xC3\xA9")},
      {"encoding=\"utf-8\"", "\xC3\xA9", text("\xC3\xA9")},
      {"encoding=\"US-ASCII\"", "abc", text("abc")},
      {"", "\xC3\xA9", text("\xC3\xA9")},
      {"encoding=\"UTF-8\"", "\xE9", PropertyList()},
      {"encoding=\"no-such-encoding\"", "abc", PropertyList()},
      {"encoding=\"Shift_JIS\"", "abc", PropertyList()},
  };
  for (const auto& [declaration, content, value] : cases) {
    const std::string bytes =
        "<?xml version=\"1.0\" " + declaration + "?><plist><string>" + content + "</string></plist>";
    EXPECT_EQ(readPropertyList(bytes), value) << bytes;
  }
}

TEST(XmlPropertyListReader, NestingIsLimitedTo512Levels) {
  const auto nested = [](std::size_t levels) {
    std::string body;
    for (std::size_t i = 0; i < levels; ++i) body += "<array>";
    for (std::size_t i = 0; i < levels; ++i) body += "</array>";
    return body;
  };
  EXPECT_TRUE(readPropertyList(file(nested(512))));
  EXPECT_TRUE(readPropertyList(nested(512)));
  EXPECT_TRUE(writeXmlPropertyList(readPropertyList(file(nested(512)))));
  EXPECT_FALSE(readPropertyList(file(nested(513))));
  EXPECT_FALSE(readPropertyList(nested(513)));
  EXPECT_FALSE(readPropertyList(file(nested(29'000))));
  EXPECT_FALSE(readPropertyList(file(nested(1'000'000))));
  std::string open;
  for (int i = 0; i < 1'000'000; ++i) open += "<dict><key>a</key>";
  EXPECT_FALSE(readPropertyList(open));
}

TEST(XmlPropertyListReader, AFileCutAnywhereIsUnreadable) {
  const std::string whole = file(
      "<dict><key>a &amp; b</key><array><string>x</string><integer>-5</integer>"
      "<real>1.5</real><true/><date>2024-01-01T00:00:00Z</date><data>AAAA</data></array></dict>");
  const std::size_t end = whole.find("</plist>") + std::string_view("</plist>").size();
  for (std::size_t size = 0; size < end; ++size) {
    EXPECT_FALSE(readPropertyList(whole.substr(0, size))) << size;
  }
  EXPECT_TRUE(readPropertyList(whole.substr(0, end)));
}

TEST(XmlPropertyListReader, EntityDeclarationsAreNeverExpanded) {
  EXPECT_FALSE(
      readPropertyList("<!DOCTYPE plist [ <!ENTITY a \"aaaaaaaaaa\"> <!ENTITY b \"&a;&a;&a;\"> "
                       "<!ENTITY x SYSTEM \"file:///etc/passwd\"> ]><plist><string>&b;</string></plist>"));
  EXPECT_FALSE(
      readPropertyList("<!DOCTYPE plist [ <!ENTITY x SYSTEM \"file:///etc/passwd\"> ]>"
                       "<plist><string>&x;</string></plist>"));
}

TEST(XmlPropertyListReader, EveryValueIsAnObjectOfItsOwn) {
  const auto array =
      readPropertyList(file("<array><dict/><dict/><string>a</string><string>a</string></array>")).asArray();
  EXPECT_FALSE(array.at(0).isSameObject(array.at(1)));
  EXPECT_FALSE(array.at(2).isSameObject(array.at(3)));
}

}  // namespace
}  // namespace corvane
