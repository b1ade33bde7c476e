// Administrator rights: asking the user for them, and starting programs as root with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/Result.h"

namespace corvane {

/// The right that the lock asks for.
inline constexpr std::string_view kAdministratorRight = "system.privilege.admin";

/// The status of starting a program as root, by the numbers of the platform's authorization services; 0 means
/// started.
using LaunchStatus = std::int32_t;
namespace launch_status {
inline constexpr LaunchStatus kStarted = 0;
inline constexpr LaunchStatus kNothingToRead = -43;            // what was to be copied for reading is missing
inline constexpr LaunchStatus kInvalidAuthorization = -60002;  // the lock is closed
inline constexpr LaunchStatus kDenied = -60005;                // the helper refuses this command
inline constexpr LaunchStatus kToolExecuteFailure = -60031;    // the program could not be started
}  // namespace launch_status

/// What became of a program that was started as root.
struct [[nodiscard]] LaunchOutcome {
  LaunchStatus status = launch_status::kStarted;
  /// Why it was not started or, of a tool that has ended, why it failed, where the platform knows.
  std::string reason;
  /// Done, or why not in words.
  Result result() const {
    return {status == launch_status::kStarted || !reason.empty() ? reason
                                                                 : "status " + std::to_string(status)};
  }
};

/// The standard output of a program that runs as root.
class OutputPipe {
 public:
  struct ReadOutcome {
    std::size_t bytes = 0;
    bool error = false;
    bool endOfFile = false;
  };
  virtual ~OutputPipe() = default;
  /// One read of at most `capacity` bytes; blocks until output comes or the program has closed it.
  [[nodiscard]] virtual ReadOutcome read(char* buffer, std::size_t capacity) = 0;
};

/// Rights that the user granted. Destroying it gives them back.
class Authorization {
 public:
  virtual ~Authorization() = default;
  /// Called at most once, from the run loop, when the rights ended by themselves (the root helper has died).
  std::function<void()> lost;
  /// Calls it, for the rights themselves: whoever is told may destroy them in this call.
  void tellLost() {
    const auto tell = std::exchange(lost, nullptr);
    if (tell) tell();
  }
};

enum class AuthorizationOutcome {
  Granted,
  Denied,
  Cancelled,    // by the user: nothing is to be reported
  Unavailable,  // this machine can't ask, or the helper is missing
};

struct AuthorizationAnswer {
  AuthorizationOutcome outcome = AuthorizationOutcome::Unavailable;
  std::unique_ptr<Authorization> rights;  // when granted
  std::string reason;                     // when denied or unavailable, in words for a person
};

class AuthorizationServices {
 public:
  using Done = std::function<void(AuthorizationAnswer)>;

  virtual ~AuthorizationServices() = default;
  /// True when the files belong to the user and commands are carried out without asking for rights.
  [[nodiscard]] virtual bool isDirect() const = 0;
  /// What of the installation is missing or does not belong together, so that the rights may not be had, in
  /// words for a person; empty when nothing is, or when none of it is needed. Blocks for a moment.
  [[nodiscard]] virtual std::string installationFault() { return {}; }
  /// Asks the user for the right. Does not block; `done` is called once, from the run loop (or at once in
  /// direct mode).
  virtual void requestRights(std::string_view right, Done done) = 0;
  /// Starts the tool as root with these rights (none: the lock is closed). A system tool has ended when this
  /// returns.
  virtual LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                              const std::vector<std::string>& arguments) = 0;
  /// The same with a pipe from the tool's standard output; `output` is set when the status is 0.
  virtual LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                              const std::vector<std::string>& arguments,
                                              std::unique_ptr<OutputPipe>& output) = 0;
};

}  // namespace corvane
