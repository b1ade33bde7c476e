#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "formatters/MyNumberFormatter.h"
#include "values/PropertyList.h"

namespace corvane {
namespace {

struct TypedText {
  const char* text;
  bool admitted;
};

void expectChecks(MyNumberFormatter& formatter, std::initializer_list<TypedText> cases) {
  for (const TypedText& typed : cases) {
    const PartialStringCheck check = formatter.isPartialStringValid(typed.text);
    EXPECT_EQ(check.valid, typed.admitted) << typed.text;
    EXPECT_FALSE(check.newEditingString) << typed.text;
  }
}

TEST(MyNumberFormatter, StartsWithTheRangeFromZeroToNinetyNineAndTheDefaultZero) {
  MyNumberFormatter formatter;
  EXPECT_EQ(formatter.minimum(), 0);
  EXPECT_EQ(formatter.maximum(), 99);
  EXPECT_EQ(formatter.defaultValue(), 0);
  expectChecks(formatter, {{"99", true}, {"100", false}, {"0", true}});
}

TEST(MyNumberFormatter, ItsRangeAndDefaultCanBeChanged) {
  MyNumberFormatter formatter;
  formatter.setMinimum(3);
  formatter.setMaximum(150);
  formatter.setDefaultValue(7);
  EXPECT_EQ(formatter.minimum(), 3);
  EXPECT_EQ(formatter.maximum(), 150);
  EXPECT_EQ(formatter.defaultValue(), 7);
  expectChecks(formatter, {{"2", false}, {"3", true}, {"150", true}, {"151", false}});
  EXPECT_FALSE(formatter.isPartialStringValid("").valid);
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(42)), "7");
}

TEST(MyNumberFormatter, AdmitsWholeNumbersOfItsRangeOnly) {
  MyNumberFormatter formatter(1, 12, 1);
  expectChecks(formatter, {{"1", true},
                           {"12", true},
                           {"13", false},
                           {"0", false},
                           {"1.5", false},
                           {"1.", false},
                           {".", false},
                           {"abc", false},
                           {"7x", false},
                           {"012", true}});
}

TEST(MyNumberFormatter, TakesNoPlusNoBlanksAndNoGroupingForANumber) {
  MyNumberFormatter formatter(0, 5000, 0);
  expectChecks(formatter, {{"+5", false},
                           {" 5", false},
                           {"5 ", false},
                           {"1,000", false},
                           {"1 000", false},
                           {"-", false},
                           {"--1", false},
                           {"0x5", false},
                           {"5e1", false},
                           {"\xEF\xBC\x95", false},  // a digit of full width
                           {"1000", true}});
}

TEST(MyNumberFormatter, LeavesNegativeNumbersToTheRange) {
  MyNumberFormatter formatter(-5, 5, 0);
  expectChecks(formatter, {{"-5", true}, {"-6", false}, {"-1", true}});
  formatter.setMinimum(0);
  expectChecks(formatter, {{"-1", false}});
}

TEST(MyNumberFormatter, HoldsEveryPrefixAgainstTheWholeRange) {
  MyNumberFormatter formatter(10, 99, 10);
  expectChecks(formatter, {{"1", false}, {"15", true}});
}

TEST(MyNumberFormatter, TakesNumbersBeyondThirtyTwoBitsAsTheLargestOne) {
  MyNumberFormatter formatter;
  expectChecks(formatter, {{"99999999999999999999", false}, {"4294967297", false}});
  formatter.setMaximum(std::numeric_limits<std::int32_t>::max());
  expectChecks(formatter, {{"99999999999999999999", true}});
}

TEST(MyNumberFormatter, ARangeTheWrongWayRoundAdmitsNothing) {
  MyNumberFormatter formatter(5, 1, 5);
  expectChecks(formatter, {{"1", false}, {"3", false}, {"5", false}});
}

TEST(MyNumberFormatter, TheEmptyTextIsTakenAsEmptyAndShowsTheDefaultUntilAnotherTextIsChecked) {
  MyNumberFormatter formatter(1, 12, 1);
  const PartialStringCheck check = formatter.isPartialStringValid("");
  EXPECT_FALSE(check.valid);
  EXPECT_EQ(check.newEditingString, "");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(7)), "1");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::string("text")), "1");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList()), "1");

  EXPECT_FALSE(formatter.isPartialStringValid("abc").valid);  // refused, but not empty
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(7)), "7");
}

TEST(MyNumberFormatter, ShowsNumbersByTheirWholePartAndNothingElse) {
  const MyNumberFormatter formatter;
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(42)), "42");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(-3)), "-3");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::real(3.99)), "3");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::real(-3.99)), "-3");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::boolean(true)), "1");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(500)), "500");  // the range is for typing
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::string("42")), std::nullopt);
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList()), std::nullopt);
}

TEST(MyNumberFormatter, ReadsTheLeadingIntegerOfATextAndNeverFails) {
  const MyNumberFormatter formatter;
  const struct {
    const char* text;
    std::int64_t value;
  } cases[] = {{"", 0},    {"7x", 7}, {"x7", 0},  {"  12", 12},
               {"-4", -4}, {"+4", 4}, {"3.9", 3}, {"99999999999", 2147483647}};
  for (const auto& read : cases) {
    EXPECT_EQ(formatter.objectValueForString(read.text).asInteger(), read.value) << read.text;
  }
}

TEST(MyNumberFormatter, TheValueOfAClearedTextIsTheNumberThatIsShown) {
  MyNumberFormatter formatter(1, 6, 2);
  EXPECT_EQ(formatter.objectValueForTypedText("5").asInteger(), 5);
  static_cast<void>(formatter.isPartialStringValid(""));
  EXPECT_EQ(formatter.objectValueForTypedText("").asInteger(), 2);
}

}  // namespace
}  // namespace corvane
