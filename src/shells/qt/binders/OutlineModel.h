// The rows of an outline as the toolkit's model. It mirrors the rows that the core shows: what is below a row
// is in the model while the row is expanded. Rows that stay keep their place through a reload, so that the
// scroll position and an open editor survive it.
#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <vector>

#include "controls/OutlineView.h"

namespace corvane::qt {

class OutlineModel final : public QAbstractItemModel {
  Q_OBJECT

 public:
  OutlineModel(OutlineView& outline, QObject* parent);
  ~OutlineModel() override;

  /// Brings the rows below the index (the invalid one: all rows) in line with the core.
  void synchronise(const QModelIndex& index = {});
  /// Shows the cells of the row afresh.
  void refreshRow(const QModelIndex& index);
  [[nodiscard]] OutlineItem itemAt(const QModelIndex& index) const;
  /// Invalid when the row is not visible.
  [[nodiscard]] QModelIndex indexOf(const OutlineItem& item, int column = 0) const;
  [[nodiscard]] const OutlineView::Column& columnAt(const QModelIndex& index) const;
  /// What the cell is called where its text alone would not say what it holds: by its column for a check box
  /// of its own column, else by the row above it.
  [[nodiscard]] QString nameOf(const QModelIndex& index) const;
  /// The row as the core counts the visible ones.
  [[nodiscard]] int rowInOutline(const QModelIndex& index) const {
    return outline_.rowForItem(itemAt(index));
  }

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
  struct Node;
  /// What a screen reader says for the cell.
  [[nodiscard]] QString spokenTextOf(const QModelIndex& index) const;
  [[nodiscard]] Node* nodeOf(const QModelIndex& index) const;
  [[nodiscard]] QModelIndex indexOfNode(const Node& node, int column = 0) const;
  [[nodiscard]] Node* find(Node& below, const OutlineItem& item) const;
  void synchroniseNode(Node& node);
  void removeChildren(Node& node, std::size_t first, std::size_t last);

  OutlineView& outline_;
  std::unique_ptr<Node> root_;
};

}  // namespace corvane::qt
