#include "binders/OutlineViewBinder.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "binders/CellDelegate.h"
#include "binders/CellEditors.h"
#include "binders/OutlineModel.h"
#include "widgets/SheetHost.h"

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
  connect(&widget_, &OutlineTree::cellClicked, this, [this](const QModelIndex& index) { press(index); });
  connect(&widget_, &OutlineTree::editorPressed, this,
          [this](const QModelIndex& index, const QPoint& point) { edit(index, point); });
  connect(&widget_, &OutlineTree::rowActivated, this, &OutlineViewBinder::activateRow);
  connect(&widget_, &OutlineTree::editorTabbed, this, &OutlineViewBinder::editBeyond);
  connect(&widget_, &OutlineTree::busyChanged, this, &OutlineViewBinder::holdReloadsWhileBusy);
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
  widget_.targetAt = [this](const QModelIndex& index, const QPoint& point) {
    return delegate_->targetAt(index, widget_.visualRect(index), point);
  };
  widget_.shapeAt = [this](const QModelIndex& index, const QPoint& point) {
    return delegate_->shapeAt(index, widget_.visualRect(index), point);
  };
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
  if (!outline_.enabled()) delegate_->dropEditor();
  widget_.setSelectionMode(outline_.highlightsSelection() ? QAbstractItemView::SingleSelection
                                                          : QAbstractItemView::NoSelection);
  widget_.viewport()->update();  // the cells of a disabled outline look so
  showSelection();
}

// Where the rows are other ones than before, the rows of the top level stand in for them: the place in the
// list and the current row stay as far as they can.
void OutlineViewBinder::reload() {
  const int scrolled = widget_.verticalScrollBar()->value();
  const OutlineItem current = model_->itemAt(widget_.currentIndex());
  QModelIndex top = widget_.currentIndex();
  while (top.parent().isValid()) top = top.parent();
  const int currentTop = top.row();
  {
    const QScopedValueRollback<bool> guard(showing_, true);
    model_->synchronise();
    showExpansion({});
  }
  showSelection();
  if (current && !model_->indexOf(current).isValid()) {
    widget_.setCurrentCell(model_->index(qMin(currentTop, model_->rowCount() - 1), 0));
  }
  widget_.verticalScrollBar()->setValue(scrolled);
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

void OutlineViewBinder::userSelected() {
  if (showing_) return;
  const QModelIndexList rows = widget_.selectionModel()->selectedRows();
  if (!rows.isEmpty()) outline_.selectRow(model_->rowInOutline(rows.first()));
  showSelection();  // what the control has made of it
}

bool OutlineViewBinder::edit(const QModelIndex& index, std::optional<QPoint> press) {
  if (!delegate_->mayEdit(index)) return false;
  widget_.setCurrentCell(index);
  widget_.scrollTo(index);
  widget_.edit(index);
  QWidget* widget = delegate_->openEditor();
  auto* editor = dynamic_cast<CellEditor*>(widget);
  if (editor == nullptr) return false;
  connect(widget, &QObject::destroyed, this, &OutlineViewBinder::holdReloadsWhileBusy, Qt::QueuedConnection);
  holdReloadsWhileBusy();
  editor->begin(press ? std::optional(widget->mapFrom(widget_.viewport(), *press)) : std::nullopt);
  return true;
}

void OutlineViewBinder::activateRow(const QModelIndex& index) {
  const QPersistentModelIndex row = index.siblingAtColumn(0);
  for (int column = 0; row.isValid() && column < model_->columnCount(); ++column) {
    const QModelIndex cell = row.sibling(row.row(), column);
    if (press(cell) || edit(cell)) return;
  }
}

void OutlineViewBinder::editBeyond(const QModelIndex& index, bool forward) {
  QModelIndex row = index.siblingAtColumn(0);
  for (;;) {
    row = forward ? widget_.indexBelow(row) : widget_.indexAbove(row);
    if (!row.isValid()) break;
    for (int column = 0; column < model_->columnCount(); ++column) {
      const QModelIndex cell = row.siblingAtColumn(column);
      if (delegate_->mayType(cell) && edit(cell)) return;
    }
  }
  widget_.leave(forward);
}

void OutlineViewBinder::keepRowsBehind(const SheetHost& sheets) {
  sheets_ = &sheets;
  connect(sheets_, &SheetHost::currentChanged, this, &OutlineViewBinder::holdReloadsWhileBusy);
}

bool OutlineViewBinder::press(const QModelIndex& index) {
  bool isButton = false;
  {
    const QScopedValueRollback<bool> guard(isPressing_, true);
    holdReloadsWhileBusy();
    isButton = delegate_->press(index);
  }
  holdReloadsWhileBusy();
  return isButton;
}

bool OutlineViewBinder::isBusy() const {
  return isPressing_ || widget_.isBusy() || (sheets_ != nullptr && sheets_->current() != nullptr);
}

void OutlineViewBinder::holdReloadsWhileBusy() {
  if (isBusy()) {
    outline_.setHoldsReloads(true);
    return;
  }
  // Later: the press that has closed an editor is still to be delivered to the row that it was meant for.
  QMetaObject::invokeMethod(
      this, [this] { outline_.setHoldsReloads(isBusy()); }, Qt::QueuedConnection);
}

}  // namespace corvane::qt
