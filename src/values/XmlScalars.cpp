#include "values/XmlScalars.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "values/Encodings.h"
#include "values/Reals.h"

namespace corvane {

namespace {

/// Control characters count as blanks, as on a Mac.
[[nodiscard]] std::string_view withoutLeadingBlanks(std::string_view text) noexcept {
  const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; };
  text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, isBlank) - text.begin()));
  return text;
}

/// The character that stands for a reference's text between ampersand and semicolon.
[[nodiscard]] std::optional<char32_t> referencedCharacter(std::string_view name) noexcept {
  if (name == "lt") return U'<';
  if (name == "gt") return U'>';
  if (name == "amp") return U'&';
  if (name == "apos") return U'\'';
  if (name == "quot") return U'"';
  if (!name.starts_with('#')) return std::nullopt;
  name.remove_prefix(1);
  const bool hexadecimal = name.starts_with('x');
  if (hexadecimal) name.remove_prefix(1);
  std::uint32_t value = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), value, hexadecimal ? 16 : 10);
  if (error != std::errc() || end != name.data() + name.size()) return std::nullopt;
  return value;
}

struct NamedReal {
  std::string_view name;
  double value;
};

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr NamedReal namedReals[] = {
    {"nan", std::numeric_limits<double>::quiet_NaN()},
    {"+infinity", infinity},
    {"-infinity", -infinity},
    {"infinity", infinity},
    {"-inf", -infinity},
    {"inf", infinity},
    {"+inf", infinity},
};

[[nodiscard]] bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) noexcept {
  return std::ranges::equal(text, lowerCase, [](char c, char lower) {
    return c == lower || (c >= 'A' && c <= 'Z' && c - 'A' + 'a' == lower);
  });
}

}  // namespace

bool appendUnescaped(std::string& result, std::string_view text) {
  if (!isUtf8(text)) return false;
  while (true) {
    const std::size_t ampersand = text.find('&');
    result += text.substr(0, ampersand);
    if (ampersand == std::string_view::npos) return true;
    text.remove_prefix(ampersand + 1);
    constexpr std::size_t longestReference = 10;
    const std::size_t semicolon = text.substr(0, longestReference + 1).find(';');
    if (semicolon == std::string_view::npos) return false;
    const auto character = referencedCharacter(text.substr(0, semicolon));
    if (!character || !appendUtf8(result, *character)) return false;
    text.remove_prefix(semicolon + 1);
  }
}

PropertyList integerFromText(std::string_view text) {
  text = withoutLeadingBlanks(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text = withoutLeadingBlanks(text.substr(1));
  const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
  if (hexadecimal) text.remove_prefix(2);
  std::uint64_t magnitude = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, magnitude, hexadecimal ? 16 : 10);
  if (error != std::errc() || stop != end) return {};
  if (!negative) return PropertyList::unsignedInteger(magnitude);
  if (magnitude > std::uint64_t{1} << 63) return {};
  return PropertyList::integer(static_cast<std::int64_t>(~magnitude + 1));
}

PropertyList realFromText(std::string_view text) {
  for (const auto& [name, value] : namedReals) {
    if (equalsIgnoringCase(text, name)) return PropertyList::real(value);
  }
  text = withoutLeadingBlanks(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const auto value = realFromDecimal(text);
  if (!value) return {};
  return PropertyList::real(negative ? -*value : *value);
}

}  // namespace corvane
