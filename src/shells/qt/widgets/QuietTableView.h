// A table that tells assistive technology where its current row and its selection are while it can be seen,
// and of the focus only while it has it. The toolkit's own does so whenever its rows are made anew: the list
// of volumes would be read out under whoever is typing on another tab.
#pragma once

#include <QTableView>

namespace corvane::qt {

class QuietTableView final : public QTableView {
  Q_OBJECT

 public:
  using QTableView::QTableView;

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    if (hasFocus()) {
      QTableView::currentChanged(current, previous);
    } else {
      QAbstractItemView::currentChanged(current, previous);
    }
  }
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override {
    if (isVisible()) {
      QTableView::selectionChanged(selected, deselected);
    } else {
      QAbstractItemView::selectionChanged(selected, deselected);
    }
  }
};

}  // namespace corvane::qt
