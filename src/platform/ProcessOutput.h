// Programs run as the user for the sake of what they print.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

class ProcessOutput {
 public:
  virtual ~ProcessOutput() = default;
  /// Runs the program to the end of its standard output and answers with it; nothing when it could not be
  /// started or did not end in reasonable time. Blocks.
  [[nodiscard]] virtual std::optional<std::string> outputOf(const std::string& program,
                                                            const std::vector<std::string>& arguments) = 0;
};

}  // namespace corvane
