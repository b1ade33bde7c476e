// A tree in a list of trees, to be opened by a click: its name, and below it the whole path.
#pragma once

#include "widgets/PaintedButton.h"

namespace corvane::qt {

class TreeButton final : public PaintedButton {
  Q_OBJECT

 public:
  explicit TreeButton(QString folder, QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QFont pathFont() const;

  QString path_;
};

}  // namespace corvane::qt
