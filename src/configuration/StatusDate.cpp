#include "configuration/StatusDate.h"

#include <array>
#include <string_view>

#include "values/PropertyListDate.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};

std::string longDate(const CalendarDate& date) {
  return formatText("%@ %@, %@",
                    {kMonths.at(date.month - 1), std::to_string(date.day), std::to_string(date.year)});
}

std::string shortTime(const CalendarDate& date) {
  const unsigned hour = date.hour % 12 == 0 ? 12 : date.hour % 12;
  return formatText("%@:%@%@ %@", {std::to_string(hour), date.minute < 10 ? "0" : "",
                                   std::to_string(date.minute), date.hour < 12 ? "AM" : "PM"});
}

}  // namespace

std::optional<std::string> statusDateText(const PropertyList& value) {
  const auto date = value.asDate();
  if (!date) return std::nullopt;
  const auto calendar = calendarDate(*date);
  if (!calendar) return std::nullopt;
  return formatText("%@ at %@", {longDate(*calendar), shortTime(*calendar)});
}

}  // namespace corvane
