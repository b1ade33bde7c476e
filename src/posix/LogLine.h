// What may stand in one line of a log.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

inline constexpr std::size_t kLongestLogLine = 4096;  // bytes

/// The line with everything that could end it, hide part of it or start another one written out: control
/// characters (of both sets), line and paragraph separators and marks that change the direction of writing as
/// "\u{2028}", bytes that are not UTF-8 as "\xFF". Cut after `longest` bytes.
[[nodiscard]] std::string escapedLogLine(std::string_view line, std::size_t longest = kLongestLogLine);

}  // namespace corvane
