#include "widgets/LockButton.h"

#include <QPainter>

#include "Fonts.h"
#include "appearance/Shapes.h"

namespace corvane::qt {

LockButton::LockButton(QWidget* parent) : PaintedButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LockButton::sizeHint() const { return QSize(1, 1) * toPixels(32); }

void LockButton::setOpen(bool open) {
  if (open == open_) return;
  open_ = open;
  update();
}

void LockButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (isDown()) painter.setOpacity(0.7);
  drawPadlock(painter, QRectF(rect()).adjusted(4, 3, -4, -3), open_, palette());
  if (hasFocus()) drawFocusRing(painter, QRectF(rect()).adjusted(2, 2, -2, -2), 5, palette());
}

}  // namespace corvane::qt
