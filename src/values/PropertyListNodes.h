// The nodes behind `PropertyList` handles, for the files that implement the handles. Nobody else includes
// this.
//
// A node is one allocation that begins with its reference count and kind, so that a handle can answer the
// common questions without knowing the rest. Containers hold handles to their children.
#pragma once

#include "values/PropertyList.h"

namespace corvane {

struct PropertyList::Nodes {
  struct Scalar : Node {
    union {
      std::int64_t integer;
      std::uint64_t unsignedInteger;  // when isAboveSignedRange
      double real;
      bool boolean;
      double date;
    };
  };
  struct String : Node {
    std::string text;
  };
  struct Data : Node {
    Bytes bytes;
  };
  struct Array : Node {
    Node* nextDead = nullptr;
    std::vector<PropertyList> elements;
  };
  /// The entries are a sorted run followed by a short unsorted tail of newcomers, which joins the run when it
  /// has grown to about the root of the whole or when somebody walks the entries. So neither filling a large
  /// dictionary in any order nor looking keys up in between costs the square of its size.
  struct Dictionary : Node {
    Node* nextDead = nullptr;
    std::vector<std::pair<std::string, PropertyList>> entries;
    std::size_t sortedCount = 0;
  };

  template <typename NodeOfKind>
  [[nodiscard]] static NodeOfKind* make(Kind kind) {
    auto* node = new NodeOfKind;
    node->kind = kind;
    return node;
  }
  [[nodiscard]] static bool isContainer(const Node* node) noexcept {
    return node != nullptr && (node->kind == Kind::Dictionary || node->kind == Kind::Array);
  }
  template <typename NodeOfKind>
  [[nodiscard]] static NodeOfKind* as(Node* node, Kind kind) noexcept {
    return node != nullptr && node->kind == kind ? static_cast<NodeOfKind*>(node) : nullptr;
  }
  [[nodiscard]] static Array* array(const PropertyList& value) noexcept {
    return as<Array>(value.node_, Kind::Array);
  }
  [[nodiscard]] static Dictionary* dictionary(const PropertyList& value) noexcept {
    return as<Dictionary>(value.node_, Kind::Dictionary);
  }

  [[nodiscard]] static PropertyList copyWithoutChildren(const Node* node);
  [[nodiscard]] static bool equalWithoutChildren(const Node* left, const Node* right) noexcept;
};

/// Whether the first text stands before the second in UTF-16 code-unit order; both are UTF-8.
[[nodiscard]] bool precedesInUtf16Order(std::string_view left, std::string_view right) noexcept;

}  // namespace corvane
