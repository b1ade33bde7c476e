#include "widgets/BusyBar.h"

#include <QPainter>

#include "Fonts.h"
#include "appearance/Shapes.h"

namespace corvane::qt {
namespace {

constexpr double kHeight = 6;        // in points
constexpr int kThereAndBack = 2400;  // milliseconds

}  // namespace

BusyBar::BusyBar(QWidget* parent) : QProgressBar(parent) {
  setRange(0, 0);
  setTextVisible(false);
  glide_.setDuration(kThereAndBack);
  glide_.setLoopCount(-1);
  glide_.setKeyValueAt(0, 0.0);
  glide_.setKeyValueAt(0.5, 1.0);
  glide_.setKeyValueAt(1, 0.0);
  connect(&glide_, &QVariantAnimation::valueChanged, this, qOverload<>(&QWidget::update));
  glide_.start();
}

void BusyBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int height = toPixels(kHeight);
  const QRectF bar(0.5, (this->height() - height) / 2 + 0.5, width() - 1, height - 1);
  const qreal radius = bar.height() / 2;
  drawRounded(painter, bar, radius, palette().color(QPalette::Base), outlineColor(palette()));
  QRectF part = bar;
  part.setWidth(bar.width() / 3);
  part.translate((bar.width() - part.width()) * glide_.currentValue().toDouble(), 0);
  const QColor color = palette().color(QPalette::Active, QPalette::Highlight);
  drawRounded(painter, part, radius, color, color);
}

}  // namespace corvane::qt
