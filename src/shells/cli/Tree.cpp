#include "Tree.h"

#include "ExitStatus.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

/// An alert in one line.
std::string lineOf(const AlertDescription& alert) {
  return alert.informativeText.empty() ? alert.messageText
                                       : formatText("%@: %@", {alert.messageText, alert.informativeText});
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

bool Tree::load(bool mayBeMissing) {
  if (!platform().files.exists(paths_.installFolder) && !mayBeMissing) {
    (void)complain(formatText("there is no client: %@ does not exist", {paths_.installFolder}), 0);
    return false;
  }
  pane_ = std::make_unique<PaneAssembly>(platform(), root_);
  pane_->load();
  return true;
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
