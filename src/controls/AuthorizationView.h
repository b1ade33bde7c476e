// The lock at the lower left of the pane: asks for administrator rights when the user opens it and holds them
// while it is open.
#pragma once

#include <memory>
#include <string>

#include "controls/Control.h"
#include "platform/Authorization.h"
#include "platform/LateCalls.h"

namespace corvane {

class AuthorizationView;

class AuthorizationViewDelegate {
 public:
  virtual ~AuthorizationViewDelegate() = default;
  virtual void authorizationViewDidAuthorize(AuthorizationView& view) = 0;
  virtual void authorizationViewDidDeauthorize(AuthorizationView& view) = 0;
};

class AuthorizationView final : public Control {
 public:
  enum class State { Closed, Asking, Open };

  explicit AuthorizationView(AuthorizationServices& services) : services_(services) {}
  ~AuthorizationView() override = default;

  void setAuthorizationRights(std::string right) { right_ = std::move(right); }
  void setDelegate(AuthorizationViewDelegate* delegate) { delegate_ = delegate; }
  /// Shows the present state, and has the installation looked at: the label of a closed lock says what is
  /// wrong with it.
  void updateStatus();
  [[nodiscard]] State state() const { return state_; }
  /// The rights while the lock is open, else null.
  [[nodiscard]] Authorization* authorization() const { return authorization_.get(); }
  /// With the state, which is seen only.
  [[nodiscard]] std::string accessibleName() const override;
  /// Why the lock did not open the last time it was asked; empty when it did, and when the user did not want
  /// it to.
  [[nodiscard]] const std::string& refusal() const { return refusal_; }
  /// What stands beside the lock.
  [[nodiscard]] std::string label() const;

  /// The user's click: a closed lock asks for the rights, an open one closes; while the question is open
  /// nothing happens. A question that is cancelled, denied or can't be asked leaves the lock closed, and the
  /// delegate does not hear of it; where it was not the user who cancelled, the label says why. Rights that
  /// end by themselves close an open lock as a click does.
  void click();
  /// Closes an open lock without telling the delegate, for a pane that has locked itself. A question that is
  /// still open stays open: the user's answer to it counts.
  void close();

 private:
  void answer(AuthorizationAnswer answer);
  void showClosed();
  void deauthorize();

  AuthorizationServices& services_;
  AuthorizationViewDelegate* delegate_ = nullptr;
  std::string right_;
  State state_ = State::Closed;
  std::string fault_;  // of the installation
  std::string refusal_;
  std::unique_ptr<Authorization> authorization_;
  LateCalls calls_;  // an answer may come after this view has gone
};

}  // namespace corvane
