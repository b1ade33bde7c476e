// A label that can be clicked: shows a styled text without a frame, takes the mouse and the keyboard when it
// does something.
#pragma once

#include "values/AttributedText.h"
#include "widgets/PaintedButton.h"

namespace corvane::qt {

class LabelButton final : public PaintedButton {
  Q_OBJECT

 public:
  explicit LabelButton(QWidget* parent = nullptr);

  void setAttributedText(const AttributedText& text);
  /// Whether a click does something; a mere label takes no focus.
  void setActive(bool active);
  [[nodiscard]] bool isActive() const { return focusPolicy() != Qt::NoFocus; }
  /// Whether it looks like one.
  [[nodiscard]] bool isLink() const;
  void setAlignment(Qt::Alignment alignment);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// The hand over a link.
  void showShape();

  AttributedText text_;
  Qt::Alignment alignment_ = Qt::AlignLeft;
};

}  // namespace corvane::qt
