#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "values/Reals.h"

namespace corvane {
namespace {

using Limits = std::numeric_limits<double>;

TEST(Reals, ATextIsTheNumberNearestToIt) {
  const struct {
    std::string text;
    double value;
  } cases[] = {
      {"0", 0},
      {"0e999", 0},
      {"000", 0},
      {"1.5", 1.5},
      {".5", 0.5},
      {"5.", 5},
      {"1e3", 1000},
      {"1E-3", 0.001},
      {"9007199254740993", 9007199254740992.0},  // half way between two: the even one
      {"9007199254740993.00000000000000001", 9007199254740994.0},
      {"1.7976931348623157e+308", Limits::max()},
      {"2.2250738585072014e-308", Limits::min()},
      {"2.225073858507201e-308", std::nextafter(Limits::min(), 0.0)},
      {"4.9406564584124654e-324", Limits::denorm_min()},
      {"5e-324", Limits::denorm_min()},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(realFromDecimal(text), value) << text;
}

TEST(Reals, AnyOtherTextIsNoNumber) {
  for (const char* text :
       {"",    " 1",  "1 ",   "+1",    "-1",  "e5",  "1e", "1e+",   ".",      "1.5.2",
        "1,5", "1+1", "0x10", "0x1p3", "inf", "nan", "1f", "1e999", "1e-999", "0.0001e-999"}) {
    EXPECT_EQ(realFromDecimal(text), std::nullopt) << text;
  }
}

TEST(Reals, TheShortestTextReadsAsTheSameNumber) {
  const struct {
    double value;
    std::string text;
  } cases[] = {{0, "0"},
               {1.5, "1.5"},
               {-1.5, "-1.5"},
               {0.1, "0.1"},
               {0.1 + 0.2, "0.30000000000000004"},
               {100000, "100000"},
               {1e300, "1e+300"},
               {-Limits::max(), "-1.7976931348623157e+308"},
               {Limits::infinity(), "inf"},
               {Limits::quiet_NaN(), "nan"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(shortestDecimalFromReal(value), text);
}

}  // namespace
}  // namespace corvane
