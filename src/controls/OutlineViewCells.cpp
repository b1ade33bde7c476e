// The cells of an outline: how they get their values, and what the user's acts on them do.
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

#include "controls/ActInProgress.h"
#include "controls/OutlineView.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

/// What a text cell shows for the value; a value of styled text shows its characters.
std::string textOf(const ObjectValue& value, const Formatter* formatter) {
  if (const auto* styled = std::get_if<AttributedText>(&value)) return styled->text;
  const auto* plain = std::get_if<PropertyList>(&value);
  if (plain == nullptr || !*plain) return {};
  if (formatter != nullptr) return formatter->stringForObjectValue(*plain).value_or(std::string());
  return description(*plain);
}

bool stateOf(const ObjectValue& value) {
  const auto* plain = std::get_if<PropertyList>(&value);
  return plain != nullptr && boolValue(*plain);
}

bool isItemIndex(const PopUpButtonCell& cell, std::int64_t index) {
  return index >= 0 && index < static_cast<std::int64_t>(cell.items.size());
}

/// Sets a value into a cell of each kind.
struct SetObjectValue {
  const ObjectValue& value;

  void operator()(EmptyCell& /*cell*/) const {}
  void operator()(ButtonCell& cell) const {
    if (cell.kind == ButtonCell::Kind::Switch) cell.on = stateOf(value);
  }
  void operator()(PopUpButtonCell& cell) const {
    const auto* plain = std::get_if<PropertyList>(&value);
    if (plain == nullptr || !*plain) return;
    const std::int32_t index = intValue(*plain);
    cell.selectedIndex = isItemIndex(cell, index) ? index : -1;
  }
  template <typename TextCell>
  void operator()(TextCell& cell) const {
    cell.text = textOf(value, cell.formatter.get());
  }
};

Cell defaultCell(const OutlineView::Column& column) {
  if (column.checkBox) return ButtonCell{};
  return TextFieldCell{};
}

template <typename Entry>
constexpr bool kIsTextCell =
    std::is_same_v<Entry, TextFieldCell> || std::is_same_v<Entry, SecureTextFieldCell> ||
    std::is_same_v<Entry, ComboBoxCell>;

bool isEditableText(const Cell& cell) {
  return std::visit(
      [](const auto& entry) {
        if constexpr (kIsTextCell<std::decay_t<decltype(entry)>>) return entry.editable;
        return false;
      },
      cell);
}

/// A text cell's formatter; null for none and for cells of other kinds.
Formatter* formatterOf(const Cell& cell) {
  return std::visit(
      [](const auto& entry) -> Formatter* {
        if constexpr (kIsTextCell<std::decay_t<decltype(entry)>>) return entry.formatter.get();
        return nullptr;
      },
      cell);
}

/// The value that a text cell takes for what was typed or chosen in it; nothing when the text could never
/// stand in the cell.
std::optional<PropertyList> valueOfEdit(const Cell& cell, const PropertyList& typed) {
  Formatter* formatter = formatterOf(cell);
  const std::string* text = typed.asString();
  if (formatter == nullptr || text == nullptr) return typed;
  const PartialStringCheck check = formatter->isPartialStringValid(*text);
  if (check.valid) return formatter->objectValueForTypedText(*text);
  if (check.newEditingString) return formatter->objectValueForTypedText(*check.newEditingString);
  return std::nullopt;
}

}  // namespace

PreparedCell OutlineView::preparedCell(const Column& column, const OutlineItem& item) {
  if (levelForItem(item) < 0) return {std::make_shared<Cell>(EmptyCell{}), {}};
  PreparedCell prepared;
  if (delegate_ != nullptr)
    prepared.cell = delegate_->outlineViewDataCellForTableColumnItem(*this, &column, item);
  ObjectValue value;
  if (dataSource_ != nullptr) {
    value = dataSource_->outlineViewObjectValueForTableColumnByItem(*this, column, item);
  }
  const bool isDefault = prepared.cell == nullptr;
  if (isDefault) prepared.cell = std::make_shared<Cell>(defaultCell(column));
  std::visit(SetObjectValue{value}, *prepared.cell);
  if (isDefault) prepared.value = std::move(value);
  if (delegate_ != nullptr) {
    delegate_->outlineViewWillDisplayCellForTableColumnItem(*this, *prepared.cell, column, item);
  }
  return prepared;
}

CellReference OutlineView::bareCell(const Column& column, const OutlineItem& item) {
  if (levelForItem(item) < 0) return std::make_shared<Cell>(EmptyCell{});
  CellReference cell;
  if (delegate_ != nullptr) cell = delegate_->outlineViewDataCellForTableColumnItem(*this, &column, item);
  return cell != nullptr ? cell : std::make_shared<Cell>(defaultCell(column));
}

double OutlineView::heightOfRow(const OutlineItem& item) {
  if (delegate_ == nullptr || levelForItem(item) < 0) return rowHeight_;
  return delegate_->outlineViewHeightOfRowByItem(*this, item);
}

bool OutlineView::showsOutlineCell(const OutlineItem& item) {
  if (!isExpandable(item)) return false;
  return delegate_ == nullptr || delegate_->outlineViewShouldShowOutlineCellForItem(*this, item);
}

bool OutlineView::shouldEdit(const Column& column, const OutlineItem& item) {
  if (!takesUserActs() || levelForItem(item) < 0) return false;
  return delegate_ == nullptr || delegate_->outlineViewShouldEditTableColumnItem(*this, column, item);
}

PartialStringCheck OutlineView::checkPartialString(const Cell& cell, const std::string& partial) {
  if (!isEditableText(cell)) return {false, std::nullopt};
  Formatter* formatter = formatterOf(cell);
  return formatter != nullptr ? formatter->isPartialStringValid(partial)
                              : PartialStringCheck{true, std::nullopt};
}

void OutlineView::clickCell(const OutlineItem& item, const Column& column) {
  if (!takesUserActs() || isActing_ || rowForItem(item) < 0) return;
  const Hold rows = holdRows();  // an action may run a panel, and whatever comes in behind it
  // Held here: what is called below may replace the selected cell.
  const CellReference cell = preparedCell(column, item).cell;
  selectedCell_ = cell;
  selectRow(rowForItem(item));
  const auto* button = std::get_if<ButtonCell>(cell.get());
  if (button == nullptr) return;
  const ActInProgress acting(isActing_);
  if (button->action) {
    button->action(*this);
  } else if (button->kind == ButtonCell::Kind::Switch && dataSource_ != nullptr) {
    // Rows that may not be edited in place still take the clicks on their check boxes; this is intended.
    dataSource_->outlineViewSetObjectValueForTableColumnByItem(*this, PropertyList::boolean(!button->on),
                                                               column, item);
  }
}

void OutlineView::editCell(const OutlineItem& item, const Column& column, const PropertyList& value) {
  if (rowForItem(item) < 0 || dataSource_ == nullptr) return;
  const Hold rows = holdRows();
  // The lock may have been closed while the user was typing.
  const std::optional<PropertyList> taken =
      takesUserActs() ? valueForEdit(column, item, value) : std::nullopt;
  if (taken) {
    dataSource_->outlineViewSetObjectValueForTableColumnByItem(*this, *taken, column, item);
  } else {
    reloadItem(item);
  }
}

std::optional<PropertyList> OutlineView::valueForEdit(const Column& column, const OutlineItem& item,
                                                      const PropertyList& value) {
  const CellReference cell = bareCell(column, item);  // what is stored already does not matter
  if (const auto* popUp = std::get_if<PopUpButtonCell>(cell.get())) {
    const std::optional<std::int64_t> index = value.asInteger();
    return index && isItemIndex(*popUp, *index) ? std::optional<PropertyList>(value) : std::nullopt;
  }
  if (!isEditableText(*cell) || !shouldEdit(column, item)) return std::nullopt;
  return valueOfEdit(*cell, value);
}

void OutlineView::clickDisclosure(const OutlineItem& item) {
  if (hidden() || rowForItem(item) < 0) return;
  if (isItemExpanded(item)) {
    collapseItem(item);
  } else {
    expandItem(item);
  }
}

}  // namespace corvane
