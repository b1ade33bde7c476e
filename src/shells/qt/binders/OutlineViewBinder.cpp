#include "binders/OutlineViewBinder.h"

#include <QComboBox>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "binders/CellDelegate.h"
#include "binders/OutlineModel.h"

namespace corvane::qt {
namespace {

constexpr double kRowHeight = 22;
constexpr int kIndentation = 16;
constexpr int kHeaderHeight = 17;

}  // namespace

OutlineViewBinder::OutlineViewBinder(OutlineView& outline, OutlineTree& widget)
    : Binder(outline, widget),
      outline_(outline),
      widget_(widget),
      model_(new OutlineModel(outline, this)),
      delegate_(new CellDelegate(outline, *model_, this)) {
  outline_.setRowHeight(kRowHeight);
  prepareWidget();
  connect(widget_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &OutlineViewBinder::userSelected);
  connect(&widget_, &OutlineTree::triangleClicked, this,
          [this](const QModelIndex& index) { outline_.clickDisclosure(model_->rowInOutline(index)); });
  connect(&widget_, &OutlineTree::cellPressed, this, [this](const QModelIndex& index) {
    if (!delegate_->press(index) && delegate_->canEdit(index)) edit(index);
  });
  // The click must be over first: the view takes an editor that opens during one for no editing at all.
  connect(
      delegate_, &CellDelegate::editRequested, this,
      [this](const QPersistentModelIndex& index) {
        if (index.isValid()) edit(index);
      },
      Qt::QueuedConnection);
  outline_.onReload = [this] { reload(); };
  outline_.onReloadItem = [this](const OutlineItem& item) { model_->refreshRow(model_->indexOf(item)); };
  outline_.onExpansionChange = [this](const OutlineItem& item) { showExpansionOf(item); };
  outline_.onSelectionChange = [this] { showSelection(); };
  reload();
  refresh();
}

OutlineViewBinder::~OutlineViewBinder() {
  outline_.onReload = nullptr;
  outline_.onReloadItem = nullptr;
  outline_.onExpansionChange = nullptr;
  outline_.onSelectionChange = nullptr;
}

void OutlineViewBinder::prepareWidget() {
  widget_.setModel(model_);
  widget_.setItemDelegate(delegate_);
  widget_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget_.setSelectionBehavior(QAbstractItemView::SelectRows);
  widget_.setIndentation(kIndentation);
  widget_.showsTriangle = [this](const QModelIndex& index) {
    return outline_.showsOutlineCell(model_->itemAt(index));
  };
  QHeaderView* header = widget_.header();
  header->setSectionsMovable(false);
  header->setSectionResizeMode(QHeaderView::Fixed);
  header->setFixedHeight(kHeaderHeight);
  header->setStretchLastSection(true);
  int column = 0;
  bool treeIsPlaced = false;
  for (const OutlineView::Column& description : outline_.columns()) {
    header->resizeSection(column, qRound(description.width));
    if (!description.checkBox && !treeIsPlaced) {
      // The triangles stand in the first column of texts, not in one of check boxes.
      widget_.setTreePosition(column);
      treeIsPlaced = true;
    }
    ++column;
  }
}

void OutlineViewBinder::show() {
  widget_.setSelectionMode(outline_.highlightsSelection() ? QAbstractItemView::SingleSelection
                                                          : QAbstractItemView::NoSelection);
  widget_.viewport()->update();  // the cells of a disabled outline look so
  showSelection();
}

void OutlineViewBinder::reload() {
  {
    const QScopedValueRollback<bool> guard(showing_, true);
    model_->synchronise();
    showExpansion({});
  }
  showSelection();
}

void OutlineViewBinder::showExpansion(const QModelIndex& parent) {
  for (int row = 0; row < model_->rowCount(parent); ++row) {
    const QModelIndex index = model_->index(row, 0, parent);
    widget_.setExpanded(index, outline_.isItemExpanded(model_->itemAt(index)));
    showExpansion(index);
  }
}

void OutlineViewBinder::showExpansionOf(const OutlineItem& item) {
  const QModelIndex index = model_->indexOf(item);
  if (!index.isValid()) return;  // below a collapsed row; shown when that one is expanded
  const QScopedValueRollback<bool> guard(showing_, true);
  model_->synchronise(index);
  widget_.setExpanded(index, outline_.isItemExpanded(item));
  showExpansion(index);
}

void OutlineViewBinder::showSelection() {
  const QScopedValueRollback<bool> guard(showing_, true);
  QItemSelectionModel* selection = widget_.selectionModel();
  const QModelIndex row = model_->indexOf(outline_.itemAtRow(outline_.selectedRow()));
  if (!row.isValid()) {
    selection->clearSelection();
  } else if (outline_.highlightsSelection() && !selection->isSelected(row)) {
    selection->select(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }
}

void OutlineViewBinder::edit(const QModelIndex& index) {
  widget_.setCurrentIndex(index);
  widget_.edit(index);
  // A menu opens at once, as it does anywhere else.
  auto* menu = qobject_cast<QComboBox*>(widget_.indexWidget(index));
  if (menu != nullptr && !menu->isEditable()) menu->showPopup();
}

void OutlineViewBinder::userSelected() {
  if (showing_) return;
  const QModelIndexList rows = widget_.selectionModel()->selectedRows();
  if (!rows.isEmpty()) outline_.selectRow(model_->rowInOutline(rows.first()));
  showSelection();  // what the control has made of it
}

}  // namespace corvane::qt
