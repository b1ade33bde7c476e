// How the fuzz targets that play a session read what to do next from their input.
#pragma once

#include <cstdint>
#include <string_view>

namespace corvane::fuzz {

/// Takes the first byte off; 0 when none is left.
inline std::uint8_t takeByte(std::string_view& bytes) {
  if (bytes.empty()) return 0;
  const auto first = static_cast<std::uint8_t>(bytes.front());
  bytes.remove_prefix(1);
  return first;
}

}  // namespace corvane::fuzz
