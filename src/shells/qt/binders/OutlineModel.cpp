#include "binders/OutlineModel.h"

#include <algorithm>

#include "Text.h"
#include "binders/CellContents.h"
#include "binders/CellText.h"

namespace corvane::qt {

struct OutlineModel::Node {
  OutlineItem item;
  Node* parent = nullptr;
  std::vector<std::unique_ptr<Node>> children;

  [[nodiscard]] int row() const {
    const auto& siblings = parent->children;
    const auto found = std::find_if(siblings.begin(), siblings.end(),
                                    [this](const auto& node) { return node.get() == this; });
    return static_cast<int>(found - siblings.begin());
  }
};

OutlineModel::OutlineModel(OutlineView& outline, QObject* parent)
    : QAbstractItemModel(parent), outline_(outline), root_(std::make_unique<Node>()) {}

OutlineModel::~OutlineModel() = default;

OutlineModel::Node* OutlineModel::nodeOf(const QModelIndex& index) const {
  return index.isValid() ? static_cast<Node*>(index.internalPointer()) : root_.get();
}

QModelIndex OutlineModel::indexOfNode(const Node& node, int column) const {
  return node.parent == nullptr ? QModelIndex() : createIndex(node.row(), column, &node);
}

OutlineModel::Node* OutlineModel::find(Node& below, const OutlineItem& item) const {
  for (const auto& child : below.children) {
    if (child->item == item) return child.get();
    if (Node* found = find(*child, item)) return found;
  }
  return nullptr;
}

OutlineItem OutlineModel::itemAt(const QModelIndex& index) const { return nodeOf(index)->item; }

QModelIndex OutlineModel::indexOf(const OutlineItem& item, int column) const {
  const Node* node = item ? find(*root_, item) : nullptr;
  return node == nullptr ? QModelIndex() : indexOfNode(*node, column);
}

const OutlineView::Column& OutlineModel::columnAt(const QModelIndex& index) const {
  return outline_.columns()[static_cast<std::size_t>(index.column())];
}

void OutlineModel::synchronise(const QModelIndex& index) { synchroniseNode(*nodeOf(index)); }

void OutlineModel::synchroniseNode(Node& node) {
  const bool showsChildren = !node.item || outline_.isItemExpanded(node.item);
  const std::vector<OutlineItem> items =
      showsChildren ? outline_.childrenOfItem(node.item) : std::vector<OutlineItem>();
  const QModelIndex index = indexOfNode(node);

  // Rows that are gone leave; where those that stay have another order, all of them are made anew.
  for (std::size_t i = node.children.size(); i-- > 0;) {
    if (std::find(items.begin(), items.end(), node.children[i]->item) == items.end()) {
      removeChildren(node, i, i);
    }
  }
  auto next = items.begin();
  for (const auto& child : node.children) {
    next = std::find(next, items.end(), child->item);
    if (next == items.end()) break;
  }
  if (next == items.end() && !node.children.empty()) removeChildren(node, 0, node.children.size() - 1);

  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i < node.children.size() && node.children[i]->item == items[i]) continue;
    auto child = std::make_unique<Node>();
    child->item = items[i];
    child->parent = &node;
    beginInsertRows(index, static_cast<int>(i), static_cast<int>(i));
    node.children.insert(node.children.begin() + static_cast<std::ptrdiff_t>(i), std::move(child));
    endInsertRows();
  }
  for (const auto& child : node.children) {
    synchroniseNode(*child);
    refreshRow(indexOfNode(*child));
  }
}

void OutlineModel::removeChildren(Node& node, std::size_t first, std::size_t last) {
  beginRemoveRows(indexOfNode(node), static_cast<int>(first), static_cast<int>(last));
  node.children.erase(node.children.begin() + static_cast<std::ptrdiff_t>(first),
                      node.children.begin() + static_cast<std::ptrdiff_t>(last) + 1);
  endRemoveRows();
}

void OutlineModel::refreshRow(const QModelIndex& index) {
  if (index.isValid()) emit dataChanged(index.siblingAtColumn(0), index.siblingAtColumn(columnCount() - 1));
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  return createIndex(row, column, nodeOf(parent)->children[static_cast<std::size_t>(row)].get());
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const {
  return index.isValid() ? indexOfNode(*nodeOf(index)->parent) : QModelIndex();
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(nodeOf(parent)->children.size());
}

int OutlineModel::columnCount(const QModelIndex& /*parent*/) const {
  return static_cast<int>(outline_.columns().size());
}

bool OutlineModel::hasChildren(const QModelIndex& parent) const {
  if (!parent.isValid()) return !root_->children.empty();
  return parent.column() == 0 && outline_.isExpandable(nodeOf(parent)->item);
}

QString OutlineModel::nameOf(const QModelIndex& index) const {
  const OutlineView::Column& column = columnAt(index);
  if (column.checkBox) return toQString(column.title);
  const OutlineItem above = outline_.parentForItem(itemAt(index));
  if (!above) return {};
  return textOf(outline_.preparedCell(column, above)).section(QLatin1Char('\n'), 0, 0).trimmed();
}

QString OutlineModel::spokenTextOf(const QModelIndex& index) const {
  const PreparedCell cell = outline_.preparedCell(columnAt(index), itemAt(index));
  QString text = textOf(cell).trimmed();
  QString name;
  if (columnAt(index).checkBox) {
    if (std::holds_alternative<EmptyCell>(*cell.cell)) return {};
    name = nameOf(index);
    // The check box has no title; the row's own text says what it belongs to.
    for (int column = 0; column < columnCount() && text.isEmpty(); ++column) {
      if (column != index.column())
        text = data(index.siblingAtColumn(column), Qt::DisplayRole).toString().trimmed();
    }
  } else if (showsValueAlone(*cell.cell)) {
    name = nameOf(index);
  }
  text.replace(QLatin1Char('\n'), QLatin1String(". "));
  if (name.isEmpty()) return text;
  return text.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, text);
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::AccessibleTextRole:
      return spokenTextOf(index);
    case Qt::DisplayRole:
      return textOf(outline_.preparedCell(columnAt(index), itemAt(index)));
    case Qt::CheckStateRole: {
      const auto state = checkStateOf(outline_.preparedCell(columnAt(index), itemAt(index)));
      return state ? QVariant(*state ? Qt::Checked : Qt::Unchecked) : QVariant();
    }
    default:
      return {};
  }
}

QVariant OutlineModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  return headerOf(outline_.columns()[static_cast<std::size_t>(section)], role);
}

Qt::ItemFlags OutlineModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  // Which cells may be edited is asked of the core when an editor is about to open.
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

}  // namespace corvane::qt
