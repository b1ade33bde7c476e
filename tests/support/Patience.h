// How long a test waits for something that is to happen: until then it hangs, whatever else the machine is
// doing. When all is well a wait ends long before, so nothing is gained by a shorter one.
#pragma once

#include <chrono>
#include <functional>

#include <poll.h>

namespace corvane::test {

inline constexpr double kHangSeconds = 60;
inline constexpr int kHangMilliseconds = 60'000;

/// Waits until the condition holds; false when it never does.
inline bool waitUntil(const std::function<bool()>& condition) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(kHangMilliseconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    ::poll(nullptr, 0, 5);
  }
  return true;
}

}  // namespace corvane::test
