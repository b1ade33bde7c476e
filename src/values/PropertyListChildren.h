// The finished children of the containers that the XML reader is still reading and whose sizes it can't know,
// on two stacks: a container notes how high its stack was when it began, and takes what stands above that
// when it is complete, in storage of exactly that size.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "values/PropertyList.h"

namespace corvane {

class PropertyListChildren {
 public:
  PropertyListChildren() {
    constexpr std::size_t enoughForSmallFiles = 64;
    elements_.reserve(enoughForSmallFiles);
    entries_.reserve(enoughForSmallFiles);
  }

  [[nodiscard]] std::size_t elementCount() const noexcept { return elements_.size(); }
  void addElement(PropertyList value) { elements_.push_back(std::move(value)); }
  [[nodiscard]] Array takeArray(std::size_t first) { return Array::fromElements(takeFrom(elements_, first)); }

  [[nodiscard]] std::size_t entryCount() const noexcept { return entries_.size(); }
  /// A key whose value is given next, after all that stands in the value.
  void addKey(std::string key) { entries_.emplace_back(std::move(key), PropertyList()); }
  void setValueOfLastKey(PropertyList value) { entries_.back().second = std::move(value); }
  [[nodiscard]] Dictionary takeDictionary(std::size_t first, Dictionary::Duplicates duplicates) {
    return Dictionary::fromEntries(takeFrom(entries_, first), duplicates);
  }

 private:
  template <typename Child>
  [[nodiscard]] static std::vector<Child> takeFrom(std::vector<Child>& stack, std::size_t first) {
    const auto begin = stack.begin() + static_cast<std::ptrdiff_t>(first);
    std::vector<Child> children(std::make_move_iterator(begin), std::make_move_iterator(stack.end()));
    stack.erase(begin, stack.end());
    return children;
  }

  std::vector<PropertyList> elements_;
  std::vector<Dictionary::Entry> entries_;
};

}  // namespace corvane
