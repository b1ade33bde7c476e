// What a failed expectation says about a value.
#include <gtest/gtest.h>

#include "support/Values.h"

namespace corvane::test {
namespace {

using ::testing::PrintToString;

TEST(Printing, TellsPropertyListsOfDifferentKindsApart) {
  EXPECT_EQ(PrintToString(number(1)), "<integer>1</integer>");
  EXPECT_EQ(PrintToString(flag(true)), "<true/>");
  EXPECT_EQ(PrintToString(text("1")), "<string>1</string>");
  EXPECT_EQ(PrintToString(PropertyList()), "nothing");
  EXPECT_EQ(PrintToString(Dictionary::make({{"a", Array::make({number(1)})}})),
            "<dict>\n\t<key>a</key>\n\t<array>\n\t\t<integer>1</integer>\n\t</array>\n</dict>");
}

TEST(Printing, SaysWhatFramesTextsAndRepliesHold) {
  EXPECT_EQ(PrintToString(Rect{1, 2, 30, 4.5}), "30 x 4.5 at 1, 2");
  EXPECT_EQ(PrintToString(AttributedText("plain")), "\"plain\"");
  TextAttributes style;
  style.font = Font{Font::Family::System, 11, false, true};
  style.color = TextColor::Red;
  EXPECT_EQ(PrintToString(AttributedText("late", style)),
            "\"late\", from 0 for 4: font 1 of 11 italic colour 2");
  EXPECT_EQ(PrintToString(HelperReply{-2, "no"}), "-2, \"no\"");
  EXPECT_EQ(PrintToString(Result{"disk full"}), "disk full");
  EXPECT_EQ(PrintToString(helper::Reply{helper::Outcome::Denied, 0, "a link"}),
            "outcome 1, exit status 0, \"a link\"");
}

}  // namespace
}  // namespace corvane::test
