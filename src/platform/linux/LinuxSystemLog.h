// The system log of Linux (the journal where there is one) and, for whoever started the pane from a terminal,
// standard error. Each call is one line in both.
#pragma once

#include <string>
#include <string_view>

#include "platform/SystemLog.h"

namespace corvane {

/// The line with everything that could end it, hide part of it or start another one written out: control
/// characters (of both sets), line and paragraph separators and marks that change the direction of writing as
/// "\u{2028}", bytes that are not UTF-8 as "\xFF". Cut after 4096 bytes.
[[nodiscard]] std::string escapedLogLine(std::string_view line);

class LinuxSystemLog : public SystemLog {
 public:
  /// The descriptor that stands for standard error; it stays the caller's.
  explicit LinuxSystemLog(int standardError = 2) : standardError_(standardError) {}
  void write(std::string_view line) override;

 private:
  int standardError_;
};

}  // namespace corvane
