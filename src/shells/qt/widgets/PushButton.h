// A push button. The keyboard presses it by the rules of `ButtonKeys.h`.
#pragma once

#include <QPushButton>

namespace corvane::qt {

class PushButton final : public QPushButton {
  Q_OBJECT
  /// Whether the Escape key presses it in its panel or sheet.
  Q_PROPERTY(bool escapes READ escapes WRITE setEscapes)

 public:
  explicit PushButton(QWidget* parent = nullptr) : PushButton(QString(), parent) {}
  explicit PushButton(const QString& title, QWidget* parent = nullptr);
  [[nodiscard]] bool escapes() const { return escapes_; }
  void setEscapes(bool escapes) { escapes_ = escapes; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool escapes_ = false;
};

}  // namespace corvane::qt
