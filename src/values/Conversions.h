// The platform's conversions between values, texts and numbers, in the one place where they are defined. They
// never fail: what cannot be converted is 0 or false.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// The leading integer of a text: blanks skipped, an optional sign, digits up to the first other character,
/// saturated to 32 bits; 0 without digits.
[[nodiscard]] std::int32_t intValue(std::string_view text) noexcept;
/// A string converts as its text. An integer gives its low 32 bits (a large media size may so read as
/// negative), a real is cut toward zero and saturated, a boolean is 0 or 1; anything else is 0.
[[nodiscard]] std::int32_t intValue(const PropertyList& value) noexcept;

/// True when the text, after leading blanks, an optional sign and leading zeros, begins with one of Y, y, T,
/// t or 1 to 9.
[[nodiscard]] bool boolValue(std::string_view text) noexcept;
/// A string converts as its text; numbers are true unless zero; anything else is false.
[[nodiscard]] bool boolValue(const PropertyList& value) noexcept;

/// Whether the value is a number: integer, real or boolean.
[[nodiscard]] bool isNumber(const PropertyList& value) noexcept;

/// The text that stands for a value in a log line: a string as it is, a number in decimals, containers in the
/// platform's brace form, "(null)" for nothing. Bounded in length (containers are cut after a few hundred
/// characters).
[[nodiscard]] std::string description(const PropertyList& value);

}  // namespace corvane
