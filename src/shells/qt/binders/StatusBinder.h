// The pane's status line: its text in a place that is given to others while there is none, and a word to
// assistive technology whenever it says something new.
#pragma once

#include "binders/Binder.h"
#include "controls/TextField.h"
#include "widgets/StatusLabel.h"

namespace corvane::qt {

class StatusBinder final : public Binder {
  Q_OBJECT

 public:
  StatusBinder(TextField& field, StatusLabel& label);

 private:
  void show() override;

  TextField& field_;
  StatusLabel& label_;
};

}  // namespace corvane::qt
