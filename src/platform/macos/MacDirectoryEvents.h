// Directory-change streams by the file-system events of macOS. Paths come as the system spells them, with
// links resolved.
#pragma once

#include "platform/DirectoryEvents.h"

namespace corvane {

class MacDirectoryEvents final : public DirectoryEvents {
 public:
  [[nodiscard]] std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> directories,
                                                                   double latency,
                                                                   Callback callback) override;
};

}  // namespace corvane
