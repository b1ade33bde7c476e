#include "AttributedTextLayout.h"

#include <QPainter>
#include <cmath>

#include "Fonts.h"
#include "Text.h"
#include "appearance/Contrast.h"

namespace corvane::qt {
namespace {

constexpr qreal kUnbounded = 1e6;

bool hasDarkBase(const QPalette& palette) {
  return palette.color(QPalette::Base).lightnessF() < palette.color(QPalette::Text).lightnessF();
}

qreal offset(qreal room, qreal width, Qt::Alignment alignment) {
  if (alignment.testFlag(Qt::AlignHCenter)) return std::max<qreal>(0, std::floor((room - width) / 2));
  if (alignment.testFlag(Qt::AlignRight)) return std::max<qreal>(0, room - width);
  return 0;
}

/// Each is readable in the usual light and in the usual dark.
QColor usualColorOf(TextColor role, const QPalette& palette) {
  const bool dark = hasDarkBase(palette);
  switch (role) {
    case TextColor::Gray:
      return dark ? QColor(0x9d, 0x9d, 0xa2) : QColor(0x70, 0x70, 0x75);
    case TextColor::DarkGray:
      return dark ? QColor(0xb4, 0xb4, 0xb9) : QColor(0x55, 0x55, 0x5a);
    case TextColor::Red:
      return dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xc4, 0x1e, 0x1e);
    case TextColor::Blue:
      return dark ? QColor(0x6f, 0xb1, 0xff) : QColor(0x0a, 0x58, 0xca);
  }
  return palette.color(QPalette::Text);
}

}  // namespace

QColor colorOf(TextColor role, const QPalette& palette) {
  return readable(
      usualColorOf(role, palette), palette.color(QPalette::Active, QPalette::Text),
      {palette.color(QPalette::Active, QPalette::Base), palette.color(QPalette::Active, QPalette::Window)});
}

AttributedTextLayout::AttributedTextLayout(const AttributedText& text, const QFont& font,
                                           const QPalette& palette, const QColor& plainColor, bool selected)
    : text_(toQString(text.text)), font_(font), plainColor_(plainColor) {
  // An empty last line, as under a title without a hint, is not one that was left out.
  while (text_.endsWith(QLatin1Char('\n'))) text_.chop(1);
  text_.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
  const std::string_view bytes = text.text;
  for (const AttributedText::Run& run : text.runs) {
    if (run.start > bytes.size()) continue;
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(toQString(bytes.substr(0, run.start)).size());
    range.length = static_cast<int>(toQString(bytes.substr(run.start, run.length)).size());
    if (run.attributes.font) range.format.setFont(toQFont(*run.attributes.font));
    if (run.attributes.color && !selected) {
      range.format.setForeground(colorOf(*run.attributes.color, palette));
    }
    range.format.setFontUnderline(run.attributes.underlined);
    formats_.append(range);
  }
}

AttributedTextLayout::Line AttributedTextLayout::measure(const QTextLine& line) const {
  Line result;
  const auto add = [&result](const QFont& font) {
    const QFontMetricsF metrics(font);
    result.ascent = std::max(result.ascent, metrics.ascent());
    result.height = std::max<qreal>(result.height, QFontMetrics(font).height());
  };
  const int lineEnd = line.textStart() + line.textLength();
  int plain = line.textLength();
  for (const QTextLayout::FormatRange& range : formats_) {
    const int length =
        std::min(range.start + range.length, lineEnd) - std::max(range.start, line.textStart());
    if (length <= 0 || !range.format.hasProperty(QTextFormat::FontFamilies)) continue;
    add(range.format.font());
    plain -= length;
  }
  if (plain > 0 || result.height == 0) add(font_);
  return result;
}

qreal AttributedTextLayout::lay(QTextLayout& layout, qreal width, bool wraps) const {
  QTextOption option;
  option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.setFormats(formats_);
  layout.beginLayout();
  qreal y = 0;
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    const Line measured = measure(line);
    line.setPosition(QPointF(0, y + measured.ascent - line.ascent()));
    y += measured.height;
  }
  layout.endLayout();
  return y;
}

QSizeF AttributedTextLayout::naturalSize() const {
  QTextLayout layout(text_, font_);
  const qreal height = lay(layout, kUnbounded, false);
  qreal width = 0;
  for (int i = 0; i < layout.lineCount(); ++i) width = std::max(width, layout.lineAt(i).naturalTextWidth());
  return {std::ceil(width), std::ceil(height)};
}

bool AttributedTextLayout::draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment) const {
  if (text_.isEmpty() || rect.width() <= 0) return text_.isEmpty();
  QTextLayout layout(text_, font_);
  const qreal lineHeight = QFontMetricsF(font_).height();
  const bool wraps = rect.height() >= 2 * lineHeight * 0.9;
  lay(layout, rect.width(), wraps);

  // How many lines there is room for; a row is sometimes a little lower than its line.
  int shown = 0;
  qreal height = 0;
  while (shown < layout.lineCount()) {
    const qreal next = height + measure(layout.lineAt(shown)).height;
    if (shown > 0 && next > rect.height() + 2) break;
    height = next;
    ++shown;
  }

  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setPen(plainColor_);
  const qreal top = rect.top() + std::floor((rect.height() - height) / 2);
  bool isWhole = true;
  qreal y = 0;
  for (int i = 0; i < shown; ++i) {
    const QTextLine line = layout.lineAt(i);
    const QRectF lineRect(rect.left(), top + y, rect.width(), measure(line).height);
    y += lineRect.height();
    const bool cutShort =
        (i + 1 == shown && shown < layout.lineCount()) || line.naturalTextWidth() > rect.width();
    if (cutShort) {
      isWhole = false;
      drawShortened(painter, line.textStart(), lineRect, alignment);
    } else {
      const qreal x = offset(rect.width(), line.naturalTextWidth(), alignment);
      line.draw(&painter, QPointF(lineRect.left() + x, top));
    }
  }
  painter.restore();
  return isWhole;
}

void AttributedTextLayout::drawShortened(QPainter& painter, int start, const QRectF& rect,
                                         Qt::Alignment alignment) const {
  AttributedTextLayout rest(*this);
  const auto lineBreak = text_.indexOf(QChar(QChar::LineSeparator), start);
  rest.text_ = text_.mid(start, lineBreak < 0 ? -1 : lineBreak - start);
  rest.formats_.clear();
  for (QTextLayout::FormatRange range : formats_) {
    const int end = range.start + range.length - start;
    range.start = std::max(0, range.start - start);
    range.length = end - range.start;
    if (range.length > 0) rest.formats_.append(range);
  }
  QTextLayout whole(rest.text_, font_);
  rest.lay(whole, kUnbounded, false);
  if (whole.lineCount() == 0) return;
  const QChar ellipsis(0x2026);
  if (whole.lineAt(0).naturalTextWidth() > rect.width() || lineBreak >= 0) {
    const qreal room = rect.width() - QFontMetricsF(font_).horizontalAdvance(ellipsis);
    const int cut = whole.lineAt(0).xToCursor(std::max<qreal>(0, room), QTextLine::CursorBetweenCharacters);
    const bool over = cut > 0 && whole.lineAt(0).cursorToX(cut) > room;
    rest.text_ = rest.text_.left(over ? cut - 1 : cut) + ellipsis;
  }
  QTextLayout shortened(rest.text_, font_);
  rest.lay(shortened, kUnbounded, false);
  const qreal x = offset(rect.width(), shortened.lineAt(0).naturalTextWidth(), alignment);
  shortened.lineAt(0).draw(&painter, QPointF(rect.left() + x, rect.top()));
}

}  // namespace corvane::qt
