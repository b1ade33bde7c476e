// How long a test waits for something that is to happen: until then it hangs, whatever else the machine is
// doing. When all is well a wait ends long before, so nothing is gained by a shorter one.
#pragma once

#include <chrono>

namespace corvane::test {

inline constexpr double kHangSeconds = 60;
inline constexpr int kHangMilliseconds = 60'000;

}  // namespace corvane::test
