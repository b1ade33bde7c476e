// Push buttons, check boxes and clickable labels.
#pragma once

#include "binders/Binder.h"
#include "binders/Target.h"
#include "controls/Button.h"

namespace corvane::appkit {

class ButtonBinder final : public Binder {
 public:
  ButtonBinder(Button& button, NSButton* view, Placement placement = Placement::Layout);

 private:
  void show() override;

  Button& button_;
  NSButton* widget_;
  Target target_;
};

}  // namespace corvane::appkit
