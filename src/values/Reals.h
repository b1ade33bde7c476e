// Reals and their decimal texts, the same under every locale. A Mac's library lacks the conversions of
// <charconv> for reals, or has them from one version of the system on; those of streams it has.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// The number nearest to the text: digits, at most one point among them, and an exponent or none. Nothing for
/// any other text, and for what is beyond a double's range or too small for it.
[[nodiscard]] std::optional<double> realFromDecimal(std::string_view text);

/// With this many significant digits at the most, as "%g" writes it.
[[nodiscard]] std::string decimalFromReal(double value, int significantDigits);
/// With as many digits as it takes to read the same number again.
[[nodiscard]] std::string shortestDecimalFromReal(double value);

}  // namespace corvane
