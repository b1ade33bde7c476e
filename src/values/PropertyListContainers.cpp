// The two container handles, `Array` and `Dictionary`.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "values/PropertyListNodes.h"

namespace corvane {

Array Array::make(std::initializer_list<PropertyList> elements) {
  return fromElements(std::vector<PropertyList>(elements));
}

Array Array::fromElements(std::vector<PropertyList> elements) {
  auto* node = Nodes::make<Nodes::Array>(Kind::Array);
  node->elements = std::move(elements);
  return Array(node);
}

std::size_t Array::size() const noexcept { return elements().size(); }

PropertyList Array::at(std::size_t index) const noexcept {
  const auto& all = elements();
  return index < all.size() ? all[index] : PropertyList();
}

PropertyList Array::last() const noexcept { return empty() ? PropertyList() : elements().back(); }

const std::vector<PropertyList>& Array::elements() const noexcept {
  static const std::vector<PropertyList> none;
  const auto* node = Nodes::array(*this);
  return node != nullptr ? node->elements : none;
}

bool Array::contains(const PropertyList& element) const noexcept {
  return std::ranges::find(elements(), element) != elements().end();
}

void Array::append(PropertyList element) {
  if (auto* node = Nodes::array(*this)) node->elements.push_back(std::move(element));
}

void Array::insert(std::size_t index, PropertyList element) {
  auto* node = Nodes::array(*this);
  if (node == nullptr) return;
  index = std::min(index, node->elements.size());
  node->elements.insert(node->elements.begin() + static_cast<std::ptrdiff_t>(index), std::move(element));
}

void Array::removeAt(std::size_t index) {
  auto* node = Nodes::array(*this);
  if (node == nullptr || index >= node->elements.size()) return;
  node->elements.erase(node->elements.begin() + static_cast<std::ptrdiff_t>(index));
}

std::size_t Array::removeAllEqualTo(const PropertyList& element) {
  auto* node = Nodes::array(*this);
  if (node == nullptr) return 0;
  // The caller's may be one of ours, which move while they are removed.
  const PropertyList wanted = element;  // NOLINT(performance-unnecessary-copy-initialization)
  return std::erase(node->elements, wanted);
}

void Array::replaceAll(std::vector<PropertyList> elements) {
  if (auto* node = Nodes::array(*this)) node->elements.swap(elements);
}

Array Array::shallowCopy() const { return node_ != nullptr ? fromElements(elements()) : Array(); }

namespace {

/// How many bytes at their beginnings are the same.
std::size_t commonLength(std::string_view left, std::string_view right) noexcept {
  const std::size_t size = std::min(left.size(), right.size());
  std::size_t same = 0;
  for (std::uint64_t l = 0, r = 0; same + sizeof l <= size; same += sizeof l) {
    std::memcpy(&l, left.data() + same, sizeof l);
    std::memcpy(&r, right.data() + same, sizeof r);
    if (l != r) break;
  }
  while (same < size && left[same] == right[same]) ++same;
  return same;
}

}  // namespace

// Byte order and UTF-16 order of valid UTF-8 differ in one case only: characters beyond the basic plane (lead
// bytes from F0) are surrogates in UTF-16 and so stand before U+E000 to U+FFFF (lead bytes EE and EF).
bool precedesInUtf16Order(std::string_view left, std::string_view right) noexcept {
  const std::size_t same = commonLength(left, right);
  if (same == left.size() || same == right.size()) return same < right.size();
  const auto leftByte = static_cast<unsigned char>(left[same]);
  const auto rightByte = static_cast<unsigned char>(right[same]);
  if (leftByte >= 0xEE && rightByte >= 0xEE && (leftByte >= 0xF0) != (rightByte >= 0xF0)) {
    return leftByte >= 0xF0;
  }
  return leftByte < rightByte;
}

namespace {

struct KeyOrder {
  bool operator()(const Dictionary::Entry& left, const Dictionary::Entry& right) const noexcept {
    return precedesInUtf16Order(left.first, right.first);
  }
  bool operator()(const Dictionary::Entry& entry, std::string_view key) const noexcept {
    return precedesInUtf16Order(entry.first, key);
  }
};

template <typename DictionaryNode>
void sortTail(DictionaryNode& node) {
  if (node.sortedCount == node.entries.size()) return;
  const auto tail = node.entries.begin() + static_cast<std::ptrdiff_t>(node.sortedCount);
  std::sort(tail, node.entries.end(), KeyOrder());
  std::inplace_merge(node.entries.begin(), tail, node.entries.end(), KeyOrder());
  node.sortedCount = node.entries.size();
}

/// Where the key stands, or the end.
template <typename DictionaryNode>
auto find(DictionaryNode& node, std::string_view key) noexcept {
  const auto tail = node.entries.begin() + static_cast<std::ptrdiff_t>(node.sortedCount);
  const auto found = std::lower_bound(node.entries.begin(), tail, key, KeyOrder());
  if (found != tail && found->first == key) return found;
  return std::find_if(tail, node.entries.end(), [key](const auto& entry) { return entry.first == key; });
}

/// Leaves one entry of each run of equal keys. The entries are sorted, equal keys in their first order.
void removeDuplicates(std::vector<Dictionary::Entry>& entries, Dictionary::Duplicates duplicates) {
  const auto sameKey = [](const auto& left, const auto& right) { return left.first == right.first; };
  if (duplicates == Dictionary::Duplicates::FirstWins) {
    entries.erase(std::unique(entries.begin(), entries.end(), sameKey), entries.end());
    return;
  }
  const auto kept = std::unique(entries.rbegin(), entries.rend(), sameKey);
  entries.erase(entries.begin(), kept.base());
}

}  // namespace

Dictionary Dictionary::make(std::initializer_list<Entry> entries) {
  Dictionary result = fromEntries({}, Duplicates::LastWins);
  for (const auto& [key, value] : entries) result.set(key, value);
  return result;
}

Dictionary Dictionary::fromEntries(std::vector<Entry> entries, Duplicates duplicates) {
  const auto ordered = [](const Entry& left, const Entry& right) {
    return !precedesInUtf16Order(left.first, right.first);
  };
  // Most files are in order already.
  if (std::adjacent_find(entries.begin(), entries.end(), ordered) != entries.end()) {
    std::stable_sort(entries.begin(), entries.end(), KeyOrder());
    removeDuplicates(entries, duplicates);
  }
  auto* node = Nodes::make<Nodes::Dictionary>(Kind::Dictionary);
  node->entries = std::move(entries);
  node->sortedCount = node->entries.size();
  return Dictionary(node);
}

std::size_t Dictionary::size() const noexcept {
  const auto* node = Nodes::dictionary(*this);
  return node != nullptr ? node->entries.size() : 0;
}

bool Dictionary::contains(std::string_view key) const noexcept {
  const auto* node = Nodes::dictionary(*this);
  return node != nullptr && find(*node, key) != node->entries.end();
}

PropertyList Dictionary::value(std::string_view key) const noexcept {
  const auto* node = Nodes::dictionary(*this);
  if (node == nullptr) return {};
  const auto found = find(*node, key);
  return found != node->entries.end() ? found->second : PropertyList();
}

std::vector<std::string> Dictionary::keys() const {
  std::vector<std::string> result;
  result.reserve(size());
  for (const auto& [key, value] : entries()) result.push_back(key);
  return result;
}

const std::vector<Dictionary::Entry>& Dictionary::entries() const {
  static const std::vector<Entry> none;
  auto* node = Nodes::dictionary(*this);
  if (node == nullptr) return none;
  sortTail(*node);
  return node->entries;
}

void Dictionary::set(std::string_view key, PropertyList value) {
  auto* node = Nodes::dictionary(*this);
  if (node == nullptr) return;
  if (!value) return remove(key);
  auto& entries = node->entries;
  if (const auto found = find(*node, key); found != entries.end()) {
    found->second = std::move(value);
    return;
  }
  const bool staysSorted = node->sortedCount == entries.size() &&
                           (entries.empty() || precedesInUtf16Order(entries.back().first, key));
  entries.emplace_back(std::string(key), std::move(value));
  if (staysSorted) {
    node->sortedCount = entries.size();
    return;
  }
  constexpr std::size_t smallTail = 16;
  const std::size_t tail = entries.size() - node->sortedCount;
  if (tail > smallTail && tail * tail > entries.size()) sortTail(*node);
}

void Dictionary::remove(std::string_view key) {
  auto* node = Nodes::dictionary(*this);
  if (node == nullptr) return;
  const auto found = find(*node, key);
  if (found == node->entries.end()) return;
  if (static_cast<std::size_t>(found - node->entries.begin()) < node->sortedCount) --node->sortedCount;
  node->entries.erase(found);
}

void Dictionary::setAll(const Dictionary& other) {
  auto* node = Nodes::dictionary(*this);
  if (node == nullptr || isSameObject(other)) return;
  sortTail(*node);
  auto& entries = node->entries;
  std::size_t own = 0;
  for (const auto& [key, value] : other.entries()) {
    while (own < node->sortedCount && precedesInUtf16Order(entries[own].first, key)) ++own;
    if (own < node->sortedCount && entries[own].first == key) {
      entries[own].second = value;
    } else {
      entries.emplace_back(key, value);
    }
  }
  sortTail(*node);
}

Dictionary Dictionary::shallowCopy() const {
  return node_ != nullptr ? fromEntries(entries(), Duplicates::LastWins) : Dictionary();
}

const std::string* Dictionary::string(std::string_view key) const noexcept { return value(key).asString(); }

Dictionary Dictionary::dictionary(std::string_view key) const noexcept { return value(key).asDictionary(); }

Array Dictionary::array(std::string_view key) const noexcept { return value(key).asArray(); }

}  // namespace corvane
