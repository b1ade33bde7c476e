// Binary property-list files made by hand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::test {

inline std::string bigEndian(std::uint64_t value, std::size_t size) {
  std::string bytes;
  for (std::size_t i = size; i-- > 0;) bytes += static_cast<char>(i < 8 ? value >> 8 * i & 0xFF : 0);
  return bytes;
}

/// A file of these objects, of which the first is the root.
struct BinaryFile {
  std::vector<std::string> objects;
  std::size_t offsetSize = 1;
  std::size_t referenceSize = 1;
  std::uint64_t top = 0;
  std::string signature = "bplist00";

  [[nodiscard]] std::string bytes() const {
    std::string result = signature;
    std::vector<std::size_t> offsets;
    for (const auto& object : objects) {
      offsets.push_back(result.size());
      result += object;
    }
    const std::size_t table = result.size();
    for (const std::size_t offset : offsets) result += bigEndian(offset, offsetSize);
    return result + std::string(6, '\0') + bigEndian(offsetSize, 1) + bigEndian(referenceSize, 1) +
           bigEndian(objects.size(), 8) + bigEndian(top, 8) + bigEndian(table, 8);
  }
};

}  // namespace corvane::test
