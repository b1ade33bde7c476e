#include "binders/TableModel.h"

#include "Text.h"
#include "binders/CellText.h"

namespace corvane::qt {

TableModel::TableModel(TableView& table, QObject* parent) : QAbstractTableModel(parent), table_(table) {}

void TableModel::reload() {
  const int rows = table_.numberOfRows();
  // Rows come and go at the end and the rest is shown afresh, so that the views keep their scroll position.
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

int TableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.columns().size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const TableColumn& column = table_.columns()[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
      return toQString(textOf(table_.objectValue(column, index.row())).text);
    case kStyledTextRole:
      return QVariant::fromValue(textOf(table_.objectValue(column, index.row())));
    case Qt::ToolTipRole: {
      const std::string toolTip = table_.toolTip(column, index.row());
      return toolTip.empty() ? QVariant() : QVariant(plainToolTip(toolTip));
    }
    default:
      return {};
  }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  return headerOf(table_.columns()[static_cast<std::size_t>(section)], role);
}

}  // namespace corvane::qt
