// Where the letters of one line of text stand. Every text of the window is drawn here or by the same rule, so
// that what stands beside each other stands on one line, whatever widget shows it, in every font and at every
// scale. A letter that the font has not got, an emoji for one, comes from another font and is often higher:
// it moves nothing.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;

namespace corvane::qt {

/// The vertical place of the line's baseline in the middle of the rectangle.
[[nodiscard]] qreal baselineIn(const QRectF& rect, const QFont& font);
/// The lowest even or odd height, as the font's own is, that is not below this one: of two such heights in
/// one row the middles, and with them the baselines, are the same.
[[nodiscard]] int alignedHeight(int height, const QFontMetrics& metrics);
/// The path with as much of its middle left out as it must be to have room in the width: where it begins and
/// what it ends in tell it from others.
[[nodiscard]] QString shortenedPath(const QString& path, const QFont& font, int width);
/// Draws the text in the painter's font and colour, at the top, in the middle or at the bottom.
void drawTextLine(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text);

}  // namespace corvane::qt
