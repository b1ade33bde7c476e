#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "values/Conversions.h"

namespace corvane {
namespace {

TEST(Conversions, TheIntegerOfATextIsItsLeadingNumberSaturatedToThirtyTwoBits) {
  const struct {
    std::string_view text;
    std::int32_t value;
  } cases[] = {
      {"", 0},
      {"   ", 0},
      {"abc", 0},
      {"x5", 0},
      {"5", 5},
      {"007", 7},
      {" \t\n\r5", 5},
      {"+5", 5},
      {"-5", -5},
      {"--5", 0},
      {"+-5", 0},
      {"- 5", 0},
      {"5 6", 5},
      {"12abc", 12},
      {"1.9", 1},
      {"0x10", 0},
      {"2147483647", 2147483647},
      {"2147483648", 2147483647},
      {"-2147483648", std::numeric_limits<std::int32_t>::min()},
      {"-2147483649", std::numeric_limits<std::int32_t>::min()},
      {"99999999999999999999999999999", 2147483647},
      {"-99999999999999999999999999999", std::numeric_limits<std::int32_t>::min()},
      {"\xC2\xA0"
       "5",
       0},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(intValue(text), value) << '"' << text << '"';
}

TEST(Conversions, TheIntegerOfAValueFollowsItsKind) {
  EXPECT_EQ(intValue(PropertyList::string(" 42 apples")), 42);
  EXPECT_EQ(intValue(PropertyList::integer(-7)), -7);
  EXPECT_EQ(intValue(PropertyList::boolean(true)), 1);
  EXPECT_EQ(intValue(PropertyList::boolean(false)), 0);
  EXPECT_EQ(intValue(PropertyList::real(2.99)), 2);
  EXPECT_EQ(intValue(PropertyList::real(-2.99)), -2);
  EXPECT_EQ(intValue(PropertyList::real(1e300)), 2147483647);
  EXPECT_EQ(intValue(PropertyList::real(-1e300)), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(intValue(PropertyList::real(std::nan(""))), 0);
  for (const auto& value :
       {PropertyList(), PropertyList::date({5}), PropertyList::data({1, 2}),
        PropertyList(Array::make({PropertyList::integer(1)})), PropertyList(Dictionary::make())}) {
    EXPECT_EQ(intValue(value), 0);
  }
}

TEST(Conversions, AnIntegerGivesItsLowThirtyTwoBitsSoThatALargeSizeCanReadAsNegative) {
  EXPECT_EQ(intValue(PropertyList::integer(0x80000000LL)), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(intValue(PropertyList::integer(0x1'0000'0005LL)), 5);
  EXPECT_EQ(intValue(PropertyList::integer(500'107'862'016LL)), 1'891'655'680);
  EXPECT_EQ(intValue(PropertyList::unsignedInteger(0xFFFF'FFFF'FFFF'FFFFULL)), -1);
}

TEST(Conversions, ATextIsTrueWhenItBeginsAffirmativelyAfterBlanksSignAndZeros) {
  for (const auto* text :
       {"Y", "yes", "t", "True", "1", "9", "  1", "+1", "-1", "0001", "-00y", "\t Yes", "2no"}) {
    EXPECT_TRUE(boolValue(std::string_view(text))) << '"' << text << '"';
  }
  for (const auto* text : {"", "0", "000", "no", "false", "on", "x1", "--1", "- 1", "0 1", "+", "   "}) {
    EXPECT_FALSE(boolValue(std::string_view(text))) << '"' << text << '"';
  }
}

TEST(Conversions, NumbersAreTrueUnlessZeroAndContainersAreFalse) {
  EXPECT_TRUE(boolValue(PropertyList::string("YES")));
  EXPECT_FALSE(boolValue(PropertyList::string("NO")));
  EXPECT_TRUE(boolValue(PropertyList::integer(-1)));
  EXPECT_TRUE(boolValue(PropertyList::integer(0x1'0000'0000LL))) << "no 32-bit cut here";
  EXPECT_TRUE(boolValue(PropertyList::unsignedInteger(0x8000'0000'0000'0000ULL)));
  EXPECT_FALSE(boolValue(PropertyList::integer(0)));
  EXPECT_TRUE(boolValue(PropertyList::real(0.25)));
  EXPECT_FALSE(boolValue(PropertyList::real(-0.0)));
  EXPECT_TRUE(boolValue(PropertyList::boolean(true)));
  EXPECT_FALSE(boolValue(PropertyList::boolean(false)));
  for (const auto& value :
       {PropertyList(), PropertyList::date({5}), PropertyList::data({1}),
        PropertyList(Array::make({PropertyList::integer(1)})), PropertyList(Dictionary::make())}) {
    EXPECT_FALSE(boolValue(value));
  }
}

TEST(Conversions, IntegersRealsAndBooleansAreNumbers) {
  EXPECT_TRUE(isNumber(PropertyList::integer(0)));
  EXPECT_TRUE(isNumber(PropertyList::real(0)));
  EXPECT_TRUE(isNumber(PropertyList::boolean(false)));
  EXPECT_FALSE(isNumber(PropertyList::string("1")));
  EXPECT_FALSE(isNumber(PropertyList()));
  EXPECT_FALSE(isNumber(PropertyList::date({0})));
}

TEST(Conversions, ScalarsAreDescribedPlainly) {
  EXPECT_EQ(description(PropertyList()), "(null)");
  EXPECT_EQ(description(PropertyList::string("two words")), "two words");
  EXPECT_EQ(description(PropertyList::integer(-12)), "-12");
  EXPECT_EQ(description(PropertyList::unsignedInteger(18446744073709551615ULL)), "18446744073709551615");
  EXPECT_EQ(description(PropertyList::real(1.5)), "1.5");
  EXPECT_EQ(description(PropertyList::boolean(true)), "1");
  EXPECT_EQ(description(PropertyList::boolean(false)), "0");
  EXPECT_EQ(description(PropertyList::date({0})), "1970-01-01 00:00:00 +0000");
  EXPECT_EQ(description(PropertyList::data({0x00, 0xAB, 0x10})), "<00ab10>");
}

TEST(Conversions, ContainersAreDescribedInBraceForm) {
  EXPECT_EQ(description(Dictionary::make()), "{\n}");
  EXPECT_EQ(description(Array::make()), "(\n)");
  const auto value =
      Dictionary::make({{"b key", PropertyList::integer(1)},
                        {"a", Array::make({PropertyList::string("x"), PropertyList::string("y \"z\"")})}});
  EXPECT_EQ(description(value),
            "{\n"
            "    a =     (\n"
            "        x,\n"
            "        \"y \\\"z\\\"\"\n"
            "    );\n"
            "    \"b key\" = 1;\n"
            "}");
}

TEST(Conversions, TheDescriptionOfALargeDeepOrCyclicContainerIsCut) {
  auto wide = Array::make();
  for (int i = 0; i < 10'000; ++i) wide.append(PropertyList::integer(i));
  auto cyclic = Array::make();
  cyclic.append(cyclic);
  auto deep = Array::make();
  for (int i = 0; i < 100'000; ++i) deep = Array::make({deep});
  const auto longText = Array::make({PropertyList::string(std::string(1'000'000, 'x'))});
  for (const auto& value : {wide, cyclic, deep, longText}) {
    const std::string text = description(value);
    EXPECT_LE(text.size(), 500u);
    EXPECT_TRUE(text.ends_with("..."));
  }
  cyclic.replaceAll({});
}

}  // namespace
}  // namespace corvane
