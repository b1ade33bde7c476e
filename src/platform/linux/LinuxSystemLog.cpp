#include "platform/linux/LinuxSystemLog.h"

#include <string>

#include <syslog.h>
#include <unistd.h>

#include "posix/LogLine.h"

namespace corvane {
namespace {

/// What a line on standard error begins with; the system log puts the program's name there itself.
constexpr std::string_view kPrefix = "corvane-pane: ";

}  // namespace

void LinuxSystemLog::write(std::string_view line) {
  const std::string escaped = escapedLogLine(line);
  ::syslog(LOG_USER | LOG_ERR, "%s", escaped.c_str());
  if (standardError_ < 0) return;
  const std::string text = std::string(kPrefix) + escaped + "\n";
  // One call, so that lines of two programs on one terminal do not mix. There is nobody to tell when it
  // fails.
  if (::write(standardError_, text.data(), text.size()) < 0) return;
}

}  // namespace corvane
