#include "platform/linux/LinuxTextComparison.h"

#include <algorithm>
#include <compare>
#include <cstdlib>
#include <memory>
#include <string>

#include <utf8proc.h>

namespace corvane {
namespace {

struct FreeDeleter {
  // utf8proc allocates what it returns.
  void operator()(utf8proc_uint8_t* text) const noexcept { std::free(text); }
};

/// The text in the form in which case and the spelling of accents do not count. Bytes that are not UTF-8
/// stand as they are.
std::string folded(std::string_view text) {
  utf8proc_uint8_t* raw = nullptr;
  const auto options = static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | UTF8PROC_DECOMPOSE);
  const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                   static_cast<utf8proc_ssize_t>(text.size()), &raw, options);
  const std::unique_ptr<utf8proc_uint8_t, FreeDeleter> owned(raw);
  if (length < 0) return std::string(text);
  return {reinterpret_cast<const char*>(raw), static_cast<std::size_t>(length)};
}

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text,
                             [](char character) { return static_cast<unsigned char>(character) < 0x80U; });
}

char foldedAscii(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

}  // namespace

int LinuxTextComparison::caseInsensitiveCompare(std::string_view left, std::string_view right) {
  if (!isAscii(left) || !isAscii(right)) return folded(left).compare(folded(right));
  // Most names: compared where they stand, since a list is sorted with many comparisons of each.
  const auto order = std::lexicographical_compare_three_way(
      left.begin(), left.end(), right.begin(), right.end(),
      [](char one, char other) { return foldedAscii(one) <=> foldedAscii(other); });
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace corvane
