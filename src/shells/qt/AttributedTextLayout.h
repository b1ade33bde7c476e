// A styled text laid out for drawing: wrapped at a width, with what does not fit shortened by an ellipsis.
// Used by labels, by the rows of tables and by the cells of outlines.
#pragma once

#include <QFont>
#include <QPalette>
#include <QRectF>

#include "values/AttributedText.h"

class QPainter;

namespace corvane::qt {

/// The colour that a role has against the base colour of the palette: each is readable in light and in dark.
[[nodiscard]] QColor colorOf(TextColor role, const QPalette& palette);

/// Laying out costs more than drawing, so that the texts that were drawn last are kept laid out.
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
  AttributedText text_;
  QFont font_;
  QPalette palette_;
  QColor plainColor_;
  bool selected_;
};

}  // namespace corvane::qt
