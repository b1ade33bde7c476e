// A picture that can be clicked.
#pragma once

#include <QAbstractButton>

namespace corvane::qt {

class IconButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit IconButton(QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace corvane::qt
