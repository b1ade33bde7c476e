// The property-list value tree: dictionaries, arrays and scalar values in shared nodes.
//
// A `PropertyList` is a handle to one node, or to nothing. Copying a handle shares the node, so that identity
// (`isSameObject`) and equality (`==`) are different questions: the settings store replaces a value unless it
// is the very same object, and the rows of the plug-in outline are told apart by their objects. Containers
// are mutable in place through `Dictionary` and `Array`, which are handles to the same nodes; scalar nodes
// never change. Everything runs on one thread, so reference counts are not atomic.
//
// Asking a handle for something it does not hold answers with nothing (a null pointer, an empty optional, an
// empty handle): a value of the wrong type counts as absent everywhere in the pane. Changing an empty handle
// does nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

class Array;
class Dictionary;

/// A point in time, in seconds since 1 January 1970 GMT. Property lists hold the years 1 to 9999.
struct Date {
  double secondsSince1970 = 0;
  // NOLINTNEXTLINE(modernize-use-nullptr): a false alarm
  friend auto operator<=>(const Date&, const Date&) = default;
};

class PropertyList {
 public:
  enum class Kind : std::uint8_t { Nothing, Dictionary, Array, String, Integer, Real, Boolean, Date, Data };
  using Bytes = std::vector<std::uint8_t>;

  PropertyList() noexcept = default;
  PropertyList(const PropertyList& other) noexcept : node_(other.node_) {
    if (node_ != nullptr) ++node_->references;
  }
  PropertyList(PropertyList&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
  PropertyList& operator=(const PropertyList& other) noexcept { return *this = PropertyList(other); }
  PropertyList& operator=(PropertyList&& other) noexcept {
    PropertyList old(std::exchange(node_, std::exchange(other.node_, nullptr)));
    return *this;
  }
  ~PropertyList() {
    if (node_ != nullptr && --node_->references == 0) destroy(node_);
  }

  // Every call makes a new object, never identical to another one.
  [[nodiscard]] static PropertyList string(std::string text);
  [[nodiscard]] static PropertyList integer(std::int64_t value);
  [[nodiscard]] static PropertyList unsignedInteger(std::uint64_t value);
  [[nodiscard]] static PropertyList real(double value);
  [[nodiscard]] static PropertyList boolean(bool value);
  [[nodiscard]] static PropertyList date(Date value);
  [[nodiscard]] static PropertyList data(Bytes bytes);

  [[nodiscard]] Kind kind() const noexcept { return node_ != nullptr ? node_->kind : Kind::Nothing; }
  explicit operator bool() const noexcept { return node_ != nullptr; }

  /// The text, or null unless this is a string. Valid while the node lives.
  [[nodiscard]] const std::string* asString() const noexcept;
  /// The value as a signed number; nothing unless this is an integer that fits.
  [[nodiscard]] std::optional<std::int64_t> asInteger() const noexcept;
  /// The value as an unsigned number; nothing unless this is an integer of at least 0.
  [[nodiscard]] std::optional<std::uint64_t> asUnsignedInteger() const noexcept;
  [[nodiscard]] std::optional<double> asReal() const noexcept;
  [[nodiscard]] std::optional<bool> asBoolean() const noexcept;
  [[nodiscard]] std::optional<Date> asDate() const noexcept;
  [[nodiscard]] const Bytes* asData() const noexcept;
  /// A handle to the same node; empty unless this is a dictionary (an array).
  [[nodiscard]] Dictionary asDictionary() const noexcept;
  [[nodiscard]] Array asArray() const noexcept;

  /// True when both handles refer to the very same node. Two empty handles are the same.
  [[nodiscard]] bool isSameObject(const PropertyList& other) const noexcept { return node_ == other.node_; }
  /// The same for two handles exactly when they refer to the same object: for look-ups by identity.
  [[nodiscard]] const void* identity() const noexcept { return node_; }
  /// Equality by kind and content, through containers. Booleans, integers and reals are different kinds; a
  /// real that is not a number equals another such. Neither value may contain itself.
  friend bool operator==(const PropertyList& left, const PropertyList& right) noexcept;

  /// A copy that shares no node with this one. The value must not contain itself.
  [[nodiscard]] PropertyList deepCopy() const;

 protected:
  /// What every node begins with; the nodes of each kind, and all that looks into them, are in
  /// PropertyListNodes.h.
  struct Node {
    std::uint32_t references = 1;
    Kind kind;
    bool isAboveSignedRange = false;  // an integer that only fits the unsigned type

    // The delete that belongs to it takes the size.
    static void* operator new(std::size_t size);  // NOLINT(misc-new-delete-overloads)
    static void operator delete(void* cell, std::size_t size) noexcept;
  };
  struct Nodes;
  static void destroy(Node* node) noexcept;
  explicit PropertyList(Node* owned) noexcept : node_(owned) {}
  Node* node_ = nullptr;
};

/// A handle to an array node, or to nothing.
class Array : public PropertyList {
 public:
  Array() noexcept = default;
  [[nodiscard]] static Array make(std::initializer_list<PropertyList> elements = {});
  [[nodiscard]] static Array fromElements(std::vector<PropertyList> elements);

  [[nodiscard]] std::size_t size() const noexcept;
  [[nodiscard]] bool empty() const noexcept { return size() == 0; }
  /// The element, or nothing past the end.
  [[nodiscard]] PropertyList at(std::size_t index) const noexcept;
  [[nodiscard]] PropertyList last() const noexcept;
  [[nodiscard]] const std::vector<PropertyList>& elements() const noexcept;
  /// Equality, not identity.
  [[nodiscard]] bool contains(const PropertyList& element) const noexcept;

  void append(PropertyList element);
  void insert(std::size_t index, PropertyList element);
  void removeAt(std::size_t index);
  /// Removes every element equal to this one; answers how many went.
  std::size_t removeAllEqualTo(const PropertyList& element);
  /// Puts these elements in place of the present ones.
  void replaceAll(std::vector<PropertyList> elements);
  /// A new array with the same element objects.
  [[nodiscard]] Array shallowCopy() const;

 private:
  friend class PropertyList;
  explicit Array(Node* owned) noexcept : PropertyList(owned) {}
};

/// A handle to a dictionary node, or to nothing. Keys are walked in UTF-16 code-unit order, the order of the
/// XML form.
class Dictionary : public PropertyList {
 public:
  using Entry = std::pair<std::string, PropertyList>;

  Dictionary() noexcept = default;
  /// Where a key occurs twice the last one wins.
  [[nodiscard]] static Dictionary make(std::initializer_list<Entry> entries = {});
  /// Which entry stays where a key occurs twice.
  enum class Duplicates : std::uint8_t { FirstWins, LastWins };
  /// Takes the entries in any order. No value may be empty.
  [[nodiscard]] static Dictionary fromEntries(std::vector<Entry> entries, Duplicates duplicates);

  [[nodiscard]] std::size_t size() const noexcept;
  [[nodiscard]] bool empty() const noexcept { return size() == 0; }
  [[nodiscard]] bool contains(std::string_view key) const noexcept;
  /// The value, or nothing.
  [[nodiscard]] PropertyList value(std::string_view key) const noexcept;
  [[nodiscard]] std::vector<std::string> keys() const;
  /// The entries in order; the reference holds until the dictionary changes.
  [[nodiscard]] const std::vector<Entry>& entries() const;

  /// Sets the value under the key; setting nothing removes the key.
  void set(std::string_view key, PropertyList value);
  void remove(std::string_view key);
  /// Sets every entry of the other dictionary, in time linear in the size of both.
  void setAll(const Dictionary& other);
  /// A new dictionary with the same value objects.
  [[nodiscard]] Dictionary shallowCopy() const;

  // The typed look-ups that settings need; nothing when absent or of another type.
  [[nodiscard]] const std::string* string(std::string_view key) const noexcept;
  [[nodiscard]] Dictionary dictionary(std::string_view key) const noexcept;
  [[nodiscard]] Array array(std::string_view key) const noexcept;

 private:
  friend class PropertyList;
  explicit Dictionary(Node* owned) noexcept : PropertyList(owned) {}
};

}  // namespace corvane
