#include "controls/TableView.h"

#include <algorithm>
#include <utility>

namespace corvane {

TableView::TableView(std::vector<TableColumn> columns) : columns_(std::move(columns)) {}

void TableView::reloadData() {
  rows_ = dataSource_ != nullptr ? std::max(0, dataSource_->numberOfRowsInTableView(*this)) : 0;
  const bool selectionIsLost = selectedRow_ >= rows_;
  if (selectionIsLost) selectedRow_ = -1;
  if (onReload) onReload();
  if (selectionIsLost) selectionDidChange();
}

void TableView::deselectAll() { setSelectedRow(-1); }

void TableView::selectRow(int row) {
  if (row >= 0 && row < rows_) setSelectedRow(row);
}

void TableView::clickRow(int row) {
  if (takesUserActs()) selectRow(row);
}

ObjectValue TableView::objectValue(const TableColumn& column, int row) const {
  if (dataSource_ == nullptr || row < 0 || row >= rows_) return {};
  return dataSource_->tableViewObjectValueForTableColumnRow(*this, column, row);
}

std::string TableView::toolTip(const TableColumn& column, int row) const {
  if (dataSource_ == nullptr || row < 0 || row >= rows_) return {};
  return dataSource_->tableViewToolTipForCell(*this, column, row);
}

void TableView::setSelectedRow(int row) {
  if (row == selectedRow_) return;
  selectedRow_ = row;
  selectionDidChange();
}

void TableView::selectionDidChange() {
  if (onSelectionChange) onSelectionChange();
  if (dataSource_ != nullptr) dataSource_->tableViewSelectionDidChange(*this);
}

}  // namespace corvane
