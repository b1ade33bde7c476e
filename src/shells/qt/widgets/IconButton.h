// A picture that can be clicked.
#pragma once

#include "widgets/PaintedButton.h"

namespace corvane::qt {

class IconButton final : public PaintedButton {
  Q_OBJECT

 public:
  explicit IconButton(QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane::qt
