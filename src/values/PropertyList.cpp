#include "values/PropertyList.h"

#include <cmath>
#include <limits>

#include "values/PropertyListNodes.h"

namespace corvane {

PropertyList PropertyList::string(std::string text) {
  auto* node = Nodes::make<Nodes::String>(Kind::String);
  node->text = std::move(text);
  return PropertyList(node);
}

PropertyList PropertyList::integer(std::int64_t value) {
  auto* node = Nodes::make<Nodes::Scalar>(Kind::Integer);
  node->integer = value;
  return PropertyList(node);
}

PropertyList PropertyList::unsignedInteger(std::uint64_t value) {
  auto* node = Nodes::make<Nodes::Scalar>(Kind::Integer);
  node->unsignedInteger = value;
  node->isAboveSignedRange = value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (!node->isAboveSignedRange) node->integer = static_cast<std::int64_t>(value);
  return PropertyList(node);
}

PropertyList PropertyList::real(double value) {
  auto* node = Nodes::make<Nodes::Scalar>(Kind::Real);
  node->real = value;
  return PropertyList(node);
}

PropertyList PropertyList::boolean(bool value) {
  auto* node = Nodes::make<Nodes::Scalar>(Kind::Boolean);
  node->boolean = value;
  return PropertyList(node);
}

PropertyList PropertyList::date(Date value) {
  auto* node = Nodes::make<Nodes::Scalar>(Kind::Date);
  node->date = value.secondsSince1970;
  return PropertyList(node);
}

PropertyList PropertyList::data(Bytes bytes) {
  auto* node = Nodes::make<Nodes::Data>(Kind::Data);
  node->bytes = std::move(bytes);
  return PropertyList(node);
}

const std::string* PropertyList::asString() const noexcept {
  const auto* node = Nodes::as<Nodes::String>(node_, Kind::String);
  return node != nullptr ? &node->text : nullptr;
}

std::optional<std::int64_t> PropertyList::asInteger() const noexcept {
  const auto* node = Nodes::as<Nodes::Scalar>(node_, Kind::Integer);
  if (node == nullptr || node->isAboveSignedRange) return std::nullopt;
  return node->integer;
}

std::optional<std::uint64_t> PropertyList::asUnsignedInteger() const noexcept {
  const auto* node = Nodes::as<Nodes::Scalar>(node_, Kind::Integer);
  if (node == nullptr) return std::nullopt;
  if (node->isAboveSignedRange) return node->unsignedInteger;
  if (node->integer < 0) return std::nullopt;
  return static_cast<std::uint64_t>(node->integer);
}

std::optional<double> PropertyList::asReal() const noexcept {
  const auto* node = Nodes::as<Nodes::Scalar>(node_, Kind::Real);
  return node != nullptr ? std::optional(node->real) : std::nullopt;
}

std::optional<bool> PropertyList::asBoolean() const noexcept {
  const auto* node = Nodes::as<Nodes::Scalar>(node_, Kind::Boolean);
  return node != nullptr ? std::optional(node->boolean) : std::nullopt;
}

std::optional<Date> PropertyList::asDate() const noexcept {
  const auto* node = Nodes::as<Nodes::Scalar>(node_, Kind::Date);
  return node != nullptr ? std::optional(Date{node->date}) : std::nullopt;
}

const PropertyList::Bytes* PropertyList::asData() const noexcept {
  const auto* node = Nodes::as<Nodes::Data>(node_, Kind::Data);
  return node != nullptr ? &node->bytes : nullptr;
}

Dictionary PropertyList::asDictionary() const noexcept {
  if (kind() != Kind::Dictionary) return {};
  ++node_->references;
  return Dictionary(node_);
}

Array PropertyList::asArray() const noexcept {
  if (kind() != Kind::Array) return {};
  ++node_->references;
  return Array(node_);
}

// Containers that die are chained through themselves instead of destroying their children within their own
// destruction: a file decides how deep values are nested, and must not decide how deep the stack grows.
void PropertyList::destroy(Node* node) noexcept {
  Node* dead = nullptr;
  const auto bury = [&dead](Node* corpse) {
    switch (corpse->kind) {
      case Kind::Array:
        static_cast<Nodes::Array*>(corpse)->nextDead = std::exchange(dead, corpse);
        break;
      case Kind::Dictionary:
        static_cast<Nodes::Dictionary*>(corpse)->nextDead = std::exchange(dead, corpse);
        break;
      case Kind::String:
        delete static_cast<Nodes::String*>(corpse);
        break;
      case Kind::Data:
        delete static_cast<Nodes::Data*>(corpse);
        break;
      default:
        delete static_cast<Nodes::Scalar*>(corpse);
    }
  };
  const auto release = [&bury](PropertyList& child) {
    Node* childNode = std::exchange(child.node_, nullptr);
    if (childNode != nullptr && --childNode->references == 0) bury(childNode);
  };
  bury(node);
  while (dead != nullptr) {
    if (dead->kind == Kind::Array) {
      auto* array = static_cast<Nodes::Array*>(dead);
      dead = array->nextDead;
      for (PropertyList& element : array->elements) release(element);
      delete array;
    } else {
      auto* dictionary = static_cast<Nodes::Dictionary*>(dead);
      dead = dictionary->nextDead;
      for (auto& entry : dictionary->entries) release(entry.second);
      delete dictionary;
    }
  }
}

bool PropertyList::Nodes::equalWithoutChildren(const Node* left, const Node* right) noexcept {
  if (left == nullptr || right == nullptr) return left == right;
  if (left->kind != right->kind || left->isAboveSignedRange != right->isAboveSignedRange) return false;
  const auto& leftScalar = *static_cast<const Scalar*>(left);
  const auto& rightScalar = *static_cast<const Scalar*>(right);
  switch (left->kind) {
    case Kind::String:
      return static_cast<const String*>(left)->text == static_cast<const String*>(right)->text;
    case Kind::Data:
      return static_cast<const Data*>(left)->bytes == static_cast<const Data*>(right)->bytes;
    case Kind::Integer:
      return leftScalar.integer == rightScalar.integer;
    case Kind::Boolean:
      return leftScalar.boolean == rightScalar.boolean;
    case Kind::Date:
      return leftScalar.date == rightScalar.date;
    case Kind::Real:
      return leftScalar.real == rightScalar.real ||
             (std::isnan(leftScalar.real) && std::isnan(rightScalar.real));
    default:
      return true;
  }
}

bool operator==(const PropertyList& left, const PropertyList& right) noexcept {
  using Nodes = PropertyList::Nodes;
  using Node = PropertyList::Node;
  // Pairs of containers still to be compared. Not the call stack: nesting is as deep as whoever made the
  // values likes.
  std::vector<std::pair<const PropertyList*, const PropertyList*>> pending;
  const auto sameSoFar = [&pending](const PropertyList& one, const PropertyList& other) {
    const Node* node = one.node_;
    if (node == other.node_) return true;
    if (!Nodes::equalWithoutChildren(node, other.node_)) return false;
    if (Nodes::isContainer(node)) pending.emplace_back(&one, &other);
    return true;
  };
  if (!sameSoFar(left, right)) return false;
  while (!pending.empty()) {
    const auto [one, other] = pending.back();
    pending.pop_back();
    if (one->kind() == PropertyList::Kind::Array) {
      const auto& ours = Nodes::array(*one)->elements;
      const auto& theirs = Nodes::array(*other)->elements;
      if (ours.size() != theirs.size()) return false;
      for (std::size_t i = 0; i < ours.size(); ++i) {
        if (!sameSoFar(ours[i], theirs[i])) return false;
      }
    } else {
      const auto& ours = one->asDictionary().entries();
      const auto& theirs = other->asDictionary().entries();
      if (ours.size() != theirs.size()) return false;
      for (std::size_t i = 0; i < ours.size(); ++i) {
        if (ours[i].first != theirs[i].first || !sameSoFar(ours[i].second, theirs[i].second)) return false;
      }
    }
  }
  return true;
}

PropertyList PropertyList::Nodes::copyWithoutChildren(const Node* node) {
  if (node == nullptr) return {};
  switch (node->kind) {
    case Kind::String:
      return string(static_cast<const String*>(node)->text);
    case Kind::Data:
      return data(static_cast<const Data*>(node)->bytes);
    case Kind::Array:
      return PropertyList(make<Array>(Kind::Array));
    case Kind::Dictionary:
      return PropertyList(make<Dictionary>(Kind::Dictionary));
    default: {
      auto* copy = new Scalar(*static_cast<const Scalar*>(node));
      copy->references = 1;
      return PropertyList(copy);
    }
  }
}

PropertyList PropertyList::deepCopy() const {
  PropertyList result = Nodes::copyWithoutChildren(node_);
  std::vector<std::pair<const Node*, Node*>> pending;  // containers whose children are still to be copied
  const auto copyOf = [&pending](const PropertyList& child) {
    PropertyList copy = Nodes::copyWithoutChildren(child.node_);
    if (Nodes::isContainer(child.node_)) pending.emplace_back(child.node_, copy.node_);
    return copy;
  };
  if (Nodes::isContainer(node_)) pending.emplace_back(node_, result.node_);
  while (!pending.empty()) {
    const auto [source, target] = pending.back();
    pending.pop_back();
    if (source->kind == Kind::Array) {
      const auto& elements = static_cast<const Nodes::Array*>(source)->elements;
      auto& copies = static_cast<Nodes::Array*>(target)->elements;
      copies.reserve(elements.size());
      for (const PropertyList& element : elements) copies.push_back(copyOf(element));
    } else {
      const auto& dictionary = *static_cast<const Nodes::Dictionary*>(source);
      auto& copies = *static_cast<Nodes::Dictionary*>(target);
      copies.sortedCount = dictionary.sortedCount;
      copies.entries.reserve(dictionary.entries.size());
      for (const auto& [key, value] : dictionary.entries) copies.entries.emplace_back(key, copyOf(value));
    }
  }
  return result;
}

}  // namespace corvane
