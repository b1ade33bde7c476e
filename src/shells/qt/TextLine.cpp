#include "TextLine.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace corvane::qt {

// As the toolkit's entry fields do it, which draw their texts themselves.
qreal baselineIn(const QRectF& rect, const QFont& font) {
  return rect.top() + std::floor((rect.height() - QFontMetrics(font).height()) / 2) +
         QFontMetricsF(font).ascent();
}

int alignedHeight(int height, const QFontMetrics& metrics) {
  return height + qAbs(height - metrics.height()) % 2;
}

QString shortenedPath(const QString& path, const QFont& font, int width) {
  return QFontMetrics(font).elidedText(path, Qt::ElideMiddle, width);
}

void drawTextLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text) {
  const QFontMetricsF metrics(painter.font());
  qreal baseline = baselineIn(rect, painter.font());
  if (alignment.testFlag(Qt::AlignTop)) baseline = rect.top() + metrics.ascent();
  if (alignment.testFlag(Qt::AlignBottom)) baseline = rect.bottom() - metrics.descent();
  qreal left = rect.left();
  const auto spare = [&] { return rect.width() - metrics.horizontalAdvance(text); };
  if (alignment.testFlag(Qt::AlignRight)) left += spare();
  if (alignment.testFlag(Qt::AlignHCenter)) left += std::floor(spare() / 2);
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.drawText(QPointF(left, baseline), text);
  painter.restore();
}

}  // namespace corvane::qt
