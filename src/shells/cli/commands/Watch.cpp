// One line for each thing that the pane shows anew because a file has changed.
#include <csignal>
#include <ctime>

#include "ExitStatus.h"
#include "commands/Commands.h"

namespace corvane::cli {
namespace {

const char* nameOf(Reload what) {
  switch (what) {
    case Reload::LastUpdate:
      return "last-update";
    case Reload::LastRun:
      return "last-run";
    case Reload::ClientSettings:
      return "client-settings";
    case Reload::Automount:
      return "automount";
    case Reload::TimeMachine:
      return "time-machine";
    case Reload::StartupDisk:
      return "startup-disk";
    case Reload::Plugins:
      return "plugins";
    case Reload::Volumes:
      return "volumes";
    case Reload::Removed:
      return "removed";
  }
  return "";
}

std::string now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm utc{};
  char text[32];
  ::gmtime_r(&seconds, &utc);
  return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

}  // namespace

int watchTrees(const Session& session, const std::vector<Tree*>& trees) {
  Output& output = session.output;
  int status = kDone;
  bool isWatching = false;
  for (Tree* tree : trees) {
    if (!tree->load({})) {
      if (status == kDone) status = kNoClient;
      continue;
    }
    isWatching = true;
    tree->pane().pane().onReload = [&output, tree](Reload what) {
      if (output.isJson()) {
        output.document({{"time", now()}, {"root", tree->root()}, {"reloaded", nameOf(what)}});
      } else {
        output.table(
            {{{now(), Colour::Faint}, {tree->root(), Colour::None}, {nameOf(what), Colour::Strong}}});
      }
      (void)output.flush();
    };
  }
  if (!isWatching) return status;
  const auto wakeUp = session.runLoop.watchDescriptor(session.interruption.descriptor(), [] {});
  const auto isOver = [&] { return session.interruption || output.isClosed(); };
  while (!session.runLoop.runUntil(isOver, 3600)) {
  }
  return status;  // being interrupted is the way in which this ends
}

}  // namespace corvane::cli
