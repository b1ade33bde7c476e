#include "Fonts.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>

#include "Text.h"

namespace corvane::qt {
namespace {

constexpr int kHintSize = 11;

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

QFont regularFont() { return toQFont(Font{Font::Family::System, kSystemFontSize, false, false}); }

QFont toQFont(const Font& font) {
  QFont result = QGuiApplication::font();
  if (font.family == Font::Family::Arial) {
    result.setFamily(headerFamily());
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
