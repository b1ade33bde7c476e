// A label that can be clicked: shows a styled text without a frame, takes the mouse, and the keyboard when it
// is a link.
#pragma once

#include "values/AttributedText.h"
#include "widgets/PaintedButton.h"

namespace corvane::qt {

class LabelButton final : public PaintedButton {
  Q_OBJECT

 public:
  explicit LabelButton(QWidget* parent = nullptr);

  void setAttributedText(const AttributedText& text);
  /// A link takes the keyboard, and shows that it can be clicked.
  void setLink(bool link);
  [[nodiscard]] bool isLink() const { return isLink_; }
  /// Shortens a text that has no room in its middle, as paths are, and lets it be copied whole.
  void showAsPath();
  void setAlignment(Qt::Alignment alignment);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  AttributedText text_;
  bool isLink_ = false;
  bool isPath_ = false;
  Qt::Alignment alignment_ = Qt::AlignLeft;
};

}  // namespace corvane::qt
