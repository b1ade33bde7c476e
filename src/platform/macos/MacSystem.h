// The services of macOS, composed once for every shell that runs there. The shell brings what its toolkit
// gives and keeps that longer than this. The client's files are the system's own; nothing can change that.
#pragma once

#include "platform/Platform.h"
#include "platform/macos/MacAuthorization.h"
#include "platform/macos/MacDirectoryEvents.h"
#include "platform/macos/MacFileEventQueues.h"
#include "platform/macos/MacProcessListing.h"
#include "platform/macos/MacRunLoop.h"
#include "platform/macos/MacSystemLog.h"
#include "platform/macos/MacTextComparison.h"
#include "platform/macos/SecurityCalls.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"

namespace corvane {

class MacSystem {
 public:
  explicit MacSystem(const ToolkitServices& toolkit);
  MacSystem(const MacSystem&) = delete;
  MacSystem& operator=(const MacSystem&) = delete;

  /// All the services, for the core.
  [[nodiscard]] const Platform& platform() const { return platform_; }

 private:
  MacSystemLog log_;
  PosixFiles files_;
  PosixPropertyListFiles propertyLists_;
  MacProcessListing processes_;
  MacTextComparison texts_;
  MacRunLoop runLoop_;
  MacDirectoryEvents directoryEvents_;
  MacFileEventQueues fileEventQueues_;
  SecurityCalls calls_;
  MacAuthorization authorization_;
  Platform platform_;
};

}  // namespace corvane
