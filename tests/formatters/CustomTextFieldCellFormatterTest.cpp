#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "formatters/CustomTextFieldCellFormatter.h"

namespace corvane {
namespace {

const std::string kBeyondTheBasicPlane = "\xF0\x9F\x94\x92";  // one character, two code units

TEST(CustomTextFieldCellFormatter, AdmitsTextsUpToItsMaximumInUtf16CodeUnits) {
  const struct {
    std::int32_t maximum;
    std::string text;
    bool admitted;
  } cases[] = {
      {5, "abcde", true},
      {5, "abcdef", false},
      {5, "", true},
      {5, "äöüßé", true},  // two bytes each
      {2, kBeyondTheBasicPlane, true},
      {1, kBeyondTheBasicPlane, false},
      {3, kBeyondTheBasicPlane + kBeyondTheBasicPlane, false},
      {0, "", true},
      {0, "a", false},
      {-1, std::string(1000, 'a'), true},
      {INT32_MIN, "a", true},
  };
  for (const auto& typed : cases) {
    CustomTextFieldCellFormatter formatter;
    formatter.setMaximumLength(typed.maximum);
    const PartialStringCheck check = formatter.isPartialStringValid(typed.text);
    EXPECT_EQ(check.valid, typed.admitted) << typed.maximum << " " << typed.text;
    EXPECT_FALSE(check.newEditingString);
  }
}

TEST(CustomTextFieldCellFormatter, StartsWithAMaximumOfAHundred) {
  CustomTextFieldCellFormatter formatter;
  EXPECT_EQ(formatter.maximumLength(), 100);
  EXPECT_TRUE(formatter.isPartialStringValid(std::string(100, 'a')).valid);
  EXPECT_FALSE(formatter.isPartialStringValid(std::string(101, 'a')).valid);
}

TEST(CustomTextFieldCellFormatter, ShowsAndReadsStringsAsTheyAre) {
  const CustomTextFieldCellFormatter formatter;
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::string(" a\nb ")), " a\nb ");
  EXPECT_EQ(formatter.objectValueForString("7x"), PropertyList::string("7x"));
  EXPECT_EQ(formatter.objectValueForString(""), PropertyList::string(""));
}

TEST(CustomTextFieldCellFormatter, LeavesTheStyleOfATextToItsCell) {
  EXPECT_FALSE(CustomTextFieldCellFormatter::attributedStringForObjectValueWithDefaultAttributes(
      PropertyList::string("text"), {Font{}, TextColor::Red, TextAlignment::Center, true}));
}

TEST(CustomTextFieldCellFormatter, ShowsAnyValueAsItIsAndNothingForNothing) {
  const CustomTextFieldCellFormatter formatter;
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList()), std::nullopt);
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::integer(7)), "7");
  EXPECT_EQ(formatter.stringForObjectValue(PropertyList::boolean(true)), "1");
}

}  // namespace
}  // namespace corvane
