// The system's own text for an error number.
#pragma once

#include <string>
#include <system_error>

namespace corvane {

[[nodiscard]] inline std::string systemErrorText(int number) {
  return std::generic_category().message(number);
}

}  // namespace corvane
