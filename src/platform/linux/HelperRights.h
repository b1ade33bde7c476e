// Rights that are one root helper process: each request is one packet to it and one back. Closing the socket,
// which destroying this does, ends the helper.
#pragma once

#include <memory>
#include <string>

#include "platform/SystemLog.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/LinuxRights.h"
#include "platform/linux/LinuxRunLoop.h"

namespace corvane {

class HelperRights : public LinuxRights {
 public:
  /// `socket` is connected to a helper that has said hello; `deadline` is for one answer, in seconds.
  HelperRights(LinuxRunLoop& runLoop, SystemLog& log, FileDescriptor socket, ChildProcess child,
               double deadline);
  ~HelperRights() override;
  HelperRights(const HelperRights&) = delete;
  HelperRights& operator=(const HelperRights&) = delete;

  /// Blocks for the helper's answer, for no longer than the deadline. A helper that is dead, silent or not to
  /// be understood fails the request and is given up.
  [[nodiscard]] helper::Answer carryOut(const helper::Request& request) override;

 private:
  void spokeUnasked();
  [[nodiscard]] helper::Answer giveUp(std::string_view why);
  void end();

  LinuxRunLoop& runLoop_;
  SystemLog& log_;
  FileDescriptor socket_;
  ChildProcess child_;
  double deadline_;
  std::unique_ptr<RunLoop::Source> source_;
};

}  // namespace corvane
