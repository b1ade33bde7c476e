// The range of a number option, as its "Value" tells it: "min-max" or "min-max,step".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

struct NumberRange {
  std::int32_t minimum = 0;  // inclusive; never below 0, since the format has no way to write a minus
  std::int32_t maximum = 0;  // inclusive; may lie below the minimum, which makes an empty range
  std::int32_t step = 1;
  friend bool operator==(const NumberRange&, const NumberRange&) = default;
};

/// The most numbers that a list offers. More than every port number, few enough to make a cell at once; a
/// larger range can still be typed up to its maximum.
inline constexpr std::size_t kLongestNumberList = 100'000;

/// Nothing unless the part before the first comma has exactly two pieces around "-". The step is 1 unless
/// there is exactly one comma. Pieces that are no numbers count as 0.
[[nodiscard]] std::optional<NumberRange> parseNumberRange(std::string_view text);

/// minimum, minimum + step, … while not above the maximum, at most `kLongestNumberList`. A step below 1 would
/// never get to the end and counts as 1.
[[nodiscard]] std::vector<std::int32_t> numbersInRange(const NumberRange& range);

}  // namespace corvane
