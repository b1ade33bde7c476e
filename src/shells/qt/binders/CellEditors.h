// The widgets in which cells of an outline are edited in their place: a field for texts and passwords, a
// combo box for numbers, a pop-up menu. The delegate makes one when an editor opens; each guards what is
// typed with the cell's own rules and knows whether the user has given a new value.
#pragma once

#include <QPoint>
#include <QWidget>
#include <functional>
#include <optional>

#include "controls/OutlineView.h"

namespace corvane::qt {

class CellEditor {
 public:
  virtual ~CellEditor() = default;
  /// Brings the editor into the state in which the user expects it; `press` is where the mouse was pressed in
  /// it, nothing when it was opened with the keyboard.
  virtual void begin(std::optional<QPoint> press) = 0;
  /// The value that the user has given; nothing when it was left as it was.
  [[nodiscard]] virtual std::optional<PropertyList> newValue() const = 0;

  /// For the delegate: the user has chosen a value / the menu was closed without a choice.
  std::function<void()> onChosen;
  std::function<void()> onDismissed;
};

/// Whether a cell of this kind is edited in a widget.
[[nodiscard]] bool isEditedInPlace(const Cell& cell);
/// Whether it is one that is typed in.
[[nodiscard]] bool isTypedIn(const Cell& cell);
/// A widget that is a `CellEditor` as well; null for cells that are not edited in one.
[[nodiscard]] QWidget* makeCellEditor(const CellReference& cell, QWidget* parent);

}  // namespace corvane::qt
