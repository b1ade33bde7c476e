// Tables: a model over the control's rows, styled texts in the cells, one selected row. A table whose control
// is disabled looks so and lets no row be chosen, but it can be scrolled, by mouse and keyboard.
#pragma once

#include <QItemSelection>
#include <QTableView>

#include "binders/Binder.h"
#include "controls/TableView.h"

namespace corvane::qt {

class StyledTextDelegate;
class TableModel;

class TableViewBinder final : public Binder {
  Q_OBJECT

 public:
  TableViewBinder(TableView& table, QTableView& widget);
  ~TableViewBinder() override;

 private:
  void show() override;
  /// A disabled widget could not be scrolled.
  [[nodiscard]] bool takesActs() const override { return true; }
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// Where no row can be chosen, the keys that would choose one scroll.
  bool scrollWith(int key, QEvent& event);
  /// Home and End choose the first and the last row; the toolkit would go to the row's first and last cell.
  bool chooseEndWith(int key);
  void showSelection();
  void userSelected(const QItemSelection& selected);

  TableView& table_;
  QTableView& widget_;
  TableModel* model_;
  StyledTextDelegate* delegate_;
  bool showing_ = false;  // the selection is being set by us
  /// Whether a new selection is scrolled into view. Not when the user had scrolled the former one out of
  /// view: a rebuild of the rows takes the selection away and sets it again.
  bool followsSelection_ = true;
};

}  // namespace corvane::qt
