// A text that is as high as it needs to be where there is room, and scrolls where there is not.
#pragma once

#include <QScrollArea>

namespace corvane::qt {

class ScrollingText final : public QScrollArea {
  Q_OBJECT

 public:
  explicit ScrollingText(QWidget* parent = nullptr);
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
};

}  // namespace corvane::qt
