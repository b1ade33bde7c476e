#include "helper/CommandRunner.h"

#include "posix/SystemError.h"

namespace corvane::helper {

/// One overload for each command.
struct CommandRunner::Dispatch {
  CommandRunner& runner;
  const RootTree& tree = runner.tree_;

  static Answer only(Reply reply) { return {.reply = std::move(reply), .run = {}}; }
  static Reply notStarted(const std::string& program, int error) {
    return {.outcome = Outcome::Failed, .message = program + ": " + systemErrorText(error)};
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

  Answer operator()(const ResetModes& /*command*/) const { return only(tree.resetModes()); }

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

CommandRunner::CommandRunner(Place place, uid_t user, TreeObservers observers)
    : place_(std::move(place)), tree_(place_.root, user, std::move(observers)), lifeline_(makePipe()) {}

Answer CommandRunner::carryOut(const Request& request) {
  return std::visit(Dispatch{*this}, recognize(request, place_));
}

}  // namespace corvane::helper
