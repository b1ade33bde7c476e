// The buttons of the Configuration tab: running the client and its updater, removing the client.
#include "ExitStatus.h"
#include "commands/Commands.h"
#include "pane/ClientKeys.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

/// Waits until it is over, looked at now and after each change in the folders.
int waitUntil(const Session& session, Tree& tree, std::vector<std::string> folders, std::string_view what,
              const std::function<bool()>& isOver) {
  bool mayHaveChanged = true;
  const auto stream = tree.platform().directoryEvents.createStream(
      std::move(folders), 0, [&](const std::vector<std::string>& /*changed*/) { mayHaveChanged = true; });
  stream->scheduleWithRunLoop();
  stream->start();
  const auto wakeUp = session.runLoop.watchDescriptor(session.interruption.descriptor(), [] {});
  const bool inTime = session.runLoop.runUntil(
      [&] { return session.interruption || (std::exchange(mayHaveChanged, false) && isOver()); },
      session.arguments.patience);
  stream->stop();
  stream->unscheduleFromRunLoop();
  if (session.interruption) return kOfSignal + session.interruption.signal();
  if (inTime) return kDone;
  return tree.complain(formatText("%@ was not over in time", {what}), kTimedOut);
}

/// Presses the button, with an open lock.
int press(Tree& tree, Button& button) {
  tree.beginAct();
  button.click();
  return tree.endAct();
}

/// Tells when it was, once it was waited for.
int tell(const Session& session, Tree& tree, const char* key, const TextField& date) {
  tree.pane().pane().refresh();
  if (session.output.isJson()) {
    session.output.document({{"root", tree.root()}, {key, date.stringValue()}});
  } else {
    session.output.line(date.stringValue());
  }
  return kDone;
}

}  // namespace

int runClient(const Session& session, Tree& tree) {
  if (const int status = tree.openLock()) return status;
  ConfigurationTabView& view = tree.pane().configurationView();
  ConfigurationTabViewController& tab = tree.pane().configuration();
  tab.checkForFile();
  if (!view.runClientButton.enabled()) return tree.complain("a run is in progress already", kRefused);
  const auto lastRun = [&] {
    const Dictionary settings =
        tree.platform().propertyLists.read(tree.paths().clientSettings).asDictionary();
    return settings.value(client_key::kDateClientRun);
  };
  const PropertyList before = lastRun();
  if (const int status = press(tree, view.runClientButton)) return status;
  if (!session.arguments.wait) return kDone;
  // A run holds its marker, and sets its date at the end: one that is over before anybody looks is known by
  // it.
  bool hasBegun = false;
  const auto isOver = [&] {
    const bool runs = tab.clientRuns();
    hasBegun = hasBegun || runs;
    return !runs && (hasBegun || lastRun() != before);
  };
  if (const int status =
          waitUntil(session, tree, {tree.paths().localInfo, tree.paths().installFolder}, "the run", isOver)) {
    return status;
  }
  return tell(session, tree, "lastRun", view.lastRunClientField);
}

int runUpdater(const Session& session, Tree& tree) {
  if (const int status = tree.openLock()) return status;
  ConfigurationTabView& view = tree.pane().configurationView();
  if (view.updateClientNowButton.hidden()) return tree.complain("the client has no updater", kRefused);
  const auto lastChange = [&] {
    return tree.platform().files.modificationDate(tree.paths().updateStatus).date;
  };
  const auto before = lastChange();
  if (const int status = press(tree, view.updateClientNowButton)) return status;
  if (!session.arguments.wait) return kDone;
  const auto isOver = [&] { return lastChange() && lastChange() != before; };
  if (const int status = waitUntil(session, tree, {tree.paths().updaterSupport}, "the update", isOver))
    return status;
  return tell(session, tree, "lastUpdateCheck", view.lastRunUpdaterField);
}

int uninstallClient(const Session& session, Tree& tree) {
  if (!session.arguments.yes) {
    return tree.complain("the client is removed only with --yes", kWrongUsage);
  }
  if (const int status = tree.openLock()) return status;
  tree.dialogs().confirms = true;
  if (session.arguments.quiet) tree.dialogs().checkBox = false;
  if (const int status = press(tree, tree.pane().configurationView().uninstallButton)) return status;
  if (!session.arguments.wait) return kDone;
  const std::string folder = tree.paths().installFolder;
  tree.dialogs().isSilent = true;  // that it has gone is what was waited for
  return waitUntil(session, tree, {folder, deletingLastPathComponent(folder)}, "the removal",
                   [&] { return !tree.platform().files.exists(folder); });
}

}  // namespace corvane::cli
