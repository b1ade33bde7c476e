// Asking for administrator rights through polkit: one start of the root helper by polkit's launcher, from the
// user's password dialog to the helper's hello. Owned by the authorization services. Nothing of it blocks but
// its withdrawal.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <sys/types.h>

#include "platform/Authorization.h"
#include "platform/SystemLog.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/LinuxRunLoop.h"
#include "posix/FileDescriptor.h"

namespace corvane {

class PolkitAsking {
 public:
  struct Options {
    std::string root;
    std::string helper;
    std::string pkexec;
    double answerDeadline = 20;  // seconds
  };

  PolkitAsking(LinuxRunLoop& runLoop, SystemLog& log, Options options, AuthorizationServices::Done done);
  /// Withdraws the question when it is still open; nobody is answered then. Waits for at most a second, so
  /// that the dialog does not outlive the pane.
  ~PolkitAsking();
  PolkitAsking(const PolkitAsking&) = delete;
  PolkitAsking& operator=(const PolkitAsking&) = delete;

  void start();
  /// Whether the answer is still to come.
  [[nodiscard]] bool isOpen() const { return static_cast<bool>(done_); }

 private:
  bool launch(std::string& problem);
  void socketReady();
  void childEnded();
  void answer(AuthorizationOutcome outcome, std::string_view problem,
              std::unique_ptr<Authorization> rights = nullptr);

  LinuxRunLoop& runLoop_;
  SystemLog& log_;
  Options options_;
  AuthorizationServices::Done done_;
  ChildProcess child_;
  FileDescriptor socket_;
  FileDescriptor complaints_;  // the launcher's standard error
  std::unique_ptr<RunLoop::Source> socketSource_;
  std::unique_ptr<RunLoop::Source> childSource_;
  std::unique_ptr<RunLoop::Source> deadline_;
};

}  // namespace corvane
