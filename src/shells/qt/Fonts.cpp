#include "Fonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QGuiApplication>

#include "Text.h"

namespace corvane::qt {
namespace {

constexpr double kHintSize = 11;

/// Looked up once for each font: every row that is drawn asks several times.
double pixelsPerPoint() {
  static QFont known;
  static double pixels = 0;
  const QFont desktop = QGuiApplication::font();
  if (pixels > 0 && desktop == known) return pixels;
  known = desktop;
  const int size = desktop.pixelSize() > 0 ? desktop.pixelSize() : QFontInfo(desktop).pixelSize();
  return pixels = size / kSystemFontSize;
}

QSize scaled(const QSize& size) {
  const auto side = [](int points) { return points < QWIDGETSIZE_MAX ? toPixels(points) : points; };
  return {side(size.width()), side(size.height())};
}

void scale(QLayout& layout) {
  const QMargins margins = layout.contentsMargins();
  layout.setContentsMargins(toPixels(margins.left()), toPixels(margins.top()), toPixels(margins.right()),
                            toPixels(margins.bottom()));
  if (auto* grid = qobject_cast<QGridLayout*>(&layout)) {
    grid->setHorizontalSpacing(toPixels(grid->horizontalSpacing()));
    grid->setVerticalSpacing(toPixels(grid->verticalSpacing()));
    for (int column = 0; column < grid->columnCount(); ++column)
      grid->setColumnMinimumWidth(column, toPixels(grid->columnMinimumWidth(column)));
  } else {
    layout.setSpacing(toPixels(layout.spacing()));
  }
  for (int index = 0; index < layout.count(); ++index) {
    QLayoutItem* item = layout.itemAt(index);
    if (QSpacerItem* spacer = item->spacerItem()) {
      const QSize size = scaled(spacer->sizeHint());
      const QSizePolicy policy = spacer->sizePolicy();
      spacer->changeSize(size.width(), size.height(), policy.horizontalPolicy(), policy.verticalPolicy());
    }
    if (item->layout() != nullptr) scale(*item->layout());
  }
}

/// The family that texts of the header are shown in: Arial, what has its widths, or the desktop's.
const QString& headerFamily() {
  static const QString family = [] {
    for (const QString& wanted : {QStringLiteral("Arial"), QStringLiteral("Liberation Sans")}) {
      if (QFontDatabase::hasFamily(wanted)) return wanted;
    }
    return QGuiApplication::font().family();
  }();
  return family;
}

}  // namespace

QFont regularFont() {
  QFont font = QGuiApplication::font();
  font.setPixelSize(qMax(1, toPixels(kSystemFontSize)));
  return font;
}

QFont toQFont(const Font& font) {
  QFont result = QGuiApplication::font();
  if (font.family == Font::Family::Arial) {
    result.setFamily(headerFamily());
  }
  result.setPixelSize(qMax(1, toPixels(font.size)));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

int toPixels(double points) { return qRound(points * pixelsPerPoint()); }
double toPoints(double pixels) { return pixels / pixelsPerPoint(); }

void scaleToFont(QWidget& laidOut) {
  QList<QWidget*> widgets = laidOut.findChildren<QWidget*>();
  widgets.prepend(&laidOut);
  for (QWidget* widget : widgets) {
    widget->setMinimumSize(scaled(widget->minimumSize()));
    widget->setMaximumSize(scaled(widget->maximumSize()));
    if (widget->layout() != nullptr) {
      scale(*widget->layout());
    } else if (const QWidget* around = widget->parentWidget();
               around != nullptr && around->layout() == nullptr) {
      const QRect place = widget->geometry();
      widget->setGeometry(
          QRect(toPixels(place.x()), toPixels(place.y()), toPixels(place.width()), toPixels(place.height())));
    }
  }
}

void makeHint(QWidget& label) {
  QFont font = label.font();
  font.setPixelSize(toPixels(kHintSize));
  label.setFont(font);
  label.setForegroundRole(QPalette::PlaceholderText);
}

double textWidth(std::string_view text, const Font& font) {
  return toPoints(QFontMetricsF(toQFont(font)).horizontalAdvance(toQString(text)));
}

}  // namespace corvane::qt
