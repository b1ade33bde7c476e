// Push buttons, check boxes and clickable labels.
#pragma once

#include <QAbstractButton>

#include "binders/Binder.h"
#include "controls/Button.h"

namespace corvane::qt {

class ButtonBinder final : public Binder {
  Q_OBJECT

 public:
  ButtonBinder(Button& button, QAbstractButton& widget);

 private:
  void show() override;
  void act();

  Button& button_;
  QAbstractButton& widget_;
};

}  // namespace corvane::qt
