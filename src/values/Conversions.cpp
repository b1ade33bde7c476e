#include "values/Conversions.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace corvane {

namespace {

[[nodiscard]] bool isBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }
[[nodiscard]] bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// What follows the leading blanks and one sign, and whether the sign is a minus.
struct Unsigned {
  std::string_view rest;
  bool negative = false;
};

[[nodiscard]] Unsigned withoutBlanksAndSign(std::string_view text) noexcept {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return {text, negative};
}

[[nodiscard]] std::int32_t saturated(double value) noexcept {
  using Limits = std::numeric_limits<std::int32_t>;
  if (std::isnan(value)) return 0;
  if (value <= Limits::min()) return Limits::min();
  if (value >= Limits::max()) return Limits::max();
  return static_cast<std::int32_t>(value);
}

/// Every integer as its 64 bits.
[[nodiscard]] std::uint64_t bits(const PropertyList& integer) noexcept {
  if (const auto value = integer.asInteger()) return static_cast<std::uint64_t>(*value);
  return integer.asUnsignedInteger().value_or(0);
}

}  // namespace

std::int32_t intValue(std::string_view text) noexcept {
  const auto [rest, negative] = withoutBlanksAndSign(text);
  constexpr std::int64_t limit = std::int64_t{1} << 31;
  std::int64_t magnitude = 0;
  for (const char c : rest) {
    if (!isDigit(c)) break;
    magnitude = std::min(limit, magnitude * 10 + (c - '0'));
  }
  if (negative) return static_cast<std::int32_t>(-magnitude);
  return static_cast<std::int32_t>(std::min(magnitude, limit - 1));
}

std::int32_t intValue(const PropertyList& value) noexcept {
  switch (value.kind()) {
    case PropertyList::Kind::String:
      return intValue(*value.asString());
    case PropertyList::Kind::Integer:
      return static_cast<std::int32_t>(static_cast<std::uint32_t>(bits(value)));
    case PropertyList::Kind::Real:
      return saturated(*value.asReal());
    case PropertyList::Kind::Boolean:
      return *value.asBoolean() ? 1 : 0;
    default:
      return 0;
  }
}

bool boolValue(std::string_view text) noexcept {
  std::string_view rest = withoutBlanksAndSign(text).rest;
  while (rest.starts_with('0')) rest.remove_prefix(1);
  constexpr std::string_view affirmative = "YyTt123456789";
  return !rest.empty() && affirmative.find(rest.front()) != std::string_view::npos;
}

bool boolValue(const PropertyList& value) noexcept {
  switch (value.kind()) {
    case PropertyList::Kind::String:
      return boolValue(*value.asString());
    case PropertyList::Kind::Integer:
      return bits(value) != 0;
    case PropertyList::Kind::Real:
      return *value.asReal() != 0;
    case PropertyList::Kind::Boolean:
      return *value.asBoolean();
    default:
      return false;
  }
}

bool isNumber(const PropertyList& value) noexcept {
  switch (value.kind()) {
    case PropertyList::Kind::Integer:
    case PropertyList::Kind::Real:
    case PropertyList::Kind::Boolean:
      return true;
    default:
      return false;
  }
}

}  // namespace corvane
