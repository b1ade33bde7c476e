#include "platform/linux/LinuxAuthorization.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include "helper/CommandShapes.h"
#include "platform/Housekeeping.h"
#include "platform/linux/LinuxRights.h"
#include "platform/linux/PolkitAsking.h"
#include "platform/linux/SyntaxCheck.h"
#include "posix/SystemError.h"

namespace corvane {
namespace {

constexpr const char* kShell = "/bin/sh";

LaunchStatus statusOf(helper::Outcome outcome) {
  switch (outcome) {
    case helper::Outcome::Started:
      return launch_status::kStarted;
    case helper::Outcome::Denied:
      return launch_status::kDenied;
    case helper::Outcome::Missing:
      return launch_status::kNothingToRead;
    case helper::Outcome::Failed:
      break;
  }
  return launch_status::kToolExecuteFailure;
}

std::string_view headingOf(helper::Outcome outcome) {
  switch (outcome) {
    case helper::Outcome::Started:
      return "Root command failed: ";
    case helper::Outcome::Denied:
      return "Root command refused: ";
    case helper::Outcome::Failed:
    case helper::Outcome::Missing:
      break;
  }
  return "Root command not started: ";
}

LaunchOutcome carryOut(Authorization* authorization, const helper::Request& request, SystemLog& log,
                       helper::SupervisedRun& run) {
  auto* rights = dynamic_cast<LinuxRights*>(authorization);
  if (rights == nullptr) return {launch_status::kInvalidAuthorization, "the lock is closed"};
  auto answer = rights->carryOut(request);
  if (!answer.reply.message.empty()) {
    log.write(std::string(headingOf(answer.reply.outcome)) + request.program + ": " + answer.reply.message);
  }
  run = std::move(answer.run);
  LaunchOutcome outcome{statusOf(answer.reply.outcome), std::move(answer.reply.message)};
  if (answer.reply.exitStatus != 0 && outcome.reason.empty()) {
    outcome.reason = "exit status " + std::to_string(answer.reply.exitStatus);
  }
  return outcome;
}

/// Why nothing can be written below the root prefix; empty when something can. Files are staged with the
/// process's own rights also where a helper copies them.
std::string objectionToWriting(const std::string& root) {
  const auto staging = root + std::string(helper::kStagingFolder);
  const auto client = root + std::string(helper::kClientFolder);
  if (::faccessat(AT_FDCWD, (staging + "/.").c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    return staging + ": " + systemErrorText(errno);
  }
  if (::faccessat(AT_FDCWD, client.c_str(), W_OK, AT_EACCESS) != 0 && errno == EROFS) {
    return client + ": " + systemErrorText(EROFS);
  }
  return {};
}

/// Whether the user needs no other rights than their own.
bool needsNoRights(const helper::RootTree& tree) { return ::geteuid() == 0 || tree.belongsTo(::geteuid()); }

}  // namespace

LinuxAuthorization::LinuxAuthorization(LinuxRunLoop& runLoop, SystemLog& log, Options options)
    : runLoop_(runLoop), log_(log), options_(std::move(options)) {}

LinuxAuthorization::~LinuxAuthorization() = default;

bool LinuxAuthorization::isDirect() const {
  const auto root = helper::normalizedRoot(options_.root);
  return root && needsNoRights(helper::RootTree(*root, ::geteuid()));
}

std::string LinuxAuthorization::installationFault() {
  if (isDirect()) return {};
  return corvane::installationFault(options_.helper, options_.action);
}

void LinuxAuthorization::requestRights(std::string_view right, Done done) {
  const auto root = helper::normalizedRoot(options_.root);
  // What is looked at here is what is worked on.
  auto own = root ? std::make_unique<DirectRights>(helper::Place{*root, options_.helper}) : nullptr;
  const bool isDirect = own && needsNoRights(own->tree());
  const auto refuse = [&](AuthorizationOutcome outcome, std::string reason) {
    log_.write(std::string(kNoRights) + reason);
    done({outcome, nullptr, std::move(reason)});
  };
  if (right != kAdministratorRight) {
    refuse(AuthorizationOutcome::Unavailable, "only administrator rights can be asked for");
  } else if (!root) {
    refuse(AuthorizationOutcome::Unavailable, "the root prefix is not an absolute path");
  } else if (!isDirect && asking_ && asking_->isOpen()) {
    done({AuthorizationOutcome::Cancelled, nullptr, {}});
  } else if (std::string objection = isDirect ? own->tree().objection() : std::string(); !objection.empty()) {
    refuse(AuthorizationOutcome::Denied, std::move(objection));
  } else if (objection = objectionToWriting(*root); !objection.empty()) {
    refuse(AuthorizationOutcome::Denied, std::move(objection));
  } else if (isDirect) {
    done({AuthorizationOutcome::Granted, std::move(own), {}});
  } else {
    asking_ = std::make_unique<PolkitAsking>(runLoop_, log_,
                                             PolkitAsking::Options{.root = *root,
                                                                   .helper = options_.helper,
                                                                   .pkexec = options_.pkexec,
                                                                   .answerDeadline = options_.answerDeadline},
                                             std::move(done));
    asking_->start();
  }
}

LaunchOutcome LinuxAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                                        const std::vector<std::string>& arguments) {
  helper::SupervisedRun none;
  helper::Request request{.program = tool, .arguments = arguments, .wantsOutput = false};
  // No shell runs: the two texts of the housekeeping are recognized, and done without one.
  const auto isHousekeeping = [&](std::string_view command) {
    return tool == kShell &&
           arguments == std::vector<std::string>{"-c", housekeeping::text(command, options_.root)};
  };
  if (isHousekeeping(housekeeping::kCheckSyntax)) return checkTheSyntax(authorization);
  if (isHousekeeping(housekeeping::kResetModes)) request = {.program = "/bin/chmod", .arguments = {"644"}};
  return carryOut(authorization, request, log_, none);
}

LaunchOutcome LinuxAuthorization::checkTheSyntax(Authorization* authorization) {
  if (dynamic_cast<LinuxRights*>(authorization) == nullptr) return {launch_status::kInvalidAuthorization, {}};
  if (const auto line = checkSyntax(options_.root); !line.empty()) log_.write("Syntax check: " + line);
  return {};
}

LaunchOutcome LinuxAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                                        const std::vector<std::string>& arguments,
                                                        std::unique_ptr<OutputPipe>& output) {
  helper::SupervisedRun run;
  auto outcome =
      carryOut(authorization, {.program = tool, .arguments = arguments, .wantsOutput = true}, log_, run);
  if (outcome.status == launch_status::kStarted) {
    output = std::make_unique<RunOutput>(std::move(run), options_.waitForOutput);
  }
  return outcome;
}

}  // namespace corvane
