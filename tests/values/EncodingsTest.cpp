#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "values/Encodings.h"

namespace corvane {
namespace {

constexpr std::string_view kCharacters[] = {"a",
                                            "\xC2\x80",
                                            "\xC3\xA9",
                                            "\xDF\xBF",
                                            "\xE0\xA0\x80",
                                            "\xED\x9F\xBF",
                                            "\xEE\x80\x80",
                                            "\xF0\x90\x80\x80",
                                            "\xF0\x9F\x92\xBE",
                                            "\xF4\x8F\xBF\xBF"};

constexpr std::string_view kNoCharacters[] = {
    "\xFF",  // no first byte
    "\x80",  // a continuation without one
    "\xC3",
    "\xE2\x82",
    "\xF0\x9F\x92",  // cut
    "\xC3\x28",
    "\xE2\x28\xA1",  // continued by something else
    "\xC0\xAF",
    "\xC1\xBF",
    "\xE0\x9F\xBF",
    "\xF0\x8F\xBF\xBF",  // longer than need be
    "\xED\xA0\x80",
    "\xED\xBF\xBF",  // surrogates
    "\xF4\x90\x80\x80",
    "\xF5\x80\x80\x80"  // beyond Unicode
};

TEST(Encodings, TellUtf8FromOtherBytesWhereverTheyStand) {
  EXPECT_TRUE(isUtf8(""));
  for (std::size_t before = 0; before < 18; ++before) {
    const std::string text(before, 'x');
    for (const std::string_view character : kCharacters) {
      EXPECT_TRUE(isUtf8(text + std::string(character) + "y")) << ::testing::PrintToString(character);
    }
    for (const std::string_view bytes : kNoCharacters) {
      EXPECT_FALSE(isUtf8(text + std::string(bytes))) << ::testing::PrintToString(bytes);
      EXPECT_FALSE(isUtf8(text + std::string(bytes) + "y")) << ::testing::PrintToString(bytes);
    }
  }
}

}  // namespace
}  // namespace corvane
