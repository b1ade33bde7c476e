// The few shapes that the style and the pane's own widgets draw with.
#pragma once

#include <QColor>
#include <QPalette>
#include <QRectF>

class QPainter;

namespace corvane::qt {

/// The thin line around controls; the fainter one between parts.
[[nodiscard]] QColor outlineColor(const QPalette& palette);
[[nodiscard]] QColor separatorColor(const QPalette& palette);

void drawRounded(QPainter& painter, const QRectF& frame, qreal radius, const QColor& fill,
                 const QColor& outline);
void drawFocusRing(QPainter& painter, const QRectF& frame, qreal radius, const QPalette& palette);
/// The ring of what has the ring's own colour, and of a bare text: a gap keeps them apart.
void drawFocusRingApart(QPainter& painter, const QRectF& frame, qreal radius, const QPalette& palette);
/// The mark of a row of controls that has the keyboard: the ground below them, and a line around them that is
/// thin enough to hide no edge of theirs.
void drawFocusBelow(QPainter& painter, const QRectF& row, const QPalette& palette);
void drawFocusAround(QPainter& painter, const QRectF& row, const QPalette& palette);
/// The mark of a coloured row that has the keyboard, in the colour of its text; the ring would not be seen
/// there.
void drawFocusInside(QPainter& painter, const QRectF& row, const QColor& text);
void drawCheckMark(QPainter& painter, const QRectF& box, bool mixed, const QColor& color);
/// The mark of a menu: up and down for a pop-up menu, down alone for a combo box.
void drawChevrons(QPainter& painter, const QRectF& rect, bool downOnly, const QColor& color);
void drawDisclosure(QPainter& painter, const QRectF& rect, bool open, const QColor& color);
/// A padlock that fills the height of the rectangle.
void drawPadlock(QPainter& painter, const QRectF& rect, bool open, const QPalette& palette);

/// The yellow triangle that marks a critical alert.
void drawCaution(QPainter& painter, const QRectF& rect);

}  // namespace corvane::qt
