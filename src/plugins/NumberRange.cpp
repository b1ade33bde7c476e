#include "plugins/NumberRange.h"

#include <algorithm>

#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {

std::optional<NumberRange> parseNumberRange(std::string_view text) {
  const auto pieces = split(text, ',');
  const auto limits = split(pieces.front(), '-');
  if (limits.size() != 2) return std::nullopt;
  return NumberRange{intValue(limits[0]), intValue(limits[1]), pieces.size() == 2 ? intValue(pieces[1]) : 1};
}

std::vector<std::int32_t> numbersInRange(const NumberRange& range) {
  const std::int64_t step = std::max(range.step, 1);
  std::vector<std::int32_t> numbers;
  // Counted in a wider type, so that the number behind the last one can't wrap.
  for (std::int64_t next = range.minimum; next <= range.maximum; next += step) {
    if (numbers.size() == kLongestNumberList) break;
    numbers.push_back(static_cast<std::int32_t>(next));
  }
  return numbers;
}

}  // namespace corvane
