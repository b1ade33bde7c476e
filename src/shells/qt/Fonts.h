// The one place that turns the core's fonts into the toolkit's, so that a text is measured with the font that
// it is drawn with. A point of the core is a device-independent pixel.
#pragma once

#include <QFont>
#include <QWidget>

#include "values/AttributedText.h"

namespace corvane::qt {

/// The desktop's family in the pane's regular size; set once for the whole application.
[[nodiscard]] QFont regularFont();
[[nodiscard]] QFont toQFont(const Font& font);
/// Dresses the label of a hint beside or below a control: smaller and paler.
void makeHint(QWidget& label);
/// The width in points of the text in one line.
[[nodiscard]] double textWidth(std::string_view text, const Font& font);

}  // namespace corvane::qt
