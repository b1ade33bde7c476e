#include "platform/linux/LinuxAuthorization.h"

#include <unistd.h>

#include "helper/CommandShapes.h"
#include "platform/Housekeeping.h"
#include "platform/linux/LinuxRights.h"
#include "platform/linux/PolkitAsking.h"
#include "platform/linux/SyntaxCheck.h"

namespace corvane {
namespace {

constexpr const char* kShell = "/bin/sh";
constexpr std::string_view kAdministratorRight = "system.privilege.admin";

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

LaunchStatus carryOut(Authorization* authorization, const helper::Request& request, SystemLog& log,
                      helper::SupervisedRun& run) {
  auto* rights = dynamic_cast<LinuxRights*>(authorization);
  if (rights == nullptr) return launch_status::kInvalidAuthorization;
  auto answer = rights->carryOut(request);
  if (!answer.reply.message.empty()) {
    log.write(std::string(headingOf(answer.reply.outcome)) + request.program + ": " + answer.reply.message);
  }
  run = std::move(answer.run);
  return statusOf(answer.reply.outcome);
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

void LinuxAuthorization::requestRights(std::string_view right, Done done) {
  const auto root = helper::normalizedRoot(options_.root);
  // What is looked at here is what is worked on.
  auto own = root ? std::make_unique<DirectRights>(helper::Place{*root, options_.helper}) : nullptr;
  if (right != kAdministratorRight || !root) {
    log_.write(root ? "Only administrator rights can be asked for"
                    : "The root prefix is not an absolute path");
    done(AuthorizationOutcome::Unavailable, nullptr);
  } else if (needsNoRights(own->tree())) {
    if (const auto objection = own->tree().objection(); !objection.empty()) {
      log_.write(std::string(kNoRights) + objection);
      done(AuthorizationOutcome::Denied, nullptr);
      return;
    }
    done(AuthorizationOutcome::Granted, std::move(own));
  } else if (asking_ && asking_->isOpen()) {
    done(AuthorizationOutcome::Cancelled, nullptr);
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

LaunchStatus LinuxAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
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

LaunchStatus LinuxAuthorization::checkTheSyntax(Authorization* authorization) {
  if (dynamic_cast<LinuxRights*>(authorization) == nullptr) return launch_status::kInvalidAuthorization;
  if (const auto line = checkSyntax(options_.root); !line.empty()) log_.write("Syntax check: " + line);
  return launch_status::kStarted;
}

LaunchStatus LinuxAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                                       const std::vector<std::string>& arguments,
                                                       std::unique_ptr<OutputPipe>& output) {
  helper::SupervisedRun run;
  const auto status =
      carryOut(authorization, {.program = tool, .arguments = arguments, .wantsOutput = true}, log_, run);
  if (status == launch_status::kStarted) {
    output = std::make_unique<RunOutput>(std::move(run), options_.waitForOutput);
  }
  return status;
}

}  // namespace corvane
