// A styled text laid out for drawing: wrapped at a width, with what does not fit shortened by an ellipsis.
// Used by labels, by the rows of tables and by the cells of outlines.
#pragma once

#include <QFont>
#include <QPalette>
#include <QRectF>
#include <QTextLayout>

#include "values/AttributedText.h"

class QPainter;

namespace corvane::qt {

/// The colour that a role has against the base colour of the palette: each is readable in light and in dark.
[[nodiscard]] QColor colorOf(TextColor role, const QPalette& palette);

class AttributedTextLayout {
 public:
  /// `font` stands where the text names none. On a selected row every part has the selection's text colour.
  AttributedTextLayout(const AttributedText& text, const QFont& font, const QPalette& palette,
                       const QColor& plainColor, bool selected = false);

  /// Without wrapping.
  [[nodiscard]] QSizeF naturalSize() const;
  /// Draws the text inside the rectangle, in the middle of its height. Lines are wrapped when there is room
  /// for more than one. Answers whether all of it is shown.
  bool draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment) const;

 private:
  struct Line {
    qreal ascent = 0, height = 0;
  };
  /// Of the fonts that the text names; not of those that stand in for them.
  [[nodiscard]] Line measure(const QTextLine& line) const;
  qreal lay(QTextLayout& layout, qreal width, bool wraps) const;
  void drawShortened(QPainter& painter, int start, const QRectF& rect, Qt::Alignment alignment) const;

  QString text_;
  QFont font_;
  QColor plainColor_;
  QList<QTextLayout::FormatRange> formats_;
};

}  // namespace corvane::qt
