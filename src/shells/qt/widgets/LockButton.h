// The padlock of the authorization view.
#pragma once

#include "widgets/PaintedButton.h"

namespace corvane::qt {

class LockButton final : public PaintedButton {
  Q_OBJECT

 public:
  explicit LockButton(QWidget* parent = nullptr);

  void setOpen(bool open);
  [[nodiscard]] bool isOpen() const { return open_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool open_ = false;
};

}  // namespace corvane::qt
