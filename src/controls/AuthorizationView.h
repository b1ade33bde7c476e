// The lock at the lower left of the pane: asks for administrator rights when the user opens it and holds them
// while it is open.
#pragma once

#include <memory>
#include <string>

#include "controls/Control.h"
#include "platform/Authorization.h"

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

  explicit AuthorizationView(AuthorizationServices& services);
  ~AuthorizationView() override;

  void setAuthorizationRights(std::string right) { right_ = std::move(right); }
  void setDelegate(AuthorizationViewDelegate* delegate) { delegate_ = delegate; }
  /// Shows the present state.
  void updateStatus();
  [[nodiscard]] State state() const { return state_; }
  /// The rights while the lock is open, else null.
  [[nodiscard]] Authorization* authorization() const { return authorization_.get(); }
  /// With the state, which is seen only.
  [[nodiscard]] std::string accessibleName() const override;
  /// What stands beside the lock.
  [[nodiscard]] std::string label() const;

  /// The user's click: a closed lock asks for the rights, an open one closes; while the question is open
  /// nothing happens. A question that is cancelled, denied or can't be asked leaves the lock closed, and the
  /// delegate does not hear of it; where it was not the user who cancelled, the label says so. Rights that
  /// end by themselves close an open lock as a click does.
  void click();
  /// Gives the rights back without telling the delegate: for a pane that has locked itself.
  void close();

 private:
  void answer(AuthorizationOutcome outcome, std::unique_ptr<Authorization> authorization);
  void deauthorize();

  AuthorizationServices& services_;
  AuthorizationViewDelegate* delegate_ = nullptr;
  std::string right_;
  State state_ = State::Closed;
  bool wasRefused_ = false;  // the last time it was asked
  std::unique_ptr<Authorization> authorization_;
  std::unique_ptr<Authorization> lost_;  // ended by themselves
  /// Replaced whenever the lock closes: an answer that comes after that, or after this view has gone, is to a
  /// question of the past and is ignored (its rights are given back).
  std::shared_ptr<bool> session_;
};

}  // namespace corvane
