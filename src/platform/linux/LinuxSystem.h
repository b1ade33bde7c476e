// The services of Linux, composed once for every shell that runs there. The shell brings its run loop and
// what its toolkit gives, and keeps both longer than this.
#pragma once

#include <functional>
#include <string>

#include "platform/Platform.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/LinuxDirectoryEvents.h"
#include "platform/linux/LinuxFileEventQueues.h"
#include "platform/linux/LinuxProcessListing.h"
#include "platform/linux/LinuxRunLoop.h"
#include "platform/linux/LinuxSystemLog.h"
#include "platform/linux/LinuxTextComparison.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"

namespace corvane {

class LinuxSystem {
 public:
  struct Options {
    /// The root prefix of the client's files, empty for the system's own.
    std::string root;
    /// As in `LinuxAuthorization::Options`.
    std::function<bool(int descriptor)> waitForOutput = {};
    /// Takes the lines in place of the system log; must outlive the system.
    SystemLog* log = nullptr;
  };

  LinuxSystem(LinuxRunLoop& runLoop, const ToolkitServices& toolkit, Options options);
  LinuxSystem(const LinuxSystem&) = delete;
  LinuxSystem& operator=(const LinuxSystem&) = delete;

  /// All the services, for the core.
  [[nodiscard]] const Platform& platform() const { return platform_; }
  /// Whether the lock opens without asking for rights.
  [[nodiscard]] bool isDirect() const { return authorization_.isDirect(); }

 private:
  LinuxSystemLog systemLog_;
  SystemLog& log_;
  PosixFiles files_;
  PosixPropertyListFiles propertyLists_;
  LinuxProcessListing processes_;
  LinuxTextComparison texts_;
  LinuxDirectoryEvents directoryEvents_;
  LinuxFileEventQueues fileEventQueues_;
  LinuxAuthorization authorization_;
  Platform platform_;
};

}  // namespace corvane
