#include "trees/TreeButton.h"

#include <QPainter>

#include "Fonts.h"
#include "Text.h"
#include "TextLine.h"
#include "appearance/Shapes.h"
#include "trees/Tree.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kInsetAcross = 10;
constexpr double kInsetAbove = 6;
constexpr double kNarrowest = 160;
constexpr double kPathSize = 11;
constexpr double kRadius = 6;

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
  small.setPixelSize(toPixels(kPathSize));
  return small;
}

QSize TreeButton::sizeHint() const {
  const QFontMetrics name(font());
  const QFontMetrics path(pathFont());
  return {qMax(name.horizontalAdvance(text()), path.horizontalAdvance(path_)) + 2 * toPixels(kInsetAcross),
          name.height() + path.height() + 2 * toPixels(kInsetAbove)};
}

QSize TreeButton::minimumSizeHint() const { return {toPixels(kNarrowest), sizeHint().height()}; }

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
  const int radius = toPixels(kRadius);
  drawRounded(painter, frame, radius, ground, outlineColor(palette()));
  if (hasFocus()) drawFocusRing(painter, frame, radius, palette());

  const int across = toPixels(kInsetAcross);
  const int above = toPixels(kInsetAbove);
  const QRect inner = rect().adjusted(across, above, -across, -above);
  const auto draw = [&](const QString& line, const QFont& lineFont, QPalette::ColorRole role,
                        Qt::Alignment where) {
    painter.setFont(lineFont);
    painter.setPen(palette().color(role));
    drawTextLine(painter, inner, where, shortenedPath(line, lineFont, inner.width()));
  };
  draw(text(), font(), QPalette::Text, Qt::AlignTop);
  draw(path_, pathFont(), QPalette::PlaceholderText, Qt::AlignBottom);
}

}  // namespace corvane::qt
