// The cells of an outline as AppKit's: one of the toolkit for each place, filled anew whenever it is shown.
#pragma once

#include <string>

#import "AppKit.h"
#include "controls/OutlineView.h"

namespace corvane::appkit {

/// A cell for the kind; the caller releases it.
[[nodiscard]] NSCell* makeCell(const Cell& description);
/// Whether a cell that `makeCell` made for the one description serves for the other too.
[[nodiscard]] bool isSameKind(const Cell& one, const Cell& other);
/// Shows the description in the cell, all but its value.
void fillCell(NSCell* cell, const Cell& description, bool enabled);
/// The value, in the form in which AppKit gives it to the cell.
[[nodiscard]] id objectValueOf(const PreparedCell& prepared);
[[nodiscard]] bool isTypedIn(const Cell& cell);
/// The text in a cell that is typed in; empty for all others.
[[nodiscard]] std::string typedTextOf(const Cell& cell);
/// How wide the cell's control is; 0 is the whole width.
[[nodiscard]] double widthOf(const Cell& cell);

}  // namespace corvane::appkit
