// The rows of a table control as the toolkit's model.
#pragma once

#include <QAbstractTableModel>

#include "controls/TableView.h"

namespace corvane::qt {

class TableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  TableModel(TableView& table, QObject* parent);

  void reload();
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  TableView& table_;
  int rows_ = 0;  // as the views know it
};

}  // namespace corvane::qt
