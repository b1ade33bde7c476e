// Tables: a model over the control's rows, styled texts in the cells, one selected row. A table whose control
// is disabled looks so and lets no row be chosen, but it can be scrolled, by mouse and keyboard.
#pragma once

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
  void showSelection();
  void userSelected();

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
