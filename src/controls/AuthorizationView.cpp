#include "controls/AuthorizationView.h"

#include <utility>

#include "values/Text.h"

namespace corvane {
namespace {

constexpr const char* kClosedLabel = "Click the lock to make changes.";
constexpr const char* kFaultyLabel = "Click the lock to make changes. The installation is not whole: %@.";
constexpr const char* kRefusedLabel = "The lock could not be opened: %@. Click it to try again.";
constexpr const char* kUnknownReason = "the system log says why";
constexpr const char* kAskingLabel = "Waiting for permission…";
constexpr const char* kOpenLabel = "Click the lock to prevent further changes.";
constexpr const char* kOpenDirectLabel =
    "These files belong to you and are changed directly, without asking for rights. Click the lock to "
    "prevent further changes.";

}  // namespace

std::string AuthorizationView::accessibleName() const {
  switch (state_) {
    case State::Asking:
      return Control::accessibleName() + ", waiting";
    case State::Open:
      return Control::accessibleName() + ", open";
    case State::Closed:
      break;
  }
  return Control::accessibleName() + ", closed";
}

std::string AuthorizationView::label() const {
  switch (state_) {
    case State::Asking:
      return kAskingLabel;
    case State::Open:
      return services_.isDirect() ? kOpenDirectLabel : kOpenLabel;
    case State::Closed:
      break;
  }
  if (!refusal_.empty()) return formatText(kRefusedLabel, {refusal_});
  return fault_.empty() ? kClosedLabel : formatText(kFaultyLabel, {fault_});
}

void AuthorizationView::updateStatus() {
  fault_ = services_.installationFault();
  didChange();
}

void AuthorizationView::click() {
  if (!takesUserActs() || state_ == State::Asking) return;
  if (state_ == State::Open) {
    deauthorize();
    return;
  }
  refusal_.clear();
  state_ = State::Asking;
  didChange();
  services_.requestRights(right_,
                          calls_.wrap([this](AuthorizationAnswer given) { answer(std::move(given)); }));
}

void AuthorizationView::close() {
  if (state_ == State::Open) showClosed();
}

void AuthorizationView::showClosed() {
  authorization_.reset();
  state_ = State::Closed;
  didChange();
}

void AuthorizationView::answer(AuthorizationAnswer answer) {
  if (answer.outcome != AuthorizationOutcome::Granted || !answer.rights) {
    if (answer.outcome != AuthorizationOutcome::Cancelled) {
      refusal_ = answer.reason.empty() ? kUnknownReason : std::move(answer.reason);
    }
    showClosed();
    return;
  }
  authorization_ = std::move(answer.rights);
  authorization_->lost = calls_.wrap([this] { deauthorize(); });
  state_ = State::Open;
  didChange();
  if (delegate_ != nullptr) delegate_->authorizationViewDidAuthorize(*this);
}

void AuthorizationView::deauthorize() {
  showClosed();
  if (delegate_ != nullptr) delegate_->authorizationViewDidDeauthorize(*this);
}

}  // namespace corvane
