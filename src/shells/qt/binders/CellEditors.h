// The editors of an outline's cells: a field, a field with bullets, a number with a list, a menu. Used by the
// delegate alone.
#pragma once

#include <QWidget>
#include <optional>

#include "controls/OutlineView.h"

namespace corvane::qt {

/// Whether cells of this kind have an editor at all.
[[nodiscard]] bool hasEditor(const Cell& cell);
/// An editor for the cell, or null. Keystrokes are checked by the outline.
[[nodiscard]] QWidget* createCellEditor(OutlineView& outline, const CellReference& cell, QWidget* parent);
/// Shows the cell's value in its editor, unless the user has begun to type.
void showInEditor(const Cell& cell, QWidget& editor);
/// What was typed or chosen; nothing when the user changed nothing.
[[nodiscard]] std::optional<PropertyList> valueOfEditor(const Cell& cell, const QWidget& editor);

}  // namespace corvane::qt
