// The running processes from the system's own tool.
#pragma once

#include "platform/ProcessListing.h"

namespace corvane {

class MacProcessListing : public ProcessListing {
 public:
  [[nodiscard]] std::optional<std::string> listProcesses() override;
};

}  // namespace corvane
