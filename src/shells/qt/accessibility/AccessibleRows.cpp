#include "accessibility/AccessibleRows.h"

#include <utility>

#include "accessibility/AccessibleRow.h"

namespace corvane::qt {
namespace {

void tell(QAccessibleEvent&& event) { QAccessible::updateAccessibility(&event); }

}  // namespace

AccessibleRows::AccessibleRows(OutlineView& outline, OutlineTree& tree, OutlineModel& model, Acts acts)
    : QObject(&tree),
      outline_(outline),
      tree_(tree),
      model_(model),
      acts_(std::move(acts)),
      toldEnabled_(outline.enabled()) {
  connect(&model_, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& first) { tellChangesOf(model_.itemAt(first)); });
  connect(&model_, &QAbstractItemModel::modelReset, this, &AccessibleRows::forgetLater);
  connect(&tree_, &QTreeView::expanded, this,
          [this](const QModelIndex& index) { tellExpansionOf(model_.itemAt(index)); });
  connect(&tree_, &QTreeView::collapsed, this,
          [this](const QModelIndex& index) { tellExpansionOf(model_.itemAt(index)); });
}

AccessibleRows::~AccessibleRows() {
  for (const auto& [row, known] : rows_) QAccessible::deleteAccessibleInterface(known.id);
}

AccessibleRows* AccessibleRows::of(const OutlineTree& tree) {
  return tree.findChild<AccessibleRows*>(QString(), Qt::FindDirectChildrenOnly);
}

QAccessibleInterface* AccessibleRows::interfaceOf(const OutlineItem& item) {
  if (outline_.levelForItem(item) < 0) return nullptr;
  const auto [known, isNew] = rows_.try_emplace(item.id());
  if (isNew) {
    known->second.item = item;
    known->second.told = spokenRow(outline_, item);
    known->second.id = QAccessible::registerAccessibleInterface(new AccessibleRow(*this, item));
  }
  return QAccessible::accessibleInterface(known->second.id);
}

QModelIndex AccessibleRows::indexOf(const OutlineItem& item) const {
  return model_.indexOf(item, qMax(0, tree_.treePosition()));
}

void AccessibleRows::press(const OutlineItem& item) {
  QMetaObject::invokeMethod(
      this,
      [this, item] {
        const SpokenRow row = spokenRow(outline_, item);
        if (areInReach() && row.column != nullptr) outline_.clickCell(item, *row.column);
      },
      Qt::QueuedConnection);
}

void AccessibleRows::toggle(const OutlineItem& item) {
  const SpokenRow row = spokenRow(outline_, item);
  if (areInReach() && row.isOn) outline_.clickCell(item, *row.column);
}

void AccessibleRows::turn(const OutlineItem& item) {
  if (areInReach()) outline_.clickDisclosure(item);
}

void AccessibleRows::edit(const OutlineItem& item, const PropertyList& value) {
  const SpokenRow row = spokenRow(outline_, item);
  if (!areInReach() || row.column == nullptr) return;
  acts_.dropEditor(indexOf(item));  // it would put the former value back when it closes
  outline_.editCell(item, *row.column, value);
}

void AccessibleRows::openEditor(const OutlineItem& item) {
  if (areInReach()) acts_.openEditor(indexOf(item));
}

void AccessibleRows::goTo(const OutlineItem& item) {
  if (!areInReach() || outline_.rowForItem(item) < 0) return;
  tree_.setFocus(Qt::OtherFocusReason);
  tree_.setCurrentIndex(indexOf(item));
}

// A row that is shown afresh need not say anything new.
void AccessibleRows::tellChangesOf(const OutlineItem& item) {
  const auto known = item ? rows_.find(item.id()) : rows_.end();
  if (known == rows_.end() || !QAccessible::isActive()) return;
  SpokenRow now = spokenRow(outline_, item);
  const SpokenRow before = std::exchange(known->second.told, now);
  QAccessibleInterface* row = QAccessible::accessibleInterface(known->second.id);
  if (now.name != before.name) tell(QAccessibleEvent(row, QAccessible::NameChanged));
  if (now.description != before.description) tell(QAccessibleEvent(row, QAccessible::DescriptionChanged));
  if (now.value != before.value) tell(QAccessibleValueChangeEvent(row, now.value));
  if (now.isOn != before.isOn) {
    QAccessible::State changed;
    changed.checked = true;
    tell(QAccessibleStateChangeEvent(row, changed));
  }
}

void AccessibleRows::tellExpansionOf(const OutlineItem& item) {
  const auto known = item ? rows_.find(item.id()) : rows_.end();
  if (known == rows_.end() || !QAccessible::isActive()) return;
  QAccessible::State changed;
  changed.expanded = true;
  tell(QAccessibleStateChangeEvent(QAccessible::accessibleInterface(known->second.id), changed));
}

void AccessibleRows::tellWhetherEnabled() {
  const bool isNew = outline_.enabled() != std::exchange(toldEnabled_, outline_.enabled());
  if (!isNew || !QAccessible::isActive()) return;
  QAccessible::State changed;
  changed.disabled = true;
  for (const auto& [row, known] : rows_) {
    if (!known.told.isForChanges()) continue;
    QAccessibleInterface* thing = QAccessible::accessibleInterface(known.id);
    tell(QAccessibleStateChangeEvent(thing, changed));
    for (const auto& [index, choice] : static_cast<const AccessibleRow*>(thing)->choices())
      tell(QAccessibleStateChangeEvent(QAccessible::accessibleInterface(choice), changed));
    // What only root may read has gone; what is read from now on comes with rows of its own.
    if (!outline_.enabled()) tellChangesOf(known.item);
  }
}

// Later: what has replaced the rows may have been done by one of their interfaces.
void AccessibleRows::forgetLater() {
  QMetaObject::invokeMethod(this, &AccessibleRows::forgetRowsThatAreGone, Qt::QueuedConnection);
}

void AccessibleRows::forgetRowsThatAreGone() {
  std::erase_if(rows_, [this](const auto& each) {
    const Known& known = each.second;
    if (outline_.levelForItem(known.item) >= 0) return false;
    QAccessible::deleteAccessibleInterface(known.id);
    return true;
  });
}

}  // namespace corvane::qt
