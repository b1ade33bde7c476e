// Programs started without a shell, for their standard output.
#pragma once

#include <cstddef>

#include "platform/ProcessOutput.h"

namespace corvane {

class PosixProcessOutput : public ProcessOutput {
 public:
  struct Limits {
    double seconds = 10;                               // for the whole run
    std::size_t bytes = std::size_t{8} * 1024 * 1024;  // of output
  };

  PosixProcessOutput() = default;
  explicit PosixProcessOutput(Limits limits) : limits_(limits) {}

  /// The program is an absolute path. It reads nothing from us, inherits no descriptor, its messages go to
  /// our standard error. When a limit is passed, it and what it started are killed and the answer is nothing.
  /// No zombie stays.
  [[nodiscard]] std::optional<std::string> outputOf(const std::string& program,
                                                    const std::vector<std::string>& arguments) override;

 private:
  Limits limits_;
};

}  // namespace corvane
