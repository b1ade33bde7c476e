// Static texts. A label shows its text as it is and has no accessible name: the text speaks.
#pragma once

#include <QLabel>

#include "binders/Binder.h"
#include "controls/TextField.h"

namespace corvane::qt {

class LabelBinder final : public Binder {
  Q_OBJECT

 public:
  LabelBinder(TextField& field, QLabel& widget);

 private:
  void show() override;

  TextField& field_;
  QLabel& widget_;
};

}  // namespace corvane::qt
