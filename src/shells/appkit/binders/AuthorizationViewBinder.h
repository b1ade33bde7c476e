// The lock: a padlock, and what stands beside it.
#pragma once

#include "binders/Binder.h"
#include "binders/Target.h"
#include "controls/AuthorizationView.h"
#import "widgets/LockButton.h"

namespace corvane::appkit {

class AuthorizationViewBinder final : public Binder {
 public:
  AuthorizationViewBinder(AuthorizationView& view, CorvaneLockButton* button, NSTextField* label);
  ~AuthorizationViewBinder() override;

 private:
  void show() override;

  AuthorizationView& lock_;
  CorvaneLockButton* button_;
  NSTextField* label_;
  Target target_;
};

}  // namespace corvane::appkit
