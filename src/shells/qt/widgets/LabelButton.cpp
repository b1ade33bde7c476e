#include "widgets/LabelButton.h"

#include <QPainter>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "Text.h"
#include "TextLine.h"
#include "appearance/Shapes.h"
#include "widgets/CopyMenu.h"

namespace corvane::qt {
namespace {

/// Of the text, for the focus ring around it. The core leaves two points at either side.
int inset() { return toPoints(2) > 2 ? 1 : 2; }

}  // namespace

LabelButton::LabelButton(QWidget* parent) : PaintedButton(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setForegroundRole(QPalette::WindowText);
  setLink(false);
}

void LabelButton::setAttributedText(const AttributedText& text) {
  if (text == text_ && !this->text().isEmpty()) return;
  text_ = text;
  setText(toQString(text.text));  // for assistive technology; painting uses the styled text
  updateGeometry();
  update();
}

void LabelButton::setLink(bool link) {
  isLink_ = link;
  setFocusPolicy(link ? Qt::StrongFocus : Qt::NoFocus);
  if (link) {
    setCursor(Qt::PointingHandCursor);
  } else {
    unsetCursor();
  }
}

void LabelButton::showAsPath() {
  isPath_ = true;
  offerCopy(*this, [this] { return text(); });
}

void LabelButton::setAlignment(Qt::Alignment alignment) {
  alignment_ = alignment;
  update();
}

QSize LabelButton::sizeHint() const {
  const QSizeF size =
      AttributedTextLayout(text_, font(), palette(), palette().color(QPalette::WindowText)).naturalSize();
  return {qCeil(size.width()) + 2 * inset(),
          alignedHeight(qMax(toPixels(20), qCeil(size.height()) + 2), fontMetrics())};
}

QSize LabelButton::minimumSizeHint() const { return {toPixels(20), sizeHint().height()}; }

void LabelButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor color = palette().color(foregroundRole());
  if (isDown()) color.setAlphaF(0.6F);
  const QRect room = rect().adjusted(inset(), 0, -inset(), 0);
  AttributedText shown = text_;
  if (isPath_) shown = AttributedText(fromQString(shortenedPath(text(), font(), room.width())));
  AttributedTextLayout(shown, font(), palette(), color, !isEnabled()).draw(painter, room, alignment_);
  if (hasFocus()) drawFocusRingApart(painter, QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), 2, palette());
}

}  // namespace corvane::qt
