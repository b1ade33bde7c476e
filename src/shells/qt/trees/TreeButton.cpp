#include "trees/TreeButton.h"

#include <QPainter>

#include "Text.h"
#include "appearance/Shapes.h"
#include "trees/Tree.h"

namespace corvane::qt {
namespace {

constexpr int kInsetAcross = 10;
constexpr int kInsetAbove = 6;
constexpr int kNarrowest = 160;
constexpr int kPathSize = 11;
constexpr qreal kRadius = 6;

}  // namespace

TreeButton::TreeButton(QString folder, QWidget* parent) : PaintedButton(parent), path_(std::move(folder)) {
  setText(treeName(path_));
  setObjectName(QStringLiteral("tree ") + path_);
  setAccessibleName(treeTitle(fromQString(path_)));
  setToolTip(plainToolTip(fromQString(path_)));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAttribute(Qt::WA_Hover);
}

QFont TreeButton::pathFont() const {
  QFont small = font();
  small.setPixelSize(kPathSize);
  return small;
}

QSize TreeButton::sizeHint() const {
  const QFontMetrics name(font());
  const QFontMetrics path(pathFont());
  return {qMax(name.horizontalAdvance(text()), path.horizontalAdvance(path_)) + 2 * kInsetAcross,
          name.height() + path.height() + 2 * kInsetAbove};
}

QSize TreeButton::minimumSizeHint() const { return {kNarrowest, sizeHint().height()}; }

void TreeButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame = QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5);
  QColor ground = palette().color(QPalette::Base);
  if (isDown()) {
    ground = palette().color(QPalette::Midlight);
  } else if (underMouse()) {
    ground = palette().color(QPalette::AlternateBase);
  }
  drawRounded(painter, frame, kRadius, ground, outlineColor(palette()));
  if (hasFocus()) drawFocusRing(painter, frame, kRadius, palette());

  const QRect inner = rect().adjusted(kInsetAcross, kInsetAbove, -kInsetAcross, -kInsetAbove);
  const QFontMetrics name(font());
  painter.setFont(font());
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop,
                   name.elidedText(text(), Qt::ElideMiddle, inner.width()));
  painter.setFont(pathFont());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  painter.drawText(inner, Qt::AlignLeft | Qt::AlignBottom,
                   QFontMetrics(pathFont()).elidedText(path_, Qt::ElideMiddle, inner.width()));
}

}  // namespace corvane::qt
