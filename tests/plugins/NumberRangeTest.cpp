#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/NumberRange.h"

namespace corvane {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

struct RangeCase {
  std::string text;
  std::optional<NumberRange> range;
};

TEST(NumberRange, IsReadFromTwoNumbersAroundAHyphenAndAStepBehindAComma) {
  const std::vector<RangeCase> cases = {
      {"0-10,5", NumberRange{0, 10, 5}},
      {"1-10", NumberRange{1, 10, 1}},
      {"5-1", NumberRange{5, 1, 1}},
      {"1-10,2,3", NumberRange{1, 10, 1}},  // three pieces: the step falls back
      {" 3 - 4 , 2", NumberRange{3, 4, 2}},
      {"a-b", NumberRange{0, 0, 1}},
      {"-", NumberRange{0, 0, 1}},
      {"-5", NumberRange{0, 5, 1}},
      {"1-", NumberRange{1, 0, 1}},
      {"1-10,", NumberRange{1, 10, 0}},
      {"1-10,-2", NumberRange{1, 10, -2}},
      {"0-99999999999999999999", NumberRange{0, kLargest, 1}},
      {"10", std::nullopt},
      {"", std::nullopt},
      {",", std::nullopt},
      {"10,1-5", std::nullopt},
      {"-5-10", std::nullopt},  // a negative minimum can't be written
      {"1-5-10", std::nullopt},
      {"1--10", std::nullopt},
  };
  for (const RangeCase& one : cases) EXPECT_EQ(parseNumberRange(one.text), one.range) << one.text;
}

struct ListCase {
  NumberRange range;
  std::vector<std::int32_t> numbers;
};

TEST(NumberRange, ListsTheMinimumAndEveryStepUpToTheMaximum) {
  const std::vector<ListCase> cases = {
      {{0, 10, 5}, {0, 5, 10}},
      {{0, 11, 5}, {0, 5, 10}},
      {{1, 4, 1}, {1, 2, 3, 4}},
      {{7, 7, 3}, {7}},
      {{5, 1, 1}, {}},
      {{0, 3, 0}, {0, 1, 2, 3}},  // a step that leads nowhere counts as 1
      {{0, 3, -5}, {0, 1, 2, 3}},
      {{kLargest - 1, kLargest, 1}, {kLargest - 1, kLargest}},  // the next one would overflow
      {{0, kLargest, kLargest}, {0, kLargest}},
  };
  for (const ListCase& one : cases) {
    EXPECT_EQ(numbersInRange(one.range), one.numbers) << one.range.minimum << "-" << one.range.maximum;
  }
}

TEST(NumberRange, AListOfABoundlessRangeIsBounded) {
  const auto numbers = numbersInRange({0, 2'000'000'000, 1});
  ASSERT_EQ(numbers.size(), kLongestNumberList);
  EXPECT_EQ(numbers.front(), 0);
  EXPECT_EQ(numbers.back(), static_cast<std::int32_t>(kLongestNumberList) - 1);
}

TEST(NumberRange, TheBoundIsAboveEveryPortNumber) { EXPECT_EQ(numbersInRange({1, 65535, 1}).size(), 65535U); }

}  // namespace
}  // namespace corvane
