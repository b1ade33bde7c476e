// The text form of dates in XML property lists, and the range that every reader and the writer hold dates to.
#pragma once

#include <optional>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// A date taken apart, proleptic Gregorian, GMT.
struct CalendarDate {
  int year = 1;
  unsigned month = 1;
  unsigned day = 1;
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
};

/// Fractions of a second are dropped, toward the past. Nothing outside the years 1 to 9999.
[[nodiscard]] std::optional<CalendarDate> calendarDate(Date date) noexcept;

/// The date that a text like 2024-02-29T23:59:59Z stands for; nothing when it is not of that form or not in
/// the years 1 to 9999. A day past the end of its month, or a time past the end of its day, runs on into the
/// next, as on a Mac.
[[nodiscard]] std::optional<Date> dateFromText(std::string_view text) noexcept;

}  // namespace corvane
