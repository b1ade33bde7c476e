// Tables: styled texts in the cells, at most one selected row. In a table whose control is disabled no row
// can be chosen, but it can be scrolled.
#pragma once

#include "binders/Binder.h"
#include "controls/TableView.h"

namespace corvane::appkit {
class TableViewBinder;
}

@interface CorvaneTableSource : NSObject <NSTableViewDataSource, NSTableViewDelegate> {
 @public
  corvane::appkit::TableViewBinder* binder_;
}
@end

namespace corvane::appkit {

class TableViewBinder final : public Binder {
 public:
  /// Gives the view its columns, and tells the control the height of its header, which is the platform's.
  TableViewBinder(TableView& table, NSTableView* view);
  ~TableViewBinder() override;

  // For the toolkit.
  [[nodiscard]] int numberOfRows() const { return table_.numberOfRows(); }
  [[nodiscard]] id objectValue(NSTableColumn* column, NSInteger row) const;
  [[nodiscard]] NSString* toolTip(NSTableColumn* column, NSInteger row) const;
  [[nodiscard]] bool mayChoose() const { return isShowing_ || table_.enabled(); }
  void userSelected();

 private:
  void show() override;
  [[nodiscard]] bool takesActs() const override { return true; }
  void makeColumns();
  void reload();
  void showSelection();
  [[nodiscard]] const TableColumn& columnOf(NSTableColumn* column) const;

  TableView& table_;
  NSTableView* widget_;
  CorvaneTableSource* source_;
  bool isShowing_ = false;
};

}  // namespace corvane::appkit
