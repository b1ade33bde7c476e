#include "helper/CommandRunner.h"

#include "posix/SystemError.h"

namespace corvane::helper {

/// One overload for each command.
struct CommandRunner::Dispatch {
  CommandRunner& runner;
  const RootTree& tree = runner.tree_;

  static Reply notStarted(const std::string& program, int error) {
    if (error == 0) return {};
    return {.outcome = Outcome::Failed, .message = program + ": " + systemErrorText(error)};
  }

  Answer operator()(const Refusal& refusal) const {
    return {{.outcome = Outcome::Denied, .message = refusal.reason}, {}};
  }
  Answer operator()(const RemoveStaging& command) const { return {tree.removeStaging(command.name), {}}; }
  Answer operator()(const WriteTarget& command) const {
    return {tree.writeTarget(command.name, command.folder), {}};
  }
  Answer operator()(const ReadSource& command) const {
    return {tree.readSource(command.folder, command.name), {}};
  }
  Answer operator()(const MakeFolders& command) const { return {tree.makeFolders(command.folder), {}}; }
  Answer operator()(const ResetModes& /*command*/) const { return {tree.resetModes(), {}}; }

  Answer operator()(const RunScript& command) const {
    const auto name = command.script.substr(kClientFolder.size() + 1);
    auto reply = tree.checkProgram(std::string(kClientFolder), name, false);
    if (reply.outcome != Outcome::Started) return {std::move(reply), {}};
    Program bash{"/bin/bash", {runner.place_.root + command.script}};
    bash.arguments.insert(bash.arguments.end(), command.arguments.begin(), command.arguments.end());
    return {notStarted(bash.path, startDetached(bash)), {}};
  }

  Answer operator()(const ValidatePlugin& command) const {
    auto reply = tree.checkProgram(std::string(kPluginsFolder), command.executable, true);
    if (reply.outcome != Outcome::Started) return {std::move(reply), {}};
    const auto path = runner.place_.root + std::string(kPluginsFolder) + "/" + command.executable;
    auto run = startSupervised({path, command.arguments}, runner.lifeline_.readEnd.get());
    return {notStarted(path, run.error), std::move(run)};
  }
};

CommandRunner::CommandRunner(Place place, uid_t user, TreeObservers observers)
    : place_(std::move(place)), tree_(place_.root, user, std::move(observers)), lifeline_(makePipe()) {}

Answer CommandRunner::carryOut(const Request& request) {
  return std::visit(Dispatch{*this}, recognize(request, place_));
}

}  // namespace corvane::helper
