#include "accessibility/AccessibleChoice.h"

#include <QWindow>
#include <utility>

#include "Text.h"

namespace corvane::qt {

AccessibleChoice::AccessibleChoice(AccessibleRows& rows, OutlineItem row, int index)
    : rows_(rows), row_(std::move(row)), index_(index) {}

QWindow* AccessibleChoice::window() const { return rows_.tree().window()->windowHandle(); }

QString AccessibleChoice::name() const {
  const SpokenRow row = spokenRow(rows_.outline(), row_);
  const auto* menu = row.cell != nullptr ? std::get_if<PopUpButtonCell>(row.cell.get()) : nullptr;
  const auto index = static_cast<std::size_t>(index_);
  return menu != nullptr && index < menu->items.size() ? toQString(menu->items[index]) : QString();
}

QAccessible::State AccessibleChoice::state() const {
  QAccessible::State state;
  const SpokenRow row = spokenRow(rows_.outline(), row_);
  const auto* menu = row.cell != nullptr ? std::get_if<PopUpButtonCell>(row.cell.get()) : nullptr;
  state.selectable = true;
  state.selected = menu != nullptr && menu->selectedIndex == index_;
  state.disabled = !rows_.outline().enabled();
  state.invisible = !rows_.tree().isVisible() || rows_.outline().rowForItem(row_) < 0;
  state.offscreen = true;
  return state;
}

void* AccessibleChoice::interface_cast(QAccessible::InterfaceType type) {
  return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList AccessibleChoice::actionNames() const {
  return rows_.outline().enabled() ? QStringList{pressAction()} : QStringList();
}

void AccessibleChoice::doAction(const QString& name) {
  if (actionNames().contains(name)) rows_.edit(row_, PropertyList::integer(index_));
}

}  // namespace corvane::qt
