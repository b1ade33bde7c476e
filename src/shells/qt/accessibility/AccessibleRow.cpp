#include "accessibility/AccessibleRow.h"

#include <QWindow>
#include <algorithm>
#include <utility>

#include "Text.h"
#include "accessibility/AccessibleChoice.h"
#include "widgets/EntryField.h"

namespace corvane::qt {
namespace {

// The toolkit has no words for these.
const QString kExpand = QStringLiteral("Expand");
const QString kCollapse = QStringLiteral("Collapse");
const QString kEdit = QStringLiteral("Edit");

bool isField(QAccessible::Role role) { return role == QAccessible::EditableText; }

const ComboBoxCell* numbersOf(const SpokenRow& row) { return std::get_if<ComboBoxCell>(row.cell.get()); }

const PopUpButtonCell* menuOf(const SpokenRow& row) { return std::get_if<PopUpButtonCell>(row.cell.get()); }

/// What stands in a field or a box of numbers, also where bullets are shown.
struct TypedText {
  QString operator()(const TextFieldCell& cell) const { return toQString(cell.text); }
  QString operator()(const SecureTextFieldCell& cell) const { return toQString(cell.text); }
  QString operator()(const ComboBoxCell& cell) const { return toQString(cell.text); }
  template <typename Other>
  QString operator()(const Other& /*cell*/) const {
    return {};
  }
};

}  // namespace

AccessibleRow::AccessibleRow(AccessibleRows& rows, OutlineItem item) : rows_(rows), item_(std::move(item)) {}

AccessibleRow::~AccessibleRow() {
  for (const auto& [index, id] : choices_) QAccessible::deleteAccessibleInterface(id);
}

bool AccessibleRow::isValid() const { return rows_.outline().levelForItem(item_) >= 0; }

QWindow* AccessibleRow::window() const { return rows_.tree().window()->windowHandle(); }

QAccessibleInterface* AccessibleRow::parent() const {
  QAccessibleInterface* above = rows_.interfaceOf(rows_.outline().parentForItem(item_));
  return above != nullptr ? above : QAccessible::queryAccessibleInterface(&rows_.tree());
}

// A menu has its items below it, every other row the rows that it has open.
int AccessibleRow::childCount() const {
  if (!isValid()) return 0;
  const SpokenRow row = spoken();
  if (const PopUpButtonCell* menu = menuOf(row)) return static_cast<int>(menu->items.size());
  OutlineView& outline = rows_.outline();
  return outline.isItemExpanded(item_) ? static_cast<int>(outline.numberOfChildrenOfItem(item_)) : 0;
}

QAccessibleInterface* AccessibleRow::child(int index) const {
  if (index < 0 || index >= childCount()) return nullptr;
  const SpokenRow row = spoken();
  if (menuOf(row) == nullptr)
    return rows_.interfaceOf(rows_.outline().childOfItem(item_, static_cast<std::size_t>(index)));
  const auto [known, isNew] = choices_.try_emplace(index, 0);
  if (isNew)
    known->second = QAccessible::registerAccessibleInterface(new AccessibleChoice(rows_, item_, index));
  return QAccessible::accessibleInterface(known->second);
}

int AccessibleRow::indexOfChild(const QAccessibleInterface* child) const {
  for (int index = 0, count = childCount(); index < count; ++index) {
    if (this->child(index) == child) return index;
  }
  return -1;
}

QAccessibleInterface* AccessibleRow::childAt(int /*x*/, int /*y*/) const { return nullptr; }

QAccessibleInterface* AccessibleRow::focusChild() const { return nullptr; }

QString AccessibleRow::text(QAccessible::Text kind) const {
  if (!isValid()) return {};
  const SpokenRow row = spoken();
  switch (kind) {
    case QAccessible::Name:
      return row.name;
    case QAccessible::Description:
      return row.description;
    case QAccessible::Value:
      return row.value;
    default:
      return {};
  }
}

void AccessibleRow::setText(QAccessible::Text kind, const QString& text) {
  if (kind != QAccessible::Value || !isValid()) return;
  const SpokenRow row = spoken();
  const PopUpButtonCell* menu = menuOf(row);
  if (menu == nullptr) {
    rows_.edit(item_, PropertyList::string(fromQString(EntryField::inOneLine(text))));
    return;
  }
  const auto item = std::find(menu->items.begin(), menu->items.end(), fromQString(text));
  if (item != menu->items.end()) rows_.edit(item_, PropertyList::integer(item - menu->items.begin()));
}

QRect AccessibleRow::rect() const {
  const OutlineTree& tree = rows_.tree();
  const QModelIndex index = rows_.indexOf(item_);
  if (!index.isValid() || rows_.outline().rowForItem(item_) < 0) return {};
  const QRect cell = tree.visualRect(index);
  const QRect row(0, cell.top(), tree.viewport()->width(), cell.height());
  return {tree.viewport()->mapToGlobal(row.topLeft()), row.size()};
}

QAccessible::Role AccessibleRow::role() const { return isValid() ? spoken().role : QAccessible::NoRole; }

bool AccessibleRow::mayEdit(const SpokenRow& row) const {
  return row.column != nullptr && rows_.outline().shouldEdit(*row.column, item_);
}

QAccessible::State AccessibleRow::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  OutlineView& outline = rows_.outline();
  const OutlineTree& tree = rows_.tree();
  const SpokenRow row = spoken();
  state.focusable = true;
  state.focused = tree.hasFocus() && rows_.itemOf(tree.currentIndex()) == item_;
  state.invisible =
      !tree.isVisible() || outline.rowForItem(item_) < 0 || tree.isLeftOut(rows_.indexOf(item_));
  state.offscreen = !tree.viewport()->visibleRegion().intersects(
      QRect(tree.viewport()->mapFromGlobal(rect().topLeft()), rect().size()));
  if (outline.showsOutlineCell(item_)) {
    state.expandable = true;
    state.expanded = outline.isItemExpanded(item_);
    state.collapsed = !state.expanded;
  }
  state.checkable = row.isOn.has_value();
  state.checked = row.isOn.value_or(false);
  state.disabled = row.isForChanges() && !outline.enabled();
  state.hasPopup = row.role == QAccessible::ComboBox;
  if (isField(row.role) || numbersOf(row) != nullptr) {
    state.editable = mayEdit(row);
    state.readOnly = !state.editable;
    state.passwordEdit = std::holds_alternative<SecureTextFieldCell>(*row.cell);
  }
  return state;
}

void* AccessibleRow::interface_cast(QAccessible::InterfaceType type) {
  if (!isValid()) return nullptr;
  const SpokenRow row = spoken();
  const bool isTypedIn = isField(row.role) || numbersOf(row) != nullptr;
  switch (type) {
    case QAccessible::ActionInterface:
      return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::ValueInterface:
      return row.role == QAccessible::ComboBox ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
    case QAccessible::TextInterface:
      return isTypedIn ? static_cast<QAccessibleTextInterface*>(this) : nullptr;
    case QAccessible::EditableTextInterface:
      return isTypedIn ? static_cast<QAccessibleEditableTextInterface*>(this) : nullptr;
    default:
      return nullptr;
  }
}

// The first one is what a screen reader does without asking: what the Space key does.
QStringList AccessibleRow::actionNames() const {
  if (!isValid()) return {};
  OutlineView& outline = rows_.outline();
  const SpokenRow row = spoken();
  QStringList names;
  if (row.column != nullptr && outline.enabled()) {
    if (row.isOn) {
      names << toggleAction();
    } else if (std::holds_alternative<ButtonCell>(*row.cell)) {
      names << pressAction();
    } else if (mayEdit(row)) {
      names << (row.role == QAccessible::ComboBox ? showMenuAction() : kEdit);
    }
  }
  if (outline.showsOutlineCell(item_)) names << (outline.isItemExpanded(item_) ? kCollapse : kExpand);
  names << setFocusAction();
  return names;
}

void AccessibleRow::doAction(const QString& name) {
  if (!actionNames().contains(name)) return;
  if (name == toggleAction()) {
    rows_.toggle(item_);
  } else if (name == pressAction()) {
    rows_.press(item_);
  } else if (name == kExpand || name == kCollapse) {
    rows_.turn(item_);
  } else if (name == setFocusAction()) {
    rows_.goTo(item_);
  } else {
    rows_.openEditor(item_);
  }
}

QStringList AccessibleRow::keyBindingsForAction(const QString& /*name*/) const { return {}; }

QVariant AccessibleRow::currentValue() const {
  const SpokenRow row = spoken();
  if (const PopUpButtonCell* menu = menuOf(row)) return menu->selectedIndex;
  return row.value.toInt();
}

void AccessibleRow::setCurrentValue(const QVariant& value) {
  const bool isMenu = menuOf(spoken()) != nullptr;
  rows_.edit(item_, isMenu ? PropertyList::integer(value.toInt())
                           : PropertyList::string(fromQString(QString::number(value.toInt()))));
}

QVariant AccessibleRow::maximumValue() const {
  const SpokenRow row = spoken();
  if (const PopUpButtonCell* menu = menuOf(row)) return static_cast<int>(menu->items.size()) - 1;
  const ComboBoxCell* numbers = numbersOf(row);
  return numbers != nullptr && !numbers->items.empty() ? QVariant(numbers->items.back()) : QVariant();
}

QVariant AccessibleRow::minimumValue() const {
  const SpokenRow row = spoken();
  if (menuOf(row) != nullptr) return 0;
  const ComboBoxCell* numbers = numbersOf(row);
  return numbers != nullptr && !numbers->items.empty() ? QVariant(numbers->items.front()) : QVariant();
}

QVariant AccessibleRow::minimumStepSize() const {
  const SpokenRow row = spoken();
  const ComboBoxCell* numbers = numbersOf(row);
  if (numbers == nullptr || numbers->items.size() < 2) return 1;
  return numbers->items[1] - numbers->items[0];
}

void AccessibleRow::selection(int /*index*/, int* start, int* end) const {
  *start = 0;
  *end = 0;
}

QString AccessibleRow::text(int start, int end) const { return spoken().value.mid(start, end - start); }

int AccessibleRow::characterCount() const { return static_cast<int>(spoken().value.size()); }

void AccessibleRow::scrollToSubstring(int /*start*/, int /*end*/) {
  if (rows_.outline().rowForItem(item_) >= 0) rows_.tree().scrollTo(rows_.indexOf(item_));
}

QString AccessibleRow::attributes(int /*offset*/, int* start, int* end) const {
  *start = 0;
  *end = characterCount();
  return {};
}

void AccessibleRow::replaceText(int start, int end, const QString& text) {
  if (!isValid()) return;
  QString whole = std::visit(TypedText{}, *spoken().cell);
  const auto length = static_cast<int>(whole.size());
  start = std::clamp(start, 0, length);
  end = end < 0 ? length : std::clamp(end, start, length);
  rows_.edit(item_, PropertyList::string(
                        fromQString(whole.replace(start, end - start, EntryField::inOneLine(text)))));
}

}  // namespace corvane::qt
