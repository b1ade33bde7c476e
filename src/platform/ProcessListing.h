// The running processes, as the text that "/bin/ps" prints of them.
#pragma once

#include <optional>
#include <string>

namespace corvane {

class ProcessListing {
 public:
  virtual ~ProcessListing() = default;
  /// What the arguments "axco" and "pid" ask of "/bin/ps": a heading, then the id of one process a line.
  /// Nothing when it cannot be had. Made anew on each call, which waits for it.
  [[nodiscard]] virtual std::optional<std::string> listProcesses() = 0;
};

}  // namespace corvane
