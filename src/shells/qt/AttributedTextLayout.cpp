#include "AttributedTextLayout.h"

#include <QPainter>
#include <QTextLayout>
#include <cmath>
#include <memory>
#include <vector>

#include "Fonts.h"
#include "Kept.h"
#include "Text.h"
#include "appearance/Contrast.h"

namespace corvane::qt {
namespace {

constexpr qreal kUnbounded = 1e6;
constexpr int kKept = 200;  // texts; about what a window of the usual size shows several times over

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

namespace {

struct Measure {
  qreal ascent = 0, height = 0;
};

/// A text in the toolkit's terms.
struct Styled {
  Styled(const AttributedText& given, const QFont& plainFont, const QPalette& palette, bool selected)
      : text(toQString(given.text)), font(plainFont) {
    // An empty last line, as under a title without a hint, is not one that was left out.
    while (text.endsWith(QLatin1Char('\n'))) text.chop(1);
    text.replace(QLatin1Char('\n'), QChar(QChar::LineSeparator));
    const std::string_view bytes = given.text;
    for (const AttributedText::Run& run : given.runs) {
      if (run.start > bytes.size()) continue;
      QTextLayout::FormatRange range;
      range.start = static_cast<int>(toQString(bytes.substr(0, run.start)).size());
      range.length = static_cast<int>(toQString(bytes.substr(run.start, run.length)).size());
      if (run.attributes.font) range.format.setFont(toQFont(*run.attributes.font));
      if (run.attributes.color && !selected) {
        range.format.setForeground(colorOf(*run.attributes.color, palette));
      }
      range.format.setFontUnderline(run.attributes.underlined);
      formats.append(range);
    }
  }

  /// Of the fonts that the text names; not of those that stand in for them.
  [[nodiscard]] Measure measure(const QTextLine& line) const {
    Measure result;
    const auto add = [&result](const QFont& named) {
      const QFontMetricsF metrics(named);
      result.ascent = std::max(result.ascent, metrics.ascent());
      result.height = std::max<qreal>(result.height, QFontMetrics(named).height());
    };
    const int lineEnd = line.textStart() + line.textLength();
    int plain = line.textLength();
    for (const QTextLayout::FormatRange& range : formats) {
      const int length =
          std::min(range.start + range.length, lineEnd) - std::max(range.start, line.textStart());
      if (length <= 0 || !range.format.hasProperty(QTextFormat::FontFamilies)) continue;
      add(range.format.font());
      plain -= length;
    }
    if (plain > 0 || result.height == 0) add(font);
    return result;
  }

  [[nodiscard]] std::unique_ptr<QTextLayout> lay(qreal width, bool wraps) const {
    auto layout = std::make_unique<QTextLayout>(text, font);
    QTextOption option;
    option.setWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
    layout->setTextOption(option);
    layout->setFormats(formats);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    qreal y = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
      line.setLineWidth(width);
      const Measure measured = measure(line);
      line.setPosition(QPointF(0, y + measured.ascent - line.ascent()));
      y += measured.height;
    }
    layout->endLayout();
    return layout;
  }

  /// The line of the text that begins there, shortened by an ellipsis where it must be.
  [[nodiscard]] std::unique_ptr<QTextLayout> shortened(int start, qreal width) const {
    Styled rest(*this);
    const auto lineBreak = text.indexOf(QChar(QChar::LineSeparator), start);
    rest.text = text.mid(start, lineBreak < 0 ? -1 : lineBreak - start);
    rest.formats.clear();
    for (QTextLayout::FormatRange range : formats) {
      const int end = range.start + range.length - start;
      range.start = std::max(0, range.start - start);
      range.length = end - range.start;
      if (range.length > 0) rest.formats.append(range);
    }
    auto whole = rest.lay(kUnbounded, false);
    if (whole->lineCount() == 0) return whole;
    const QTextLine line = whole->lineAt(0);
    const QChar ellipsis(0x2026);
    if (line.naturalTextWidth() <= width && lineBreak < 0) return whole;
    const qreal room = width - QFontMetricsF(font).horizontalAdvance(ellipsis);
    const int cut = line.xToCursor(std::max<qreal>(0, room), QTextLine::CursorBetweenCharacters);
    const bool over = cut > 0 && line.cursorToX(cut) > room;
    rest.text = rest.text.left(over ? cut - 1 : cut) + ellipsis;
    return rest.lay(kUnbounded, false);
  }

  QString text;
  QFont font;
  QList<QTextLayout::FormatRange> formats;
};

/// The lines that there is room for, each where it stands in the room.
class LaidOut {
 public:
  LaidOut(const Styled& styled, const QSizeF& room, Qt::Alignment alignment) {
    const bool wraps = room.height() >= 2 * QFontMetricsF(styled.font).height() * 0.9;
    layouts_.push_back(styled.lay(room.width(), wraps));
    const QTextLayout& layout = *layouts_.front();

    // A row is sometimes a little lower than its line.
    int shown = 0;
    qreal height = 0;
    while (shown < layout.lineCount()) {
      const qreal next = height + styled.measure(layout.lineAt(shown)).height;
      if (shown > 0 && next > room.height() + 2) break;
      height = next;
      ++shown;
    }
    const qreal top = std::floor((room.height() - height) / 2);
    qreal y = 0;
    for (int i = 0; i < shown; ++i) {
      QTextLine line = layout.lineAt(i);
      const bool isLast = i + 1 == shown && shown < layout.lineCount();
      const qreal lineHeight = styled.measure(line).height;
      qreal above = 0;
      if (isLast || line.naturalTextWidth() > room.width()) {
        isWhole_ = false;
        layouts_.push_back(styled.shortened(line.textStart(), room.width()));
        if (layouts_.back()->lineCount() == 0) continue;
        line = layouts_.back()->lineAt(0);
        above = y;
      }
      lines_.push_back({line, {offset(room.width(), line.naturalTextWidth(), alignment), top + above}});
      y += lineHeight;
    }
  }
  void draw(QPainter& painter, const QPointF& at) const {
    for (const auto& [line, place] : lines_) line.draw(&painter, at + place);
  }
  [[nodiscard]] bool isWhole() const { return isWhole_; }

 private:
  std::vector<std::unique_ptr<QTextLayout>> layouts_;
  std::vector<std::pair<QTextLine, QPointF>> lines_;
  bool isWhole_ = true;
};

/// Everything that how a text is laid out depends on.
struct Key {
  AttributedText text;
  QFont font;
  qint64 palette;
  bool selected;
  QSizeF room;
  Qt::Alignment alignment;
  friend bool operator==(const Key&, const Key&) = default;
};

std::size_t qHash(const Key& key, std::size_t seed) {
  return qHashBits(key.text.text.data(), key.text.text.size(), seed) ^
         static_cast<std::size_t>(key.room.width() * 31 + key.room.height());
}

}  // namespace

AttributedTextLayout::AttributedTextLayout(const AttributedText& text, const QFont& font,
                                           const QPalette& palette, const QColor& plainColor, bool selected)
    : text_(text), font_(font), palette_(palette), plainColor_(plainColor), selected_(selected) {}

QSizeF AttributedTextLayout::naturalSize() const {
  const Styled styled(text_, font_, palette_, selected_);
  const auto layout = styled.lay(kUnbounded, false);
  QSizeF size(0, 0);
  for (int i = 0; i < layout->lineCount(); ++i) {
    const QTextLine line = layout->lineAt(i);
    size = {std::max(size.width(), line.naturalTextWidth()), size.height() + styled.measure(line).height};
  }
  return {std::ceil(size.width()), std::ceil(size.height())};
}

bool AttributedTextLayout::draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment) const {
  if (text_.text.empty() || rect.width() <= 0) return text_.text.empty();
  const Key key{text_, font_, palette_.cacheKey(), selected_, rect.size(), alignment};
  const auto& text = kept<LaidOut>(
      key, kKept, [&] { return LaidOut(Styled(text_, font_, palette_, selected_), rect.size(), alignment); });
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setPen(plainColor_);
  text.draw(painter, rect.topLeft());
  painter.restore();
  return text.isWhole();
}

}  // namespace corvane::qt
