// Static texts. A label shows its text as it is and has no accessible name: the text speaks.
#pragma once

#include "binders/Binder.h"
#include "controls/TextField.h"

namespace corvane::appkit {

class LabelBinder final : public Binder {
 public:
  LabelBinder(TextField& field, NSTextField* view);
  [[nodiscard]] bool isTabStop() const override { return false; }

 private:
  void show() override;
  [[nodiscard]] bool takesActs() const override { return true; }

  TextField& field_;
  NSTextField* widget_;
};

}  // namespace corvane::appkit
