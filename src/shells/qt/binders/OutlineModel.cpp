#include "binders/OutlineModel.h"

#include "Text.h"
#include "binders/CellContents.h"
#include "binders/CellText.h"

namespace corvane::qt {

QModelIndex OutlineModel::indexOf(const OutlineItem& item, int column) const {
  if (!item || outline_.levelForItem(item) < 0) return {};
  return createIndex(static_cast<int>(outline_.indexOfItem(item)), column, item.id());
}

const OutlineView::Column& OutlineModel::columnAt(const QModelIndex& index) const {
  return outline_.columns()[static_cast<std::size_t>(index.column())];
}

void OutlineModel::refreshRow(const QModelIndex& index) {
  if (index.isValid()) emit dataChanged(index.siblingAtColumn(0), index.siblingAtColumn(columnCount() - 1));
}

QModelIndex OutlineModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column < 0 || column >= columnCount() || !isPlace(parent)) return {};
  return indexOf(outline_.childOfItem(itemAt(parent), static_cast<std::size_t>(row)), column);
}

QModelIndex OutlineModel::parent(const QModelIndex& index) const {
  return indexOf(outline_.parentForItem(itemAt(index)));
}

int OutlineModel::rowCount(const QModelIndex& parent) const {
  if (parent.column() > 0 || !isPlace(parent)) return 0;
  return static_cast<int>(outline_.numberOfChildrenOfItem(itemAt(parent)));
}

int OutlineModel::columnCount(const QModelIndex& /*parent*/) const {
  return static_cast<int>(outline_.columns().size());
}

bool OutlineModel::hasChildren(const QModelIndex& parent) const {
  if (!parent.isValid()) return outline_.numberOfChildrenOfItem({}) > 0;
  return parent.column() == 0 && outline_.isExpandable(itemAt(parent));
}

QVariant OutlineModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return textOf(outline_.preparedCell(columnAt(index), itemAt(index)));
    case Qt::CheckStateRole: {
      const auto state = checkStateOf(outline_.preparedCell(columnAt(index), itemAt(index)));
      return state ? QVariant(*state ? Qt::Checked : Qt::Unchecked) : QVariant();
    }
    case Qt::ToolTipRole: {
      const CellReference cell = outline_.bareCell(columnAt(index), itemAt(index));
      const auto* button = std::get_if<ButtonCell>(cell.get());
      if (button == nullptr || !isPictureButton(*button)) return {};
      const QString path = data(index, Qt::DisplayRole).toString();
      return path.startsWith(QLatin1Char('/')) ? QVariant(plainToolTip(fromQString(path))) : QVariant();
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
