#include "appearance/Shapes.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <cmath>

#include "Fonts.h"
#include "Kept.h"
#include "appearance/Appearance.h"

namespace corvane::qt {
namespace {

class Smooth {
 public:
  explicit Smooth(QPainter& painter) : painter_(painter) {
    painter_.save();
    painter_.setRenderHint(QPainter::Antialiasing);
  }
  Smooth(const Smooth&) = delete;
  Smooth& operator=(const Smooth&) = delete;
  ~Smooth() { painter_.restore(); }

 private:
  QPainter& painter_;
};

QColor textWithAlpha(const QPalette& palette, float alpha) {
  QColor color = palette.color(QPalette::Active, QPalette::WindowText);
  color.setAlphaF(alpha);
  return color;
}

struct Ring {
  qreal distance, width;
};

void drawRing(QPainter& painter, const QRectF& frame, qreal radius, const QColor& color, const Ring& ring) {
  const Smooth smooth(painter);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, ring.width));
  const qreal out = ring.distance;
  painter.drawRoundedRect(frame.adjusted(-out, -out, out, out), radius + out, radius + out);
}

constexpr int kEdge = 1;               // around a picture of a shape, for its outline
constexpr qreal kLargestCopy = 20000;  // points in a square; a field of the usual size has half of it
constexpr int kKept = 50;

struct Rounded {
  QRectF frame;
  qreal radius;
  QRgb fill;
  QRgb outline;
  qreal scale;
  friend bool operator==(const Rounded&, const Rounded&) = default;

  void draw(QPainter& painter, const QPointF& at) const {
    const Smooth smooth(painter);
    painter.setBrush(QColor::fromRgba(fill));
    painter.setPen(qAlpha(outline) == 0 ? QPen(Qt::NoPen) : QPen(QColor::fromRgba(outline), 1));
    painter.drawRoundedRect(frame.translated(at), radius, radius);
  }
  [[nodiscard]] QPixmap picture() const {
    const QSize size(qCeil(frame.right()) + kEdge, qCeil(frame.bottom()) + kEdge);
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    draw(painter, {});
    return pixmap;
  }
};

std::size_t qHash(const Rounded& shape, std::size_t seed) {
  return qHashMulti(seed, shape.frame.width(), shape.frame.height(), shape.fill, shape.outline);
}

QColor ringColor(const QPalette& palette) { return palette.color(QPalette::Active, QPalette::Highlight); }

}  // namespace

QColor outlineColor(const QPalette& palette) {
  return textWithAlpha(palette, isDark(palette) ? 0.24F : 0.22F);
}
QColor separatorColor(const QPalette& palette) { return textWithAlpha(palette, 0.13F); }

void drawRounded(QPainter& painter, const QRectF& frame, qreal radius, const QColor& fill,
                 const QColor& outline) {
  const QPointF corner(std::floor(frame.left()) - kEdge, std::floor(frame.top()) - kEdge);
  // Where the dots really are: a widget may be drawn into a picture that is finer than the screen.
  const QTransform dots = painter.deviceTransform();
  const qreal scale = dots.m11();
  // A copy is as good where it stands on whole dots.
  const bool isCopied = dots.type() <= QTransform::TxScale && dots.m22() == scale && scale >= 1 &&
                        scale == std::floor(scale) && dots.dx() == std::floor(dots.dx()) &&
                        dots.dy() == std::floor(dots.dy()) && frame.width() * frame.height() < kLargestCopy;
  const Rounded shape{frame.translated(-corner), radius, fill.rgba(), outline.rgba(), scale};
  if (!isCopied) {
    shape.draw(painter, corner);
    return;
  }
  painter.drawPixmap(corner, kept<QPixmap>(shape, kKept, [&] { return shape.picture(); }));
}

void drawFocusRing(QPainter& painter, const QRectF& frame, qreal radius, const QPalette& palette) {
  drawRing(painter, frame, radius, ringColor(palette), {.distance = 0.75, .width = 2.5});
}

void drawFocusRingApart(QPainter& painter, const QRectF& frame, qreal radius, const QPalette& palette) {
  drawRing(painter, frame, radius, palette.color(QPalette::Active, QPalette::Window),
           {.distance = 0.5, .width = 1});
  drawRing(painter, frame, radius, ringColor(palette), {.distance = 1.75, .width = 1.5});
}

void drawFocusBelow(QPainter& painter, const QRectF& row, const QPalette& palette) {
  QColor tint = palette.color(QPalette::Active, QPalette::Highlight);
  tint.setAlphaF(0.12F);
  drawRounded(painter, row.adjusted(0.5, 0.5, -0.5, -0.5), 3, tint, Qt::transparent);
}

void drawFocusAround(QPainter& painter, const QRectF& row, const QPalette& palette) {
  drawRounded(painter, row.adjusted(0.5, 0.5, -0.5, -0.5), 3, Qt::transparent, ringColor(palette));
}

void drawFocusInside(QPainter& painter, const QRectF& row, const QColor& text) {
  QColor color = text;
  color.setAlphaF(0.8F);
  drawRing(painter, row.adjusted(1.5, 1.5, -1.5, -1.5), 3, color, {.distance = 0, .width = 1});
}

void drawCheckMark(QPainter& painter, const QRectF& box, bool mixed, const QColor& color) {
  const Smooth smooth(painter);
  painter.setPen(QPen(color, box.width() * 0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const auto at = [&box](qreal x, qreal y) {
    return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
  };
  if (mixed) {
    painter.drawLine(at(0.28, 0.5), at(0.72, 0.5));
  } else {
    painter.drawPolyline(QPolygonF({at(0.26, 0.53), at(0.43, 0.71), at(0.75, 0.29)}));
  }
}

void drawChevrons(QPainter& painter, const QRectF& rect, bool downOnly, const QColor& color) {
  const Smooth smooth(painter);
  painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.translate(rect.center());
  painter.scale(rect.width() / 15, rect.width() / 15);
  const QPointF c;
  const auto chevron = [&](qreal y, qreal tip) {
    painter.drawPolyline(QPolygonF({c + QPointF(-2.8, y), c + QPointF(0, y + tip), c + QPointF(2.8, y)}));
  };
  if (downOnly) {
    chevron(-1.2, 2.8);
  } else {
    chevron(-1.8, -2.8);
    chevron(1.8, 2.8);
  }
}

void drawDisclosure(QPainter& painter, const QRectF& rect, bool open, const QColor& color) {
  const Smooth smooth(painter);
  painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.translate(rect.center());
  painter.scale(toPixels(16) / 16.0, toPixels(16) / 16.0);
  if (open) painter.rotate(90);
  painter.drawPolyline(QPolygonF({QPointF(-1.7, -3.6), QPointF(2, 0), QPointF(-1.7, 3.6)}));
}

void drawPadlock(QPainter& painter, const QRectF& rect, bool open, const QPalette& palette) {
  const Smooth smooth(painter);
  // Drawn on a square of 24 units.
  const qreal scale = rect.height() / 24;
  painter.translate(rect.center().x() - 12 * scale, rect.top());
  painter.scale(scale, scale);

  const bool dark = isDark(palette);
  QPainterPath shackle;
  const qreal shift = open ? 9.2 : 0;  // an open shackle is turned to the side
  const qreal lift = open ? -0.6 : 0;
  shackle.moveTo(8 + shift, 12);
  shackle.lineTo(8 + shift, 7.5 + lift);
  shackle.arcTo(QRectF(8 + shift, 3.5 + lift, 8, 8), 180, -180);
  shackle.lineTo(16 + shift, open ? 9.0 : 12);
  if (open) painter.translate(-4, 0);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(
      QPen(dark ? QColor(0xb9, 0xbc, 0xc4) : QColor(0x84, 0x88, 0x92), 2.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(shackle);

  QLinearGradient gold(0, 11, 0, 22);
  gold.setColorAt(0, QColor(0xf5, 0xc8, 0x53));
  gold.setColorAt(1, QColor(0xdb, 0x9c, 0x22));
  painter.setPen(QPen(QColor(0x9c, 0x6a, 0x0c), 0.8));
  painter.setBrush(gold);
  painter.drawRoundedRect(QRectF(4.9, 11, 14.2, 10.6), 2.2, 2.2);
  painter.setPen(QPen(QColor(0x7c, 0x52, 0x06), 1.6, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(12, 15.2), QPointF(12, 17.6));
}

void drawCaution(QPainter& painter, const QRectF& rect) {
  const Smooth smooth(painter);
  const auto at = [&rect](qreal x, qreal y) {
    return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
  };
  const QColor yellow(0xff, 0xcc, 0x33);
  painter.setBrush(yellow);
  painter.setPen(QPen(QColor(0x5f, 0x47, 0x00), 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPolygonF triangle({at(0.5, 0.12), at(0.9, 0.88), at(0.1, 0.88)});
  painter.drawPolygon(triangle);
  painter.setPen(QPen(yellow, 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolygon(triangle);
  painter.setPen(QPen(QColor(0x3d, 0x2e, 0x00), 2.8, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(at(0.5, 0.4), at(0.5, 0.6));
  painter.drawPoint(at(0.5, 0.77));
}

}  // namespace corvane::qt
