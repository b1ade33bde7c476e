#include "widgets/LabelButton.h"

#include <QPainter>
#include <algorithm>

#include "AttributedTextLayout.h"
#include "Text.h"
#include "appearance/Shapes.h"

namespace corvane::qt {
namespace {

constexpr int kInset = 2;  // of the text, for the focus ring around it

}  // namespace

LabelButton::LabelButton(QWidget* parent) : PaintedButton(parent) {
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setForegroundRole(QPalette::WindowText);
  setActive(false);
}

void LabelButton::setAttributedText(const AttributedText& text) {
  if (text == text_ && !this->text().isEmpty()) return;
  text_ = text;
  setText(toQString(text.text));  // for assistive technology; painting uses the styled text
  showShape();
  updateGeometry();
  update();
}

void LabelButton::setActive(bool active) {
  setFocusPolicy(active ? Qt::StrongFocus : Qt::NoFocus);
  showShape();
}

bool LabelButton::isLink() const {
  return std::any_of(text_.runs.begin(), text_.runs.end(),
                     [](const auto& run) { return run.attributes.underlined; });
}

void LabelButton::showShape() {
  if (isLink() && isActive()) {
    setCursor(Qt::PointingHandCursor);
  } else {
    unsetCursor();
  }
}

void LabelButton::setAlignment(Qt::Alignment alignment) {
  alignment_ = alignment;
  update();
}

QSize LabelButton::sizeHint() const {
  const QSizeF size =
      AttributedTextLayout(text_, font(), palette(), palette().color(QPalette::WindowText)).naturalSize();
  return {qCeil(size.width()) + 2 * kInset, qMax(20, qCeil(size.height()) + 2)};
}

QSize LabelButton::minimumSizeHint() const { return {20, sizeHint().height()}; }

void LabelButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor color = palette().color(foregroundRole());
  if (isDown()) color.setAlphaF(0.6F);
  AttributedTextLayout(text_, font(), palette(), color, !isEnabled())
      .draw(painter, rect().adjusted(kInset, 0, -kInset, 0), alignment_);
  if (hasFocus()) drawFocusRingApart(painter, QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5), 2, palette());
}

}  // namespace corvane::qt
