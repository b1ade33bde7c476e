// Pop-up menus.
#pragma once

#include <QComboBox>

#include "binders/Binder.h"
#include "controls/PopUpButton.h"

namespace corvane::qt {

class PopUpButtonBinder final : public Binder {
  Q_OBJECT

 public:
  PopUpButtonBinder(PopUpButton& button, QComboBox& widget);

 private:
  void show() override;
  void choose(int index);
  void showInList();

  PopUpButton& button_;
  QComboBox& widget_;
};

}  // namespace corvane::qt
