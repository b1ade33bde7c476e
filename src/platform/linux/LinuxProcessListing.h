// The running processes from the system's process table; no program is started for them.
#pragma once

#include "platform/ProcessListing.h"

namespace corvane {

class LinuxProcessListing : public ProcessListing {
 public:
  [[nodiscard]] std::optional<std::string> listProcesses() override;
};

}  // namespace corvane
