#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/HelperReply.h"

namespace corvane {
namespace {

struct ReplyCase {
  std::string reply;
  std::optional<HelperReply> parsed;
};

TEST(HelperReply, IsTakenApartIntoItsCodeAndTheLineAfterItsFirstComma) {
  const std::vector<ReplyCase> cases = {
      {"0,All settings valid", HelperReply{0, "All settings valid"}},
      {"3,Server unreachable\nmore text", HelperReply{3, "Server unreachable"}},
      {"-2,Error running plugin", HelperReply{-2, "Error running plugin"}},
      {"-1,Error authorizing execution", HelperReply{-1, "Error authorizing execution"}},
      {"0,\nDone", HelperReply{0, "Done"}},
      {"0, \t \r\n\n  Done", HelperReply{0, "Done"}},
      {"OK,fine", HelperReply{0, "fine"}},
      {",fine", HelperReply{0, "fine"}},
      {"  +7x,seven", HelperReply{7, "seven"}},
      {"0,one, two,three", HelperReply{0, "one, two,three"}},
      {"1,trailing  ", HelperReply{1, "trailing  "}},
      {"0,a\rb", HelperReply{0, "a"}},
      {"0,a\vb", HelperReply{0, "a"}},
      {"0,a\xC2\x85"
       "b",
       HelperReply{0, "a"}},  // next line
      {"0,a\xE2\x80\xA8"
       "b",
       HelperReply{0, "a"}},  // line separator
      {"0,\xC2\xA0\xE3\x80\x80"
       "b",
       HelperReply{0, "b"}},  // no-break and ideographic space
      {"0,\xC3\xA4\xC3\xB6", HelperReply{0, "\xC3\xA4\xC3\xB6"}},
      {"4294967296,x", HelperReply{std::numeric_limits<std::int32_t>::max(), "x"}},  // never wraps to success
      {"1\n0,x", HelperReply{1, "x"}},  // the code is the beginning of all of it
  };
  for (const ReplyCase& one : cases) EXPECT_EQ(parseHelperReply(one.reply), one.parsed) << one.reply;
}

TEST(HelperReply, WithoutACommaOrWithoutAMessageIsNone) {
  for (const char* reply : {"", "0", "OK", "0 All valid", "0,", "0,   ", "0,\n\n", "1,\r\n \t", ","}) {
    EXPECT_EQ(parseHelperReply(reply), std::nullopt) << reply;
  }
}

TEST(HelperReply, BytesThatAreNoTextDoNotDisturb) {
  EXPECT_EQ(parseHelperReply(std::string("0,\xFF\xFE")), (HelperReply{0, "\xFF\xFE"}));
  EXPECT_EQ(parseHelperReply(std::string("0,a\0b", 5)), (HelperReply{0, std::string("a\0b", 3)}));
  EXPECT_EQ(parseHelperReply("0,\xE2\x80"), (HelperReply{0, "\xE2\x80"}));
}

}  // namespace
}  // namespace corvane
