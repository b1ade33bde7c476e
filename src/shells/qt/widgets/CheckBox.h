// A check box. The keyboard switches it by the rules of `ButtonKeys.h`.
#pragma once

#include <QCheckBox>

namespace corvane::qt {

class CheckBox final : public QCheckBox {
  Q_OBJECT

 public:
  using QCheckBox::QCheckBox;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace corvane::qt
