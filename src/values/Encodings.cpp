#include "values/Encodings.h"

#include <cstdint>
#include <cstring>

namespace corvane {

namespace {

[[nodiscard]] std::uint8_t byteAt(std::string_view bytes, std::size_t index) noexcept {
  return static_cast<std::uint8_t>(bytes[index]);
}

[[nodiscard]] char32_t utf16Unit(std::string_view bytes, std::size_t at, ByteOrder order) noexcept {
  const char32_t first = byteAt(bytes, at);
  const char32_t second = byteAt(bytes, at + 1);
  return order == ByteOrder::BigEndian ? (first << 8 | second) : (second << 8 | first);
}

[[nodiscard]] bool isHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit < 0xDC00; }
[[nodiscard]] bool isLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit < 0xE000; }

/// How many bytes a unit of UTF-16 takes in UTF-8; the halves of a pair two each.
[[nodiscard]] std::size_t utf8Length(char32_t unit) noexcept {
  if (unit < 0x80) return 1;
  return unit < 0x800 || isHighSurrogate(unit) || isLowSurrogate(unit) ? 2 : 3;
}

/// How many of the bytes at the front are ASCII, in steps of eight.
[[nodiscard]] std::size_t asciiPrefix(std::string_view bytes) noexcept {
  constexpr std::uint64_t highBits = 0x8080808080808080U;
  std::size_t at = 0;
  for (; bytes.size() - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t)) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes.data() + at, sizeof eight);
    if ((eight & highBits) != 0) break;
  }
  return at;
}

/// The length of the multi-byte character at the front, or 0 when it is not valid.
[[nodiscard]] std::size_t multiByteLength(std::string_view bytes) noexcept {
  const std::uint8_t lead = byteAt(bytes, 0);
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byteAt(bytes, i) & 0xC0) != 0x80) return 0;
  }
  const std::uint8_t second = byteAt(bytes, 1);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool surrogate = lead == 0xED && second >= 0xA0;
  const bool beyondUnicode = lead == 0xF4 && second >= 0x90;
  return overlong || surrogate || beyondUnicode ? 0 : length;
}

}  // namespace

bool appendUtf8(std::string& text, char32_t codePoint) {
  const auto byte = [](char32_t bits) { return static_cast<char>(static_cast<std::uint8_t>(bits)); };
  const auto continuation = [byte, codePoint](unsigned shift) {
    return byte(0x80 | (codePoint >> shift & 0x3F));
  };
  if (codePoint < 0x80) {
    text += byte(codePoint);
  } else if (codePoint < 0x800) {
    text += {byte(0xC0 | codePoint >> 6), continuation(0)};
  } else if (codePoint < 0x10000) {
    if (isHighSurrogate(codePoint) || isLowSurrogate(codePoint)) return false;
    text += {byte(0xE0 | codePoint >> 12), continuation(6), continuation(0)};
  } else if (codePoint < 0x110000) {
    text += {byte(0xF0 | codePoint >> 18), continuation(12), continuation(6), continuation(0)};
  } else {
    return false;
  }
  return true;
}

bool isUtf8(std::string_view bytes) noexcept {
  while (true) {
    bytes.remove_prefix(asciiPrefix(bytes));
    while (!bytes.empty() && byteAt(bytes, 0) < 0x80) bytes.remove_prefix(1);
    if (bytes.empty()) return true;
    const std::size_t length = multiByteLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
}

std::optional<std::string> utf8FromUtf16(std::string_view bytes, ByteOrder order) {
  if (bytes.size() % 2 != 0) return std::nullopt;
  std::string text;
  std::size_t length = 0;
  for (std::size_t at = 0; at < bytes.size(); at += 2) length += utf8Length(utf16Unit(bytes, at, order));
  text.reserve(length);
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    char32_t codePoint = utf16Unit(bytes, at, order);
    if (isHighSurrogate(codePoint) && at + 2 < bytes.size()) {
      const char32_t low = utf16Unit(bytes, at + 2, order);
      if (isLowSurrogate(low)) {
        codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    if (!appendUtf8(text, codePoint)) return std::nullopt;
  }
  return text;
}

std::optional<std::string> utf8FromUtf32(std::string_view bytes, ByteOrder order) {
  if (bytes.size() % 4 != 0) return std::nullopt;
  std::string text;
  text.reserve(bytes.size());  // the longest form of a character is as long
  for (std::size_t at = 0; at < bytes.size(); at += 4) {
    const char32_t first = utf16Unit(bytes, at, order);
    const char32_t second = utf16Unit(bytes, at + 2, order);
    const bool bigEndian = order == ByteOrder::BigEndian;
    if (!appendUtf8(text, bigEndian ? first << 16 | second : second << 16 | first)) return std::nullopt;
  }
  return text;
}

std::string utf8FromLatin1(std::string_view bytes) {
  std::string text;
  std::size_t length = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) length += byteAt(bytes, at) < 0x80 ? 1 : 2;
  text.reserve(length);
  if (length == bytes.size()) return text.assign(bytes);
  for (std::size_t at = 0; at < bytes.size(); ++at) (void)appendUtf8(text, byteAt(bytes, at));
  return text;
}

}  // namespace corvane
