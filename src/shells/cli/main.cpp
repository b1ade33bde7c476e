#include <csignal>
#include <filesystem>
#include <memory>
#include <system_error>

#include "Arguments.h"
#include "ExitStatus.h"
#include "Interruption.h"
#include "Output.h"
#include "Session.h"
#include "Tree.h"
#include "commands/Commands.h"
#include "posix/Signals.h"
#include "values/Text.h"

namespace {

using namespace corvane;
using namespace corvane::cli;

/// The first status that is not good is the one of the program.
void note(int& status, int next) {
  if (status == kDone) status = next;
}

bool needsAllTreesAtOnce(Command command) { return command == Command::Watch || command == Command::Check; }

/// The trees of the folders that are there; complains of the others.
std::vector<std::unique_ptr<Tree>> makeTrees(const Session& session, int& status) {
  std::vector<std::unique_ptr<Tree>> trees;
  const auto& roots = session.arguments.roots;
  if (roots.empty()) trees.push_back(std::make_unique<Tree>(session, std::string(), std::string()));
  for (const std::string& root : roots) {
    std::error_code error;
    const std::string folder = std::filesystem::canonical(root, error);
    if (error || !std::filesystem::is_directory(folder, error)) {
      Output::complain({}, formatText("--root: \"%@\" is not a folder", {root}));
      note(status, kNoClient);
      continue;
    }
    trees.push_back(std::make_unique<Tree>(session, folder == "/" ? std::string() : folder,
                                           roots.size() > 1 ? folder : std::string()));
  }
  return trees;
}

int runAll(const Session& session) {
  int status = kDone;
  auto trees = makeTrees(session, status);
  if (trees.empty()) return status;
  if (needsAllTreesAtOnce(session.arguments.command)) {
    std::vector<Tree*> all;
    for (const auto& tree : trees) all.push_back(tree.get());
    note(status, session.arguments.command == Command::Watch ? watchTrees(session, all)
                                                             : checkDefinitions(session, all));
    return status;
  }
  for (auto& tree : trees) {
    if (session.interruption) return kOfSignal + session.interruption.signal();
    note(status, runCommand(session, *tree));
    note(status, session.output.flush());
    tree.reset();  // gives its rights back
    if (session.output.isClosed()) break;
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  prepareSignals();
  const Arguments arguments = parseArguments(argc, argv);
  const bool severalDocuments = arguments.command == Command::Watch || arguments.roots.size() > 1;
  Output output({.json = arguments.json, .oneLineEach = severalDocuments});
  if (!arguments.error.empty()) {
    Output::complain({}, arguments.error);
    return kWrongUsage;
  }
  const Interruption interruption;
  PollRunLoop runLoop;
  int status = kDone;
  if (arguments.output.empty()) {
    status = runAll({arguments, output, interruption, runLoop});
  } else {
    output.text(arguments.output);
  }
  const int written = output.flush();
  if (written == kOutputFailed) Output::complain({}, "standard output cannot be written");
  note(status, written);
  // The end of the watching is the end of the watching.
  return arguments.command == Command::Watch && status == kOutputClosed ? kDone : status;
}
