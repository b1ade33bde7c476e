// What the buttons that the pane paints by itself have in common: the keyboard presses them by the rules of
// `ButtonKeys.h`.
#pragma once

#include <QAbstractButton>

namespace corvane::qt {

class PaintedButton : public QAbstractButton {
  Q_OBJECT

 public:
  using QAbstractButton::QAbstractButton;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace corvane::qt
