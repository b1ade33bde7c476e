// Reader of the binary format: a header, objects that name each other by number, a table of the objects'
// places, and a trailer that describes the table. Every number in the file is distrusted; nothing is read
// outside the objects' part.
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <optional>

#include "values/Encodings.h"
#include "values/PropertyListDate.h"
#include "values/PropertyListReaders.h"

namespace corvane {

namespace {

constexpr std::string_view signature = "bplist0";  // followed by a digit, which is as good as ignored
constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
constexpr double referenceDate = 978307200;  // 1 January 2001, in seconds since 1970

enum class Marker : std::uint8_t {
  Boolean = 0x0,
  Integer = 0x1,
  Real = 0x2,
  Date = 0x3,
  Data = 0x4,
  AsciiString = 0x5,
  Utf16String = 0x6,
  ArchiveIdentifier = 0x8,
  Array = 0xA,
  Dictionary = 0xD,
};

/// The last 64 bits of a big-endian number.
[[nodiscard]] std::uint64_t bigEndian(std::string_view bytes) noexcept {
  std::uint64_t value = 0;
  for (const char byte : bytes) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}

/// The place of every object, as the trailer describes it.
class ObjectTable {
 public:
  /// Nothing unless the parts of the file fit together exactly.
  [[nodiscard]] static std::optional<ObjectTable> read(std::string_view bytes) {
    if (bytes.size() < headerSize + 1 + trailerSize) return std::nullopt;
    const std::string_view trailer = bytes.substr(bytes.size() - trailerSize);
    ObjectTable table;
    table.offsetSize_ = static_cast<std::uint8_t>(trailer[6]);
    table.referenceSize_ = static_cast<std::uint8_t>(trailer[7]);
    table.count_ = bigEndian(trailer.substr(8, 8));
    table.top_ = bigEndian(trailer.substr(16, 8));
    const std::uint64_t start = bigEndian(trailer.substr(24, 8));
    const std::uint64_t tableEnd = bytes.size() - trailerSize;
    if (table.count_ == 0 || table.top_ >= table.count_ || table.offsetSize_ == 0 ||
        table.referenceSize_ == 0) {
      return std::nullopt;
    }
    if (start <= headerSize || start >= tableEnd) return std::nullopt;
    // By division, so that no number in the file can overflow.
    const std::uint64_t size = tableEnd - start;
    if (size % table.offsetSize_ != 0 || size / table.offsetSize_ != table.count_) return std::nullopt;
    if (!canReach(table.referenceSize_, table.count_) || !canReach(table.offsetSize_, start))
      return std::nullopt;
    table.offsets_ = bytes.substr(start, size);
    table.objects_ = bytes.substr(0, start);
    for (std::uint64_t i = 0; i < table.count_; ++i) {
      if (table.offset(i) >= start) return std::nullopt;
    }
    return table;
  }

  [[nodiscard]] std::uint64_t top() const noexcept { return top_; }
  [[nodiscard]] std::size_t referenceSize() const noexcept { return referenceSize_; }

  /// The object's bytes, up to the end of all objects; empty when there is no such object.
  [[nodiscard]] std::string_view object(std::uint64_t number) const noexcept {
    if (number >= count_) return {};
    const std::uint64_t at = offset(number);
    return at < headerSize ? std::string_view() : objects_.substr(at);
  }

 private:
  [[nodiscard]] static bool canReach(std::size_t size, std::uint64_t number) noexcept {
    return size >= sizeof(std::uint64_t) || number >> (8 * size) == 0;
  }
  [[nodiscard]] std::uint64_t offset(std::uint64_t number) const noexcept {
    return bigEndian(offsets_.substr(number * offsetSize_, offsetSize_));
  }

  std::string_view objects_;
  std::string_view offsets_;
  std::size_t offsetSize_ = 0;
  std::size_t referenceSize_ = 0;
  std::uint64_t count_ = 0;
  std::uint64_t top_ = 0;
};

/// One object taken apart: its marker, its low four bits or the count that follows them, and what comes next.
struct Object {
  Marker marker = Marker::Boolean;
  std::uint8_t nibble = 0;
  std::string_view rest;

  [[nodiscard]] static std::optional<Object> at(std::string_view bytes) noexcept {
    if (bytes.empty()) return std::nullopt;
    const auto first = static_cast<std::uint8_t>(bytes.front());
    return Object{static_cast<Marker>(first >> 4), static_cast<std::uint8_t>(first & 15), bytes.substr(1)};
  }

  /// Takes as many bytes off the rest.
  [[nodiscard]] std::optional<std::string_view> take(std::uint64_t size) noexcept {
    if (size > rest.size()) return std::nullopt;
    const std::string_view taken = rest.substr(0, size);
    rest.remove_prefix(size);
    return taken;
  }

  /// The object's length, which is an integer object of its own where it does not fit the low bits.
  [[nodiscard]] std::optional<std::uint64_t> length() noexcept {
    if (nibble != 15) return nibble;
    const auto first = take(1);
    if (!first) return std::nullopt;
    const auto byte = static_cast<std::uint8_t>(first->front());
    if (static_cast<Marker>(byte >> 4) != Marker::Integer) return std::nullopt;
    const auto digits = take(std::uint64_t{1} << (byte & 15));
    return digits ? std::optional(bigEndian(*digits)) : std::nullopt;
  }
};

[[nodiscard]] PropertyList readInteger(Object object) {
  if (object.nibble > 4) return {};
  const auto bytes = object.take(std::uint64_t{1} << object.nibble);
  if (!bytes) return {};
  const std::uint64_t value = bigEndian(*bytes);
  // Up to four bytes are unsigned, eight are signed, sixteen are for the upper half of the unsigned range.
  if (bytes->size() <= 8) return PropertyList::integer(static_cast<std::int64_t>(value));
  return bigEndian(bytes->substr(0, 8)) == 0 ? PropertyList::unsignedInteger(value) : PropertyList();
}

[[nodiscard]] PropertyList readReal(Object object) {
  const auto bytes = object.nibble == 2 || object.nibble == 3 ? object.take(std::uint64_t{1} << object.nibble)
                                                              : std::nullopt;
  if (!bytes) return {};
  const std::uint64_t value = bigEndian(*bytes);
  if (bytes->size() == 8) return PropertyList::real(std::bit_cast<double>(value));
  return PropertyList::real(std::bit_cast<float>(static_cast<std::uint32_t>(value)));
}

[[nodiscard]] PropertyList readDate(Object object) {
  const auto bytes = object.nibble == 3 ? object.take(8) : std::nullopt;
  if (!bytes) return {};
  const Date date{std::bit_cast<double>(bigEndian(*bytes)) + referenceDate};
  return calendarDate(date) ? PropertyList::date(date) : PropertyList();
}

[[nodiscard]] PropertyList readData(Object object) {
  const auto length = object.length();
  const auto bytes = length ? object.take(*length) : std::nullopt;
  return bytes ? PropertyList::data(PropertyList::Bytes(bytes->begin(), bytes->end())) : PropertyList();
}

[[nodiscard]] std::optional<std::string> readText(Object object) {
  const auto length = object.length();
  if (!length) return std::nullopt;
  if (object.marker == Marker::AsciiString) {
    const auto bytes = object.take(*length);
    // Bytes beyond ASCII are Latin-1, as on a Mac.
    return bytes ? std::optional(utf8FromLatin1(*bytes)) : std::nullopt;
  }
  // A Mac writes an empty text as ASCII, and takes an empty one in UTF-16 for a fault.
  if (object.marker != Marker::Utf16String || *length == 0 || *length > object.rest.size() / 2)
    return std::nullopt;
  return utf8FromUtf16(object.rest.substr(0, *length * 2), ByteOrder::BigEndian);
}

/// The reference of an archived object graph, in the form that XML property lists have for it.
[[nodiscard]] PropertyList readArchiveIdentifier(Object object) {
  const auto bytes = object.take(object.nibble + 1U);
  if (!bytes) return {};
  const std::uint64_t value = bigEndian(*bytes);
  if (value > std::numeric_limits<std::uint32_t>::max()) return {};
  return Dictionary::make({{"CF$UID", PropertyList::unsignedInteger(value)}});
}

[[nodiscard]] PropertyList readScalar(Object object) {
  switch (object.marker) {
    case Marker::Boolean:
      return object.nibble == 8 || object.nibble == 9 ? PropertyList::boolean(object.nibble == 9)
                                                      : PropertyList();
    case Marker::Integer:
      return readInteger(object);
    case Marker::Real:
      return readReal(object);
    case Marker::Date:
      return readDate(object);
    case Marker::Data:
      return readData(object);
    case Marker::AsciiString:
    case Marker::Utf16String:
      if (auto text = readText(object)) return PropertyList::string(std::move(*text));
      return {};
    case Marker::ArchiveIdentifier:
      return readArchiveIdentifier(object);
    default:
      return {};
  }
}

/// Builds the tree. Containers that are being filled stand on a stack of its own, each with the children that
/// are finished, so that a file cannot exhaust the program's.
class TreeBuilder {
 public:
  TreeBuilder(const ObjectTable& table, std::size_t fileSize)
      : table_(table), allowance_(allowanceFor(fileSize)) {}

  [[nodiscard]] PropertyList build() {
    if (!begin(table_.top())) return {};
    while (!open_.empty()) {
      if (!step()) return {};
    }
    return std::move(finished_);
  }

 private:
  struct Container {
    bool isDictionary = false;
    std::string_view references;
    std::size_t count = 0;  // of elements, or of keys and as many values
    std::size_t next = 0;
    std::vector<PropertyList> elements;
    std::vector<Dictionary::Entry> entries;
  };

  /// An object that is referred to from several places is read into each of them, since values can be changed
  /// in place. A small file could so stand for an endless tree; what reading it takes in memory, all told, is
  /// bounded by 256 times the file's size and 4 MB. Not counted are the stack of open containers and the one
  /// text or data that is read before it is paid for.
  [[nodiscard]] static std::size_t allowanceFor(std::size_t fileSize) noexcept {
    return (4U << 20) - (256U << 10) + (256 - 4) * fileSize;
  }

  [[nodiscard]] bool pay(std::size_t bytes) noexcept {
    if (bytes > allowance_) return false;
    allowance_ -= bytes;
    return true;
  }
  /// Pays for a block as the general allocator takes it: rounded up, with a note beside it, and for a large
  /// one with the rest of its last page.
  [[nodiscard]] bool payForBlock(std::size_t size) noexcept {
    return size == 0 || pay(std::max<std::size_t>(32, (size + 8 + 15) / 16 * 16) + size / 32);
  }
  [[nodiscard]] bool payForNode() noexcept { return pay(64); }  // the largest one as a block
  [[nodiscard]] bool payForText(const std::string& text) noexcept {
    // A short text stands in the object itself.
    static const std::size_t withoutBlock = std::string().capacity();
    return text.capacity() <= withoutBlock || payForBlock(text.capacity() + 1);
  }
  [[nodiscard]] bool payFor(const PropertyList& value) noexcept {
    if (!payForNode()) return false;
    if (const std::string* text = value.asString()) return payForText(*text);
    if (const PropertyList::Bytes* data = value.asData()) return payForBlock(data->capacity());
    // An archive's identifier: a dictionary with a number in it.
    return !value.asDictionary() || (payForNode() && payForBlock(sizeof(Dictionary::Entry)));
  }

  /// Reads the object as the next child of the innermost container, or opens it as a container of its own.
  [[nodiscard]] bool begin(std::uint64_t number) {
    const auto object = Object::at(table_.object(number));
    if (!object) return false;
    if (object->marker == Marker::Array || object->marker == Marker::Dictionary) return open(*object);
    // An archive's identifier becomes a dictionary, which is a level too.
    if (object->marker == Marker::ArchiveIdentifier && open_.size() == nestingLimit) return false;
    PropertyList value = readScalar(*object);
    return value && payFor(value) && finish(std::move(value));
  }

  [[nodiscard]] bool open(Object object) {
    const auto count = object.length();
    if (!count || open_.size() == nestingLimit) return false;
    Container container;
    container.isDictionary = object.marker == Marker::Dictionary;
    const std::size_t sizePerChild = table_.referenceSize() * (container.isDictionary ? 2 : 1);
    if (*count > object.rest.size() / sizePerChild) return false;
    container.references = object.rest.substr(0, *count * sizePerChild);
    container.count = *count;
    // A file can claim the same references for many containers, so their room is paid for before it is taken;
    // that of a dictionary once and a half, since its keys may have to be sorted.
    constexpr std::size_t entry = sizeof(Dictionary::Entry) * 3 / 2;
    const std::size_t room = *count * (container.isDictionary ? entry : sizeof(PropertyList));
    if (!payForNode() || !payForBlock(room)) return false;
    if (container.isDictionary) {
      container.entries.reserve(*count);
    } else {
      container.elements.reserve(*count);
    }
    open_.push_back(std::move(container));
    return true;
  }

  [[nodiscard]] std::uint64_t reference(const Container& container, std::size_t index) const noexcept {
    return bigEndian(container.references.substr(index * table_.referenceSize(), table_.referenceSize()));
  }

  /// Reads the innermost container's next child, or closes it.
  [[nodiscard]] bool step() {
    Container& container = open_.back();
    if (container.next == container.count) return close();
    const std::size_t index = container.next++;
    if (!container.isDictionary) return begin(reference(container, index));
    const auto key = Object::at(table_.object(reference(container, index)));
    auto text = key ? readText(*key) : std::nullopt;
    if (!text || !payForText(*text)) return false;
    container.entries.emplace_back(std::move(*text), PropertyList());
    return begin(reference(container, container.count + index));
  }

  [[nodiscard]] bool close() {
    Container container = std::move(open_.back());
    open_.pop_back();
    if (!container.isDictionary) return finish(Array::fromElements(std::move(container.elements)));
    return finish(Dictionary::fromEntries(std::move(container.entries), Dictionary::Duplicates::FirstWins));
  }

  /// Hands a complete value to the container that it stands in.
  [[nodiscard]] bool finish(PropertyList value) {
    if (open_.empty()) {
      finished_ = std::move(value);
    } else if (open_.back().isDictionary) {
      open_.back().entries.back().second = std::move(value);
    } else {
      open_.back().elements.push_back(std::move(value));
    }
    return true;
  }

  const ObjectTable& table_;
  std::size_t allowance_;
  std::vector<Container> open_;
  PropertyList finished_;
};

}  // namespace

bool looksLikeBinaryPropertyList(std::string_view bytes) noexcept { return bytes.starts_with(signature); }

PropertyList readBinaryPropertyList(std::string_view bytes) {
  const auto table = ObjectTable::read(bytes);
  return table ? TreeBuilder(*table, bytes.size()).build() : PropertyList();
}

}  // namespace corvane
