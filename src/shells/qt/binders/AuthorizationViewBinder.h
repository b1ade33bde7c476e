// The lock: a padlock that is drawn open or closed, and what stands beside it.
#pragma once

#include "binders/Binder.h"
#include "controls/AuthorizationView.h"
#include "widgets/FittedLabel.h"
#include "widgets/LockButton.h"

namespace corvane::qt {

class AuthorizationViewBinder final : public Binder {
  Q_OBJECT

 public:
  AuthorizationViewBinder(AuthorizationView& view, LockButton& button, FittedLabel& label);

 private:
  void show() override;

  AuthorizationView& view_;
  LockButton& button_;
  FittedLabel& label_;
};

}  // namespace corvane::qt
