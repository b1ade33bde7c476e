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
  /// Whether a click does something. Of those that do only a link has the keyboard: any other clickable text
  /// belongs to a control that has it itself.
  void setActive(bool active);
  [[nodiscard]] bool isActive() const { return isActive_; }
  /// Shortens a text that has no room in its middle, as paths are, and lets it be copied whole.
  void showAsPath();
  /// Whether it looks like one.
  [[nodiscard]] bool isLink() const;
  void setAlignment(Qt::Alignment alignment);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// The hand over a link, and the keyboard.
  void showShape();

  AttributedText text_;
  bool isActive_ = false;
  bool isPath_ = false;
  Qt::Alignment alignment_ = Qt::AlignLeft;
};

}  // namespace corvane::qt
