#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"
#include "values/XmlFiles.h"

namespace corvane {
namespace {

using namespace std::string_literals;

TEST(XmlPropertyListEncodings, InvalidUtf8MakesTheFileUnreadable) {
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

TEST(XmlPropertyListEncodings, ReadsUnicodeInEveryFormAMacReads) {
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
    EXPECT_FALSE(readPropertyList(utf32(body32, bigEndian))) << "UTF-32 needs its mark";
  }
}

TEST(XmlPropertyListEncodings, Utf16WithABrokenPairOrACutUnitIsUnreadable) {
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

TEST(XmlPropertyListEncodings, ReadsTheDeclaredEncoding) {
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

}  // namespace
}  // namespace corvane
