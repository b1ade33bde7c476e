#include <clocale>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "configuration/StatusDate.h"

namespace corvane {
namespace {

struct Shown {
  double secondsSince1970;
  const char* text;
};
void PrintTo(const Shown& shown, std::ostream* stream) { *stream << shown.text; }

class StatusDateText : public ::testing::TestWithParam<Shown> {};

TEST_P(StatusDateText, IsALongDateAndAShortTimeInGmt) {
  EXPECT_EQ(statusDateText(PropertyList::date({GetParam().secondsSince1970})), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(HoursOfTheDay, StatusDateText,
                         ::testing::Values(Shown{1794757500, "November 15, 2026 at 3:45 PM"},
                                           Shown{1794700800, "November 15, 2026 at 12:00 AM"},
                                           Shown{1794704399, "November 15, 2026 at 12:59 AM"},
                                           Shown{1794743999, "November 15, 2026 at 11:59 AM"},
                                           Shown{1794744000, "November 15, 2026 at 12:00 PM"},
                                           Shown{1794744300, "November 15, 2026 at 12:05 PM"},
                                           Shown{1794748140, "November 15, 2026 at 1:09 PM"},
                                           Shown{1794787199, "November 15, 2026 at 11:59 PM"},
                                           Shown{1794787199.999, "November 15, 2026 at 11:59 PM"}));

INSTANTIATE_TEST_SUITE_P(DaysOfTheCalendar, StatusDateText,
                         ::testing::Values(Shown{0, "January 1, 1970 at 12:00 AM"},
                                           Shown{-60, "December 31, 1969 at 11:59 PM"},
                                           Shown{-0.5, "December 31, 1969 at 11:59 PM"},
                                           Shown{1709186820, "February 29, 2024 at 6:07 AM"},
                                           Shown{951868800, "March 1, 2000 at 12:00 AM"},
                                           Shown{1798761600, "January 1, 2027 at 12:00 AM"},
                                           Shown{-62135596800, "January 1, 1 at 12:00 AM"},
                                           Shown{253402300799, "December 31, 9999 at 11:59 PM"}));

TEST(StatusDateTextOfEveryMonth, NamesTheMonthInEnglish) {
  const char* const months[] = {"January", "February", "March",     "April",   "May",      "June",
                                "July",    "August",   "September", "October", "November", "December"};
  // The first days of the months of 2026, counted from 1 January 2026.
  const int firstDays[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  constexpr double kStartOf2026 = 1767225600;
  for (int month = 0; month < 12; ++month) {
    EXPECT_EQ(statusDateText(PropertyList::date({kStartOf2026 + firstDays[month] * 86400.0})),
              std::string(months[month]) + " 1, 2026 at 12:00 AM");
  }
}

TEST(StatusDateTextOfNoDate, IsNothing) {
  EXPECT_EQ(statusDateText({}), std::nullopt);
  EXPECT_EQ(statusDateText(PropertyList::string("2026-11-15T15:45:00Z")), std::nullopt);
  EXPECT_EQ(statusDateText(PropertyList::integer(1794757500)), std::nullopt);
  EXPECT_EQ(statusDateText(PropertyList::real(1794757500)), std::nullopt);
  EXPECT_EQ(statusDateText(Dictionary::make()), std::nullopt);
}

TEST(StatusDateTextOutsideTheYears1To9999, IsNothing) {
  for (const double seconds :
       {-62135596800.5, 253402300800.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(statusDateText(PropertyList::date({seconds})), std::nullopt) << seconds;
  }
}

/// A time zone and a language for the length of a test.
class Elsewhere {
 public:
  Elsewhere() {
    const char* zone = std::getenv("TZ");
    hadZone_ = zone != nullptr;
    if (hadZone_) zone_ = zone;
    ::setenv("TZ", "XYZ-13:30", 1);
    ::tzset();
    std::setlocale(LC_ALL, "C.UTF-8");
  }
  Elsewhere(const Elsewhere&) = delete;
  Elsewhere& operator=(const Elsewhere&) = delete;
  ~Elsewhere() {
    hadZone_ ? ::setenv("TZ", zone_.c_str(), 1) : ::unsetenv("TZ");
    ::tzset();
    std::setlocale(LC_ALL, "C");
  }

 private:
  bool hadZone_ = false;
  std::string zone_;
};

TEST(StatusDateTextOnAComputerInAnotherZone, IsTheSame) {
  const Elsewhere elsewhere;
  const std::time_t midnight = 1794700800;
  ASSERT_EQ(std::localtime(&midnight)->tm_hour, 13) << "the zone is not in force";
  EXPECT_EQ(statusDateText(PropertyList::date({1794700800})), "November 15, 2026 at 12:00 AM");
}

}  // namespace
}  // namespace corvane
