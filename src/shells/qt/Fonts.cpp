#include "Fonts.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include "Text.h"

namespace corvane::qt {

QFont regularFont() { return toQFont(Font{Font::Family::System, kSystemFontSize, false, false}); }

QFont toQFont(const Font& font) {
  QFont result = QGuiApplication::font();
  if (font.family == Font::Family::Arial) {
    result.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), result.family()});
  }
  result.setPixelSize(qMax(1, qRound(font.size)));
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

double textWidth(std::string_view text, const Font& font) {
  return QFontMetricsF(toQFont(font)).horizontalAdvance(toQString(text));
}

}  // namespace corvane::qt
