// The padlock of the authorization view.
#pragma once

#include <QAbstractButton>

namespace corvane::qt {

class LockButton final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit LockButton(QWidget* parent = nullptr);

  void setOpen(bool open);
  [[nodiscard]] bool isOpen() const { return open_; }
  [[nodiscard]] QSize sizeHint() const override { return {32, 32}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool open_ = false;
};

}  // namespace corvane::qt
