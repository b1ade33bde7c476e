#include "platform/linux/LinuxAuthorization.h"

#include <sys/stat.h>
#include <unistd.h>

#include "helper/CommandShapes.h"
#include "platform/linux/LinuxRights.h"
#include "platform/linux/PolkitAsking.h"

namespace corvane {
namespace {

constexpr std::string_view kAdministratorRight = "system.privilege.admin";

LaunchStatus statusOf(helper::Outcome outcome) {
  switch (outcome) {
    case helper::Outcome::Started:
      return launch_status::kStarted;
    case helper::Outcome::Denied:
      return launch_status::kDenied;
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

}  // namespace

LinuxAuthorization::LinuxAuthorization(LinuxRunLoop& runLoop, SystemLog& log, Options options)
    : runLoop_(runLoop), log_(log), options_(std::move(options)) {}

LinuxAuthorization::~LinuxAuthorization() = default;

bool LinuxAuthorization::isDirect() const {
  if (::geteuid() == 0) return true;
  struct stat attributes {};
  const auto client = options_.root + std::string(helper::kClientFolder);
  const auto top = options_.root.empty() ? std::string("/") : options_.root;
  if (::stat(client.c_str(), &attributes) != 0 && ::stat(top.c_str(), &attributes) != 0) return false;
  return attributes.st_uid == ::geteuid();
}

void LinuxAuthorization::requestRights(std::string_view right, Done done) {
  const auto root = helper::normalizedRoot(options_.root);
  if (right != kAdministratorRight || !root) {
    log_.write(root ? "Only administrator rights can be asked for"
                    : "The root prefix is not an absolute path");
    done(AuthorizationOutcome::Unavailable, nullptr);
  } else if (isDirect()) {
    auto rights = std::make_unique<DirectRights>(helper::Place{*root, options_.helper});
    if (const auto objection = rights->objection(); !objection.empty()) {
      log_.write(std::string(kNoRights) + objection);
      done(AuthorizationOutcome::Denied, nullptr);
      return;
    }
    done(AuthorizationOutcome::Granted, std::move(rights));
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
  return carryOut(authorization, {.program = tool, .arguments = arguments, .wantsOutput = false}, log_, none);
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
