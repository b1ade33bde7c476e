// Watches what this program takes from the general allocator, and can make it run dry. The values' tests
// replace the allocator for that (MemoryWatch.cpp).
#pragma once

#include <cstddef>
#include <limits>

namespace corvane::test {

class MemoryWatch {
 public:
  static constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

  /// From now on, until this object ends, allocations fail that would bring what is taken above `bytes`, and
  /// from the one on that comes after `allocations` others. One watch at a time.
  explicit MemoryWatch(std::size_t bytes = kUnlimited, std::size_t allocations = kUnlimited);
  MemoryWatch(const MemoryWatch&) = delete;
  MemoryWatch& operator=(const MemoryWatch&) = delete;
  ~MemoryWatch();

  /// The most that was taken at one time since the beginning, with what the allocator itself needs.
  [[nodiscard]] std::size_t peak() const;
  /// Whether an allocation was refused.
  [[nodiscard]] bool refused() const;
};

}  // namespace corvane::test
