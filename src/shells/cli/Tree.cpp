#include "Tree.h"

#include <algorithm>
#include <cerrno>

#include <unistd.h>

#include "ExitStatus.h"
#include "posix/SystemError.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

/// An alert in one line.
std::string lineOf(const AlertDescription& alert) {
  std::string line = alert.informativeText.empty()
                         ? alert.messageText
                         : formatText("%@: %@", {alert.messageText, alert.informativeText});
  std::ranges::replace(line, '\n', ' ');
  return line;
}

}  // namespace

Tree::Tree(const Session& session, const std::string& root, std::string about)
    : root_(root),
      about_(std::move(about)),
      session_(session),
      paths_(root),
      dialogs_([this](const AlertDescription& alert) {
        // What only informs is an answer, for whoever asked.
        if (alert.style != AlertStyle::Informational) (void)complain(lineOf(alert), 0);
      }),
      system_(session.runLoop, {dialogs_, workspace_, bundle_},
              {.root = root,
               .waitForOutput = [this](int output) { return session_.interruption.waitReadable(output); },
               .log = &log_}),
      platform_(system_.platform()) {}

Tree::~Tree() = default;

bool Tree::load(Needs needs) {
  if (needs.client && !platform().files.exists(paths_.installFolder)) {
    (void)complain(formatText("there is no client: %@ does not exist", {paths_.installFolder}), 0);
    return false;
  }
  if (needs.client && !isReadable(paths_.installFolder)) return false;
  if (needs.client && needs.plugins && !isReadable(paths_.plugins)) return false;
  pane_ = std::make_unique<PaneAssembly>(platform(), root_);
  if (!needs.plugins) pluginsHeld_ = pane_->pluginsView().pluginsTable.holdRows();
  pane_->load();
  return true;
}

bool Tree::isReadable(const std::string& folder) {
  if (::access(folder.c_str(), R_OK | X_OK) == 0) return true;
  (void)complain(formatText("%@ cannot be read: %@", {folder, systemErrorText(errno)}), 0);
  return false;
}

std::vector<std::string> Tree::unreadableFiles() {
  std::vector<std::string> all = pane_->configuration().unreadableFiles();
  const auto more = pane_->options().unreadableFiles();
  all.insert(all.end(), more.begin(), more.end());
  if (pane_->options().catalogue().isSavedListUnreadable()) all.push_back(paths_.volumesSettings);
  return all;
}

int Tree::complainOfUnreadable(const std::vector<std::string>& files) {
  int status = kDone;
  for (const std::string& file : unreadableFiles()) {
    if (std::ranges::find(files, file) != files.end())
      status = complain(formatText("%@ cannot be read", {file}), kNoClient);
  }
  return status;
}

int Tree::openLock() {
  AuthorizationView& lock = pane_->view().authView;
  if (lock.state() == AuthorizationView::State::Open) return kDone;
  lock.click();
  const auto isAnswered = [&] {
    return session_.interruption || lock.state() != AuthorizationView::State::Asking;
  };
  const auto wakeUp = session_.runLoop.watchDescriptor(session_.interruption.descriptor(), [] {});
  while (!session_.runLoop.runUntil(isAnswered, 3600)) {
  }
  if (session_.interruption) return kOfSignal + session_.interruption.signal();
  // A pane that has locked itself again says why by an alert.
  if (lock.state() == AuthorizationView::State::Open && pane_->pane().unlocked()) return kDone;
  const std::string& refusal = lock.refusal();
  return complain(
      refusal.empty() ? "no rights to change anything" : "no rights to change anything: " + refusal,
      kNoRights);
}

void Tree::beginAct() {
  log_.forget();
  dialogs_.told.clear();
}

int Tree::endAct() {
  const TextField& status = pane_->view().statusField;
  if (!status.hidden()) {
    for (const std::string& line : split(status.toolTip(), '\n')) (void)complain(line, 0);
  }
  if (pane_->pane().hasFailures()) return kNotWritten;
  const bool isRefused = !dialogs_.told.empty() && dialogs_.told.back().style != AlertStyle::Informational;
  return isRefused ? kRefused : kDone;  // the alert was complained of when it came
}

int Tree::nothingCame(std::string_view what, std::string_view reason) {
  if (const int status = endAct()) return status;
  const std::string logged = log_.lines().empty() ? std::string(reason) : log_.lines().back();
  return complain(formatText("%@ was not changed: %@", {what, logged}), kRefused);
}

int Tree::complain(std::string_view text, int status) {
  Output::complain(about_, text);
  return status;
}

}  // namespace corvane::cli
