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
  /// `tree`: which tree the lock is of, for assistive technology; may be empty.
  AuthorizationViewBinder(AuthorizationView& view, LockButton& button, FittedLabel& label, QString tree = {});

 private:
  void show() override;

  AuthorizationView& view_;
  LockButton& button_;
  FittedLabel& label_;
  QString tree_;
};

}  // namespace corvane::qt
