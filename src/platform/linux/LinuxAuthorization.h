// Administrator rights on Linux. Where the client's tree belongs to the user, commands are carried out in the
// pane's own process; otherwise the rights are one root helper process, started through polkit when the lock
// opens and kept until it closes. The shell creates one for its platform.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Authorization.h"
#include "platform/SystemLog.h"
#include "platform/linux/Installation.h"
#include "platform/linux/LinuxRunLoop.h"

namespace corvane {

class PolkitAsking;

class LinuxAuthorization : public AuthorizationServices {
 public:
  struct Options {
    /// The root prefix, as the path table has it; with rights from polkit its path must not lead through a
    /// link.
    std::string root;
    /// The absolute path of `qlhelper`, as the bundle names it.
    std::string helper;
    std::string pkexec = "/usr/bin/pkexec";
    /// The file of the polkit action.
    std::string action = kPolkitAction;
    /// Waits until the descriptor can be read; false when the user does not want to wait any longer. A shell
    /// gives one that keeps its window alive; the default blocks.
    std::function<bool(int descriptor)> waitForOutput = {};
    /// How long the helper may take for one answer, in seconds.
    double answerDeadline = 20;
  };

  LinuxAuthorization(LinuxRunLoop& runLoop, SystemLog& log, Options options);
  ~LinuxAuthorization() override;
  LinuxAuthorization(const LinuxAuthorization&) = delete;
  LinuxAuthorization& operator=(const LinuxAuthorization&) = delete;

  /// Whether the client's folder, or the root prefix where that is missing, belongs to the user, and no link
  /// leads there; always true for root.
  [[nodiscard]] bool isDirect() const override;
  [[nodiscard]] std::string installationFault() override;
  /// In direct mode the right is denied in a tree that others than root and the user can change, where no
  /// file can be staged, and where the client's folder lies on a file system that is read only. Rights are
  /// asked for one at a time; a second asking before the first was answered is answered Cancelled.
  void requestRights(std::string_view right, Done done) override;
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments) override;
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments,
                                      std::unique_ptr<OutputPipe>& output) override;

 private:
  [[nodiscard]] LaunchOutcome checkTheSyntax(Authorization* authorization);

  LinuxRunLoop& runLoop_;
  SystemLog& log_;
  Options options_;
  std::unique_ptr<PolkitAsking> asking_;
};

}  // namespace corvane
