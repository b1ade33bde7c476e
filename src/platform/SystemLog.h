// The system log, as the pane writes to it: one line per internal failure.
#pragma once

#include <string_view>

namespace corvane {

class SystemLog {
 public:
  virtual ~SystemLog() = default;
  /// Writes one line. Line breaks and control characters inside it must not be able to forge a second line.
  virtual void write(std::string_view line) = 0;
};

}  // namespace corvane
