// A table whose rows come from a data source and of which at most one is selected.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"
#include "controls/ObjectValue.h"

namespace corvane {

class TableView;

struct TableColumn {
  std::string identifier;
  std::string title;   // text of the header cell
  double width = 100;  // points
};

class TableViewDataSource {
 public:
  virtual ~TableViewDataSource() = default;
  [[nodiscard]] virtual int numberOfRowsInTableView(const TableView& table) = 0;
  [[nodiscard]] virtual ObjectValue tableViewObjectValueForTableColumnRow(const TableView& table,
                                                                          const TableColumn& column,
                                                                          int row) = 0;
  /// Empty: no tooltip.
  [[nodiscard]] virtual std::string tableViewToolTipForCell(const TableView& table, const TableColumn& column,
                                                            int row) = 0;
  virtual void tableViewSelectionDidChange(TableView& table) = 0;
};

class TableView final : public Control {
 public:
  explicit TableView(std::vector<TableColumn> columns);

  void setDataSource(TableViewDataSource* dataSource) { dataSource_ = dataSource; }
  [[nodiscard]] const std::vector<TableColumn>& columns() const { return columns_; }
  [[nodiscard]] std::vector<TableColumn>& columns() { return columns_; }
  [[nodiscard]] double headerHeight() const { return headerHeight_; }  // points
  void setHeaderHeight(double height) { headerHeight_ = height; }

  /// As of the last reload.
  [[nodiscard]] int numberOfRows() const { return rows_; }
  [[nodiscard]] int selectedRow() const { return selectedRow_; }  // -1: none
  /// Asks for the number of rows again and shows every cell afresh. A selection below the new end stays; one
  /// beyond it is gone, which counts as a change of the selection.
  void reloadData();
  void deselectAll();
  /// A row outside the table selects nothing new. The data source hears only of a real change.
  void selectRow(int row);

  [[nodiscard]] ObjectValue objectValue(const TableColumn& column, int row) const;
  [[nodiscard]] std::string toolTip(const TableColumn& column, int row) const;
  using Control::toolTip;

  /// The user's act.
  void clickRow(int row);

  /// For the shell: the selection changed / the rows must be read again. `onChange` covers the rest.
  std::function<void()> onSelectionChange;
  std::function<void()> onReload;

 private:
  void setSelectedRow(int row);
  void selectionDidChange();

  std::vector<TableColumn> columns_;
  TableViewDataSource* dataSource_ = nullptr;
  double headerHeight_ = 17;
  int rows_ = 0;
  int selectedRow_ = -1;
};

}  // namespace corvane
