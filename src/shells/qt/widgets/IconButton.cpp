#include "widgets/IconButton.h"

#include <QPainter>

#include "appearance/Shapes.h"

namespace corvane::qt {

IconButton::IconButton(QWidget* parent) : PaintedButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize IconButton::sizeHint() const { return iconSize() + QSize(8, 8); }

void IconButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QSize size = iconSize();
  const QRect picture(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size);
  icon().paint(&painter, picture, Qt::AlignCenter, isDown() ? QIcon::Selected : QIcon::Normal);
  if (hasFocus()) drawFocusRing(painter, QRectF(rect()).adjusted(2, 2, -2, -2), 6, palette());
}

}  // namespace corvane::qt
