#include "values/Reals.h"

#include <cmath>
#include <ios>
#include <iterator>
#include <limits>
#include <locale>

namespace corvane {
namespace {

// The facets that convert within memory, which no locale holds.
struct Reader : std::num_get<char, const char*> {};
struct Writer : std::num_put<char, std::back_insert_iterator<std::string>> {};

/// What the facets are told: no decimal comma, no thousands.
class PlainFormat {
 public:
  PlainFormat() { format_.imbue(std::locale::classic()); }
  [[nodiscard]] std::ios& get() { return format_; }

 private:
  std::ios format_{nullptr};
};

[[nodiscard]] bool hasNonZeroDigit(std::string_view text) {
  return text.substr(0, text.find_first_of("eE")).find_first_of("123456789") != std::string_view::npos;
}

}  // namespace

std::optional<double> realFromDecimal(std::string_view text) {
  // Some libraries take other bases and names here, too.
  if (text.empty() || text.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
    return std::nullopt;
  if (text.front() == '+' || text.front() == '-') return std::nullopt;
  PlainFormat format;
  std::ios::iostate state = std::ios::goodbit;
  double value = 0;
  const char* const end = text.data() + text.size();
  if (Reader().get(text.data(), end, format.get(), state, value) != end) return std::nullopt;
  // That a number lost digits on its way to the smallest ones is no failure, whatever the library says of it.
  const bool isTiny = value > 0 && value < std::numeric_limits<double>::min();
  if ((state & std::ios::failbit) != 0 && !isTiny) return std::nullopt;
  if (std::isinf(value) || (value == 0 && hasNonZeroDigit(text))) return std::nullopt;
  return value;
}

std::string decimalFromReal(double value, int significantDigits) {
  PlainFormat format;
  format.get().precision(significantDigits);
  std::string text;
  Writer().put(std::back_inserter(text), format.get(), ' ', value);
  return text;
}

std::string shortestDecimalFromReal(double value) {
  std::string text;
  for (int digits = std::numeric_limits<double>::digits10;
       digits <= std::numeric_limits<double>::max_digits10; ++digits) {
    text = decimalFromReal(value, digits);
    if (realFromDecimal(value < 0 ? std::string_view(text).substr(1) : text) == std::abs(value)) break;
  }
  return text;
}

}  // namespace corvane
