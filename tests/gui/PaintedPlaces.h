// Where a widget is drawn anew while this lives. To be drawn anew is what brings a value to the screen; a
// test that asks for a picture would have the widget drawn for it.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

namespace corvane::test {

class PaintedPlaces final : public QObject {
 public:
  explicit PaintedPlaces(QWidget& widget) : widget_(widget) { widget_.installEventFilter(this); }

  /// Whether all of this place was drawn, of which something is to be seen.
  [[nodiscard]] bool hold(const QRect& place) const {
    const QRegion seen = QRegion(widget_.rect()) & place;
    return !seen.isEmpty() && (seen - region_).isEmpty();
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) region_ += static_cast<QPaintEvent*>(event)->region();
    return false;
  }

 private:
  QWidget& widget_;
  QRegion region_;
};

}  // namespace corvane::test
