// What assistive technology is told of a row of an outline. A row has one control at most, in whatever
// column, and is spoken of as that one thing: a plug-in with its check box is one row that can be switched
// and opened.
#pragma once

#include <QAccessible>
#include <QString>
#include <optional>

#include "controls/OutlineView.h"

namespace corvane::qt {

struct SpokenRow {
  QAccessible::Role role = QAccessible::TreeItem;
  QString name;
  QString description;
  QString value;             // what stands in a field, a menu or a box of numbers; of a password only bullets
  std::optional<bool> isOn;  // nothing: it is no switch
  const OutlineView::Column* column = nullptr;  // where its control stands; null: it has none
  CellReference cell;                           // its control

  /// Whether it is of no use while nothing may be changed. A row is opened and closed also then.
  [[nodiscard]] bool isForChanges() const { return column != nullptr && role != QAccessible::TreeItem; }
};

/// What the row is called whose values stand below it; nothing for the root. Reads none of the values.
[[nodiscard]] QString titleOf(OutlineView& outline, const OutlineItem& item);
[[nodiscard]] SpokenRow spokenRow(OutlineView& outline, const OutlineItem& item);

}  // namespace corvane::qt
