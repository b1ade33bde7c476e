#include "helper/CommandRunner.h"

#include <system_error>

namespace corvane::helper {
namespace {

/// The shell's exit status for a program that does not exist.
constexpr int kCommandNotFound = 127;

}  // namespace

/// One overload for each command.
struct CommandRunner::Dispatch {
  CommandRunner& runner;
  const RootTree& tree = runner.tree_;

  static Answer only(Reply reply) { return {.reply = std::move(reply), .run = {}}; }
  static Reply notStarted(const std::string& program, int error) {
    return {.outcome = Outcome::Failed, .message = program + ": " + std::generic_category().message(error)};
  }

  Answer operator()(const Refusal& refusal) const {
    return only({.outcome = Outcome::Denied, .message = refusal.reason});
  }
  Answer operator()(const RemoveStaging& command) const { return only(tree.removeStaging(command.name)); }
  Answer operator()(const WriteTarget& command) const {
    return only(tree.writeTarget(command.name, command.folder));
  }
  Answer operator()(const ReadSource& command) const {
    return only(tree.readSource(command.folder, command.name));
  }
  Answer operator()(const MakeFolders& command) const { return only(tree.makeFolders(command.folder)); }

  Answer operator()(const Housekeeping& command) const {
    for (const auto folder : kHousekeepingFolders) {
      if (auto reply = tree.checkFolder(std::string(folder)); reply.outcome != Outcome::Started)
        return only(reply);
    }
    const Program shell{"/bin/sh", {"-c", housekeepingText(command.kind, runner.place_.root)}};
    const auto ending = runToEnd(shell, kToolDeadline, runner.hangup_);
    if (ending.error != 0) return only(notStarted(shell.path, ending.error));
    if (ending.timedOut || ending.abandoned) {
      return only({.outcome = Outcome::Failed, .message = "the command did not end and was killed"});
    }
    // Outside the client's own system there is no syntax checker. The check changes nothing, so nothing is
    // missing.
    const bool checkerIsAbsent =
        command.kind == Housekeeping::Kind::CheckSyntax && ending.exitStatus == kCommandNotFound;
    if (ending.exitStatus == 0 || checkerIsAbsent) return only({});
    return only(
        {.exitStatus = ending.exitStatus,
         .message = shell.arguments.back() + " ended with exit status " + std::to_string(ending.exitStatus)});
  }

  Answer operator()(const RunScript& command) const {
    const auto name = command.script.substr(kClientFolder.size() + 1);
    if (auto reply = tree.checkProgram(std::string(kClientFolder), name, false);
        reply.outcome != Outcome::Started) {
      return only(reply);
    }
    Program bash{"/bin/bash", {runner.place_.root + command.script}};
    bash.arguments.insert(bash.arguments.end(), command.arguments.begin(), command.arguments.end());
    const int error = startDetached(bash);
    return only(error == 0 ? Reply{} : notStarted(bash.path, error));
  }

  Answer operator()(const ValidatePlugin& command) const {
    if (auto reply = tree.checkProgram(std::string(kPluginsFolder), command.executable, true);
        reply.outcome != Outcome::Started) {
      return only(reply);
    }
    const auto path = runner.place_.root + std::string(kPluginsFolder) + "/" + command.executable;
    auto run = startSupervised({path, command.arguments}, runner.lifeline_.readEnd.get());
    if (run.error != 0) return only(notStarted(path, run.error));
    return {.reply = {}, .run = std::move(run)};
  }
};

CommandRunner::CommandRunner(Place place, Caution caution, int hangup)
    : place_(std::move(place)), tree_(place_.root, caution), hangup_(hangup), lifeline_(makePipe()) {}

Answer CommandRunner::carryOut(const Request& request) {
  return std::visit(Dispatch{*this}, recognize(request, place_));
}

}  // namespace corvane::helper
