// The one place that turns the core's points and fonts into the toolkit's, so that a text is measured with
// the font that it is drawn with. A point of the core, and of the interface files, is a 13th of the size of
// the desktop's font: all that is fixed in points grows and shrinks with that font.
#pragma once

#include <QFont>
#include <QWidget>

#include "values/AttributedText.h"

namespace corvane::qt {

/// The desktop's font; set once for the whole application.
[[nodiscard]] QFont regularFont();
[[nodiscard]] QFont toQFont(const Font& font);
/// In device-independent pixels, whole ones.
[[nodiscard]] int toPixels(double points);
[[nodiscard]] double toPoints(double pixels);
/// Brings what an interface file has laid out in points to pixels. Called once for each, right after it was
/// set up.
void scaleToFont(QWidget& laidOut);
/// Dresses the label of a hint beside or below a control: smaller and paler.
void makeHint(QWidget& label);
/// The width in points of the text in one line.
[[nodiscard]] double textWidth(std::string_view text, const Font& font);

}  // namespace corvane::qt
