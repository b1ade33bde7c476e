#include "Fonts.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include "Text.h"

namespace corvane::qt {
namespace {

constexpr int kHintSize = 11;

}  // namespace

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

void makeHint(QWidget& label) {
  QFont font = label.font();
  font.setPixelSize(kHintSize);
  label.setFont(font);
  label.setForegroundRole(QPalette::PlaceholderText);
}

double textWidth(std::string_view text, const Font& font) {
  return QFontMetricsF(toQFont(font)).horizontalAdvance(toQString(text));
}

}  // namespace corvane::qt
