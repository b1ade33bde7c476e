#include "controls/AuthorizationView.h"

#include <utility>

namespace corvane {
namespace {

constexpr const char* kClosedLabel = "Click the lock to make changes.";
constexpr const char* kRefusedLabel =
    "The lock could not be opened; the system log says why. Click it to try again.";
constexpr const char* kAskingLabel = "Waiting for permission…";
constexpr const char* kOpenLabel = "Click the lock to prevent further changes.";
constexpr const char* kOpenDirectLabel =
    "These files belong to you and are changed directly, without asking for rights. Click the lock to "
    "prevent further changes.";

}  // namespace

AuthorizationView::AuthorizationView(AuthorizationServices& services)
    : services_(services), session_(std::make_shared<bool>(true)) {}

AuthorizationView::~AuthorizationView() = default;

void AuthorizationView::updateStatus() { didChange(); }

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
  return wasRefused_ ? kRefusedLabel : kClosedLabel;
}

void AuthorizationView::click() {
  if (!takesUserActs() || state_ == State::Asking) return;
  if (state_ == State::Open) {
    deauthorize();
    return;
  }
  lost_.reset();
  wasRefused_ = false;
  state_ = State::Asking;
  didChange();
  services_.requestRights(right_, [this, session = std::weak_ptr<bool>(session_)](
                                      AuthorizationOutcome outcome, std::unique_ptr<Authorization> given) {
    if (!session.expired()) answer(outcome, std::move(given));
  });
}

void AuthorizationView::close() {
  session_ = std::make_shared<bool>(true);
  authorization_.reset();
  if (state_ == State::Closed) return;
  state_ = State::Closed;
  didChange();
}

void AuthorizationView::answer(AuthorizationOutcome outcome, std::unique_ptr<Authorization> authorization) {
  if (outcome != AuthorizationOutcome::Granted || !authorization) {
    wasRefused_ = outcome != AuthorizationOutcome::Cancelled;
    close();
    return;
  }
  authorization_ = std::move(authorization);
  authorization_->lost = [this, session = std::weak_ptr<bool>(session_)] {
    if (session.expired()) return;
    // The rights are calling: they must outlive this call, and are kept until the lock is used again.
    lost_ = std::move(authorization_);
    deauthorize();
  };
  state_ = State::Open;
  didChange();
  if (delegate_ != nullptr) delegate_->authorizationViewDidAuthorize(*this);
}

void AuthorizationView::deauthorize() {
  close();
  if (delegate_ != nullptr) delegate_->authorizationViewDidDeauthorize(*this);
}

}  // namespace corvane
