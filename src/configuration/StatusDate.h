// Dates as the Configuration tab shows them: always English and in Greenwich Mean Time, whatever the language
// and the time zone of the computer, so that a report to the support desk means the same everywhere.
#pragma once

#include <optional>
#include <string>

#include "values/PropertyList.h"

namespace corvane {

/// Like "November 15, 2026 at 3:45 PM": long date, short time, seconds dropped toward the past, ordinary
/// blanks. Nothing for what is not a date or lies outside the years 1 to 9999.
[[nodiscard]] std::optional<std::string> statusDateText(const PropertyList& value);

}  // namespace corvane
