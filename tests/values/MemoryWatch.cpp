#include "values/MemoryWatch.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

struct Account {
  bool open = false;
  std::size_t limit = 0;
  std::size_t allocationsLeft = 0;
  std::ptrdiff_t taken = 0;  // may fall below zero: what was there before can be freed
  std::ptrdiff_t peak = 0;
  bool refused = false;
};
Account account;

/// What the allocator keeps beside a block.
constexpr std::ptrdiff_t kHeader = 8;
std::ptrdiff_t sizeOf(void* block) {
  return static_cast<std::ptrdiff_t>(::malloc_usable_size(block)) + kHeader;
}

void* take(std::size_t size) {
  if (account.open) {
    const bool tooMuch = account.taken > 0 && static_cast<std::size_t>(account.taken) > account.limit;
    if (account.allocationsLeft == 0 || tooMuch || size > account.limit) {
      account.refused = true;
      throw std::bad_alloc();
    }
    --account.allocationsLeft;
  }
  void* const block = std::malloc(std::max<std::size_t>(size, 1));  // NOLINT(cppcoreguidelines-no-malloc)
  if (block == nullptr) throw std::bad_alloc();
  if (account.open) account.peak = std::max(account.peak, account.taken += sizeOf(block));
  return block;
}

void giveBack(void* block) noexcept {
  if (block != nullptr && account.open) account.taken -= sizeOf(block);
  std::free(block);  // NOLINT(cppcoreguidelines-no-malloc)
}

}  // namespace

void* operator new(std::size_t size) { return take(size); }
void* operator new[](std::size_t size) { return take(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return take(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* block) noexcept { giveBack(block); }
void operator delete(void* block, std::size_t) noexcept { giveBack(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { giveBack(block); }
void operator delete[](void* block) noexcept { giveBack(block); }
void operator delete[](void* block, std::size_t) noexcept { giveBack(block); }

namespace corvane::test {

MemoryWatch::MemoryWatch(std::size_t bytes, std::size_t allocations) {
  account = {.open = true, .limit = bytes, .allocationsLeft = allocations};
}
MemoryWatch::~MemoryWatch() { account.open = false; }
std::size_t MemoryWatch::peak() const { return static_cast<std::size_t>(account.peak); }
bool MemoryWatch::refused() const { return account.refused; }

}  // namespace corvane::test
