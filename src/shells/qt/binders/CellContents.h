// What a prepared cell says in words: its text and whether it is a switch that is on. For assistive
// technology and for the delegate.
#pragma once

#include <QString>
#include <optional>

#include "controls/OutlineView.h"

namespace corvane::qt {

[[nodiscard]] QString textOf(const PreparedCell& prepared);
/// Nothing when the cell is no check box.
[[nodiscard]] std::optional<bool> checkStateOf(const PreparedCell& prepared);
/// The styled text that a default text cell shows; null for every other cell.
[[nodiscard]] std::optional<AttributedText> styledTextOf(const PreparedCell& prepared);
/// What the button says: its title, or, where nothing is chosen yet, what a press is for.
[[nodiscard]] QString wordsOf(const ButtonCell& cell);
/// A switch whose picture stands in the place of its box.
[[nodiscard]] bool isPictureButton(const ButtonCell& cell);

}  // namespace corvane::qt
