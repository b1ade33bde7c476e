// Programs started without a shell, for their standard output.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct OutputLimits {
  double seconds = 10;                               // for the whole run
  std::size_t bytes = std::size_t{8} * 1024 * 1024;  // of output
};

/// What the program, an absolute path, has printed when it has ended; nothing when it could not be started.
/// It runs as the user, reads nothing from us, inherits no descriptor, its messages go to our standard error.
/// When a limit is passed, it and what it started are killed and the answer is nothing. No zombie stays.
[[nodiscard]] std::optional<std::string> outputOf(const std::string& program,
                                                  const std::vector<std::string>& arguments,
                                                  const OutputLimits& limits = {});

}  // namespace corvane
