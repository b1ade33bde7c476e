// Starting programs as root with the rights that the user granted by opening the lock: system tools directly,
// the client's scripts and plug-ins through the helper tool. Part of the pane controller, the one object that
// reaches root.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/AuthorizationView.h"
#include "platform/Platform.h"

namespace corvane {

class PrivilegedExecution {
 public:
  /// Both must outlive this object.
  PrivilegedExecution(Platform& platform, AuthorizationView& authView)
      : platform_(platform), authView_(authView) {}

  /// Starts the system tool as root. The status is the launch status as a signed 16-bit number; 0 means
  /// started, and the tool has ended when this returns. The caller logs failures.
  LaunchOutcome executeWithPrivilegesArguments(const std::string& tool,
                                               const std::vector<std::string>& arguments);
  /// Runs the program as root through the helper tool; does not wait for it. Failures are logged, and
  /// answered.
  Result executeQLHelperArguments(const std::string& program, const std::vector<std::string>& arguments);
  /// Runs a plug-in, whose executable is the first argument, through the helper tool and answers with its
  /// reply: the first 1000 bytes of one read, less the last one. Codes "-1" and "-2" stand for failures;
  /// nothing is answered when the reply is not UTF-8. Blocks for that read. The separate path of the plug-in
  /// is not used.
  [[nodiscard]] std::optional<std::string> validatePluginWithArguments(
      const std::string& plugin, const std::vector<std::string>& arguments);

 private:
  Platform& platform_;
  AuthorizationView& authView_;
};

}  // namespace corvane
