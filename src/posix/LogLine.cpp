#include "posix/LogLine.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "values/Encodings.h"

namespace corvane {
namespace {

/// The number of bytes of the character that the text begins with; 0 when it does not begin with a
/// well-formed one.
std::size_t lengthOfFirstCharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  return length <= text.size() && isUtf8(text.substr(0, length)) ? length : 0;
}

std::uint32_t codePoint(std::string_view character) {
  auto value = static_cast<std::uint32_t>(static_cast<unsigned char>(character.front()));
  if (character.size() == 1) return value;
  value &= 0x7FU >> character.size();
  for (const char next : character.substr(1))
    value = value << 6U | (static_cast<unsigned char>(next) & 0x3FU);
  return value;
}

bool couldForge(std::uint32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) ||  // control characters
         (character >= 0x200E && character <= 0x200F) ||                 // direction marks
         (character >= 0x2028 && character <= 0x202E) ||  // separators, embeddings and overrides
         (character >= 0x2066 && character <= 0x2069);    // isolates
}

std::string writtenOut(const char* format, unsigned value) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), format, value);
  return text.data();
}

}  // namespace

std::string escapedLogLine(std::string_view line, std::size_t longest) {
  std::string escaped;
  while (!line.empty()) {
    const std::size_t length = lengthOfFirstCharacter(line);
    std::string piece;
    if (length == 0) {
      piece = writtenOut("\\x%02X", static_cast<unsigned char>(line.front()));
    } else if (const std::uint32_t character = codePoint(line.substr(0, length)); couldForge(character)) {
      piece = writtenOut("\\u{%02X}", character);
    } else {
      piece = line.substr(0, length);
    }
    if (escaped.size() + piece.size() > longest) break;
    escaped += piece;
    line.remove_prefix(length == 0 ? 1 : length);
  }
  return escaped;
}

}  // namespace corvane
