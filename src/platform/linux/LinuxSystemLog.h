// The system log of Linux (the journal where there is one) and, for whoever started the pane from a terminal,
// standard error. Each call is one line in both.
#pragma once

#include "platform/SystemLog.h"

namespace corvane {

class LinuxSystemLog : public SystemLog {
 public:
  /// The descriptor that stands for standard error; it stays the caller's. -1: the system log alone.
  explicit LinuxSystemLog(int standardError = 2) : standardError_(standardError) {}
  void write(std::string_view line) override;

 private:
  int standardError_;
};

}  // namespace corvane
