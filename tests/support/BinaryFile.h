// Binary property-list files made by hand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "values/PropertyList.h"

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

/// The dictionary in the binary format, as a Mac writes it but for the order of its objects. Its values are
/// texts in ASCII, arrays and dictionaries.
class BinaryWriter {
 public:
  [[nodiscard]] static std::string bytesOf(const Dictionary& value) {
    BinaryWriter writer;
    writer.add(value);
    const std::size_t size = writer.file_.bytes().size();
    writer.file_.offsetSize = size < 0x100 ? 1 : size < 0x10000 ? 2 : 4;
    return writer.file_.bytes();
  }

 private:
  BinaryWriter() { file_.referenceSize = 2; }

  static std::string lengthOf(int marker, std::size_t count) {
    return std::string(1, static_cast<char>(marker << 4 | 15)) + "\x11" + bigEndian(count, 2);
  }
  std::size_t add(const PropertyList& value) {
    const std::size_t number = file_.objects.size();
    file_.objects.emplace_back();
    std::string object;
    if (const std::string* text = value.asString()) {
      object = lengthOf(5, text->size()) + *text;
    } else if (const Array array = value.asArray()) {
      object = lengthOf(0xA, array.size());
      for (const PropertyList& element : array.elements()) object += bigEndian(add(element), 2);
    } else {
      const Dictionary dictionary = value.asDictionary();
      object = lengthOf(0xD, dictionary.size());
      std::string values;
      for (const auto& [key, entry] : dictionary.entries()) {
        object += bigEndian(add(PropertyList::string(key)), 2);
        values += bigEndian(add(entry), 2);
      }
      object += values;
    }
    file_.objects[number] = object;
    return number;
  }

  BinaryFile file_;
};

}  // namespace corvane::test
