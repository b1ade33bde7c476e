#include "values/Base64.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t notInAlphabet = 0xFF;

[[nodiscard]] constexpr std::array<std::uint8_t, 128> decodingTable() {
  std::array<std::uint8_t, 128> table{};
  table.fill(notInAlphabet);
  for (std::size_t i = 0; i < alphabet.size(); ++i) {
    table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  table['='] = 0;
  return table;
}

[[nodiscard]] bool isBlank(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }

void appendGroup(std::string& text, const std::uint8_t* bytes, std::size_t count) {
  const unsigned first = bytes[0];
  const unsigned second = count > 1 ? bytes[1] : 0;
  const unsigned third = count > 2 ? bytes[2] : 0;
  const char group[] = {alphabet[first >> 2], alphabet[(first << 4 | second >> 4) & 63],
                        count > 1 ? alphabet[(second << 2 | third >> 6) & 63] : '=',
                        count > 2 ? alphabet[third & 63] : '='};
  text.append(group, sizeof group);
}

}  // namespace

std::optional<PropertyList::Bytes> dataFromBase64(std::string_view text) {
  static constexpr std::array<std::uint8_t, 128> table = decodingTable();
  PropertyList::Bytes bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t group = 0;
  unsigned inGroup = 0;
  unsigned padding = 0;  // how many = stand together here, blanks aside
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= table.size()) return std::nullopt;
    if (c == '=') {
      ++padding;
    } else if (!isBlank(c)) {
      padding = 0;
    }
    const std::uint8_t bits = table[static_cast<unsigned char>(c)];
    if (bits == notInAlphabet) continue;
    group = group << 6 | bits;
    if (++inGroup < 4) continue;
    inGroup = 0;
    bytes.push_back(static_cast<std::uint8_t>(group >> 16));
    if (padding < 2) bytes.push_back(static_cast<std::uint8_t>(group >> 8));
    if (padding < 1) bytes.push_back(static_cast<std::uint8_t>(group));
  }
  bytes.shrink_to_fit();
  return bytes;
}

void appendBase64Lines(std::string& text, const PropertyList::Bytes& bytes, std::size_t tabs) {
  constexpr std::size_t columns = 76;
  tabs = std::min<std::size_t>(tabs, 8);
  const std::size_t bytesPerLine = (columns - 8 * tabs) / 4 * 3;
  for (std::size_t line = 0; line < bytes.size(); line += bytesPerLine) {
    text.append(tabs, '\t');
    const std::size_t end = std::min(bytes.size(), line + bytesPerLine);
    for (std::size_t i = line; i < end; i += 3)
      appendGroup(text, bytes.data() + i, std::min<std::size_t>(3, end - i));
    text += '\n';
  }
}

}  // namespace corvane
