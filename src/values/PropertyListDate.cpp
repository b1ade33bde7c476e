#include "values/PropertyListDate.h"

#include <chrono>
#include <cmath>

namespace corvane {

namespace {

constexpr double secondsPerDay = 86400;

[[nodiscard]] constexpr double startOfYear(int year) {
  using namespace std::chrono;
  return static_cast<double>(sys_days(std::chrono::year(year) / January / 1).time_since_epoch().count()) *
         secondsPerDay;
}

[[nodiscard]] bool isInRange(double secondsSince1970) noexcept {
  static constexpr double first = startOfYear(1);
  static constexpr double end = startOfYear(10000);
  return secondsSince1970 >= first && secondsSince1970 < end;  // false for what is not a number
}

/// Takes digits off the front of a text; `failed` once something else stood there.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  [[nodiscard]] int number(std::size_t fewestDigits, std::size_t mostDigits) {
    int value = 0;
    std::size_t count = 0;
    for (; count < mostDigits && count < rest_.size() && rest_[count] >= '0' && rest_[count] <= '9';
         ++count) {
      value = value * 10 + (rest_[count] - '0');
    }
    if (count < fewestDigits) failed_ = true;
    rest_.remove_prefix(count);
    return value;
  }
  void expect(char separator) {
    if (!rest_.starts_with(separator)) {
      failed_ = true;
      return;
    }
    rest_.remove_prefix(1);
  }
  [[nodiscard]] bool failed() const { return failed_; }
  [[nodiscard]] bool atEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  bool failed_ = false;
};

}  // namespace

std::optional<CalendarDate> calendarDate(Date date) noexcept {
  if (!isInRange(date.secondsSince1970)) return std::nullopt;
  using namespace std::chrono;
  const sys_seconds time{seconds(static_cast<std::int64_t>(std::floor(date.secondsSince1970)))};
  const auto day = floor<days>(time);
  const year_month_day ymd(day);
  const hh_mm_ss clock(time - day);
  return CalendarDate{static_cast<int>(ymd.year()),
                      static_cast<unsigned>(ymd.month()),
                      static_cast<unsigned>(ymd.day()),
                      static_cast<unsigned>(clock.hours().count()),
                      static_cast<unsigned>(clock.minutes().count()),
                      static_cast<unsigned>(clock.seconds().count())};
}

std::optional<Date> dateFromText(std::string_view text) noexcept {
  Scanner scanner(text);
  const int year = scanner.number(1, 4);
  scanner.expect('-');
  const int month = scanner.number(2, 2);
  scanner.expect('-');
  const int day = scanner.number(2, 2);
  scanner.expect('T');
  const int hour = scanner.number(2, 2);
  scanner.expect(':');
  const int minute = scanner.number(2, 2);
  scanner.expect(':');
  const int second = scanner.number(2, 2);
  scanner.expect('Z');
  if (scanner.failed() || !scanner.atEnd() || month < 1 || month > 12) return std::nullopt;
  using namespace std::chrono;
  const auto firstOfMonth = sys_days(std::chrono::year(year) / month / 1);
  const auto time = firstOfMonth + days(day - 1) + hours(hour) + minutes(minute) + seconds(second);
  const Date date{static_cast<double>(sys_seconds(time).time_since_epoch().count())};
  return isInRange(date.secondsSince1970) ? std::optional(date) : std::nullopt;
}

}  // namespace corvane
