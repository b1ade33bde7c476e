// The rows of an outline as the toolkit's model. It holds none of them: an index stands for its row by the
// row's identity, and every question is put to the core. After a reload all indexes are new.
#pragma once

#include <QAbstractItemModel>

#include "controls/OutlineView.h"

namespace corvane::qt {

class OutlineModel final : public QAbstractItemModel {
  Q_OBJECT

 public:
  OutlineModel(OutlineView& outline, QObject* parent) : QAbstractItemModel(parent), outline_(outline) {}

  // To be called before and after the core reads its tree again.
  void beginReload() { beginResetModel(); }
  void endReload() { endResetModel(); }
  /// Shows the cells of the row afresh.
  void refreshRow(const QModelIndex& index);
  /// Empty for the invalid index and for a row that is gone.
  [[nodiscard]] OutlineItem itemAt(const QModelIndex& index) const {
    return index.isValid() ? outline_.itemWithId(index.internalId()) : OutlineItem();
  }
  /// Invalid when the row is gone.
  [[nodiscard]] QModelIndex indexOf(const OutlineItem& item, int column = 0) const;
  [[nodiscard]] const OutlineView::Column& columnAt(const QModelIndex& index) const;

  [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
  using QObject::parent;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  /// Whether rows can stand below the index: not below a row that is gone.
  [[nodiscard]] bool isPlace(const QModelIndex& index) const { return !index.isValid() || itemAt(index); }

  OutlineView& outline_;
};

}  // namespace corvane::qt
