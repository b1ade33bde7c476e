#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"
#include "values/XmlFiles.h"

namespace corvane {
namespace {

using namespace std::string_literals;

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
  EXPECT_FALSE(readPropertyList("<array><plist></plist></array>"));
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
      {"<!DOCTYPE plist [ <!ENTITY a \"b\"> ]><plist><string>x</string></plist>", false},
      {"<!DOCTYPE plist []><plist><string>x</string></plist>", false},
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
      {"<plist><string>x</string\0></plist>"s, false},
      {"<plist>\0<string>x</string></plist>"s, false},
  };
  for (const auto& [bytes, readable] : cases) {
    const auto value = readPropertyList(bytes);
    EXPECT_EQ(bool(value), readable) << bytes;
    EXPECT_EQ(value, readable ? text("x") : PropertyList()) << bytes;
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

TEST(XmlPropertyListReader, NoEntityIsEverExpanded) {
  expectUnreadable({"<string>&a;</string>", "<string>&nbsp;</string>", "<string>&plist;</string>"});
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
