// A label of any length in a room of a fixed size: the text is wrapped where there is room for more than one
// line, and what does not fit is shortened by an ellipsis and told whole by the tool tip.
#pragma once

#include <QLabel>

namespace corvane::qt {

class FittedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit FittedLabel(QWidget* parent = nullptr);

  /// Shortens a text that has no room in its middle, as paths are, and lets it be copied whole.
  void showAsPath();
  /// Whether the text, as it was painted last, does not fit.
  [[nodiscard]] bool isCut() const { return isCut_; }
  /// One line of some characters; a layout gives more.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  /// In which colour it is painted.
  [[nodiscard]] virtual QColor color() const { return palette().color(QPalette::WindowText); }

 private:
  bool isPath_ = false;
  bool isCut_ = false;
};

}  // namespace corvane::qt
