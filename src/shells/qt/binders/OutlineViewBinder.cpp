#include "binders/OutlineViewBinder.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "Fonts.h"
#include "Text.h"
#include "accessibility/AccessibleRows.h"
#include "binders/CellDelegate.h"
#include "binders/CellEditors.h"
#include "binders/CellText.h"
#include "binders/OutlineModel.h"
#include "widgets/CopyMenu.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kRowHeight = 22;
constexpr double kRoomInRow = 6;  // above and below the letters
constexpr double kIndentation = 16;

}  // namespace

OutlineViewBinder::OutlineViewBinder(OutlineView& outline, OutlineTree& widget)
    : Binder(outline, widget),
      outline_(outline),
      widget_(widget),
      model_(new OutlineModel(outline, this)),
      delegate_(new CellDelegate(outline, *model_, this)) {
  outline_.setRowHeight(std::max(kRowHeight, toPoints(widget_.fontMetrics().height()) + kRoomInRow));
  prepareWidget();
  connect(widget_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &OutlineViewBinder::userSelected);
  connect(&widget_, &OutlineTree::triangleClicked, this,
          [this](const QModelIndex& index) { outline_.clickDisclosure(model_->itemAt(index)); });
  connect(&widget_, &OutlineTree::cellClicked, this,
          [this](const QModelIndex& index) { delegate_->press(index); });
  connect(&widget_, &OutlineTree::editorPressed, this,
          [this](const QModelIndex& index, const QPoint& point) { edit(index, point); });
  connect(&widget_, &OutlineTree::rowActivated, this, &OutlineViewBinder::activateRow);
  connect(&widget_, &OutlineTree::editorTabbed, this, &OutlineViewBinder::editBeyond);
  connect(&widget_, &OutlineTree::busyChanged, this, &OutlineViewBinder::holdRowsWhileBusy);
  outline_.onWillReload = [this] { willReload(); };
  outline_.onReload = [this] { reload(); };
  outline_.onReloadItem = [this](const OutlineItem& item) { model_->refreshRow(model_->indexOf(item)); };
  outline_.onExpansionChange = [this](const OutlineItem& item) { showExpansionOf(item); };
  outline_.onSelectionChange = [this] { showSelection(); };
  showExpansionBelow({});
  tellWhetherEmpty();
  new AccessibleRows(outline_, widget_, *model_,
                     {[this] { return isInReach(); }, [this](const QModelIndex& index) { edit(index); },
                      [this](const QModelIndex& index) {
                        if (widget_.indexWidget(index) == delegate_->openEditor()) delegate_->dropEditor();
                      }});
  refresh();
}

OutlineViewBinder::~OutlineViewBinder() {
  outline_.onWillReload = nullptr;
  outline_.onReload = nullptr;
  outline_.onReloadItem = nullptr;
  outline_.onExpansionChange = nullptr;
  outline_.onSelectionChange = nullptr;
}

void OutlineViewBinder::prepareWidget() {
  widget_.setModel(model_);
  widget_.setPlaceholder(toQString(outline_.placeholder()));
  widget_.setItemDelegate(delegate_);
  widget_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget_.setSelectionBehavior(QAbstractItemView::SelectRows);
  widget_.setIndentation(toPixels(kIndentation));
  widget_.drawsRows = [this] { return outline_.drawRows(); };
  widget_.targetAt = [this](const QModelIndex& index, const QPoint& point) {
    return delegate_->targetAt(index, widget_.visualRect(index), point);
  };
  widget_.shapeAt = [this](const QModelIndex& index, const QPoint& point) {
    return delegate_->shapeAt(index, widget_.visualRect(index), point);
  };
  widget_.showsTriangle = [this](const QModelIndex& index) {
    return outline_.showsOutlineCell(model_->itemAt(index));
  };
  offerCopy(widget_, [this] { return widget_.wordsOf(widget_.currentIndex()); });
  QHeaderView* header = widget_.header();
  header->setSectionsMovable(false);
  header->setSectionResizeMode(QHeaderView::Fixed);
  header->setFixedHeight(headerHeight(*header));
  header->setStretchLastSection(true);
  int column = 0;
  bool treeIsPlaced = false;
  for (const OutlineView::Column& description : outline_.columns()) {
    header->resizeSection(column, toPixels(description.width));
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
  if (auto* rows = AccessibleRows::of(widget_)) rows->tellWhetherEnabled();
  showSelection();
}

OutlineViewBinder::Whereabouts OutlineViewBinder::whereabouts() const {
  const QModelIndex current = widget_.currentIndex();
  const QModelIndex top = widget_.indexAt(QPoint(0, 0));
  return {OutlinePlace(outline_, model_->itemAt(current)), qMax(0, current.column()),
          OutlinePlace(outline_, model_->itemAt(top)), -widget_.visualRect(top).top(),
          widget_.verticalScrollBar()->value() > 0};
}

void OutlineViewBinder::willReload() {
  delegate_->leaveEditor();  // what is being typed would go with its row
  before_ = whereabouts();
  model_->beginReload();
}

void OutlineViewBinder::reload() {
  {
    const QScopedValueRollback<bool> showing(showing_, true);
    model_->endReload();
    showExpansionBelow({});
  }
  tellWhetherEmpty();
  openAgain();
  showSelection();
  if (before_) returnTo(*std::exchange(before_, std::nullopt));
}

void OutlineViewBinder::tellWhetherEmpty() {
  widget_.setAccessibleDescription(model_->rowCount() > 0 ? QString() : toQString(outline_.placeholder()));
}

void OutlineViewBinder::openAgain() {
  for (const OutlineItem& row : outline_.childrenOfItem({})) {
    if (openRows_.count(outline_.persistentNameOfItem(row)) > 0) outline_.expandItem(row);
  }
}

void OutlineViewBinder::returnTo(const Whereabouts& before) {
  const QModelIndex current = model_->indexOf(before.current.visibleRow(outline_), before.column);
  if (current.isValid()) widget_.setCurrentCell(current);
  QScrollBar* bar = widget_.verticalScrollBar();
  const QModelIndex top = model_->indexOf(before.top.visibleRow(outline_));
  if (!before.isScrolled) {
    bar->setValue(0);  // who sees the first row sees as well what comes in before it
  } else if (top.isValid()) {
    bar->setValue(bar->value() + widget_.visualRect(top).top() + before.aboveTop);
  }
}

void OutlineViewBinder::showExpansionBelow(const QModelIndex& parent) {
  for (int row = 0; row < model_->rowCount(parent); ++row) {
    const QModelIndex index = model_->index(row, 0, parent);
    const bool isOpen = outline_.isItemExpanded(model_->itemAt(index));
    widget_.setExpanded(index, isOpen);
    if (isOpen) showExpansionBelow(index);
  }
}

void OutlineViewBinder::showExpansionOf(const OutlineItem& item) {
  const bool isOpen = outline_.isItemExpanded(item);
  if (outline_.levelForItem(item) == 0) {
    const std::string name = outline_.persistentNameOfItem(item);
    if (!isOpen) {
      openRows_.erase(name);
    } else if (!name.empty()) {
      openRows_.insert(name);
    }
  }
  const QModelIndex index = model_->indexOf(item);
  const QScopedValueRollback<bool> showing(showing_, true);
  // A plug-in opens with all its options, each of which tells so: the rows are laid out once, for all.
  if (isOpen) widget_.scheduleDelayedItemsLayout();
  widget_.setExpanded(index, isOpen);
  if (isOpen) showExpansionBelow(index);
}

void OutlineViewBinder::showSelection() {
  const QScopedValueRollback<bool> showing(showing_, true);
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
  if (!rows.isEmpty()) outline_.selectRow(outline_.rowForItem(model_->itemAt(rows.first())));
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
  connect(widget, &QObject::destroyed, this, &OutlineViewBinder::holdRowsWhileBusy, Qt::QueuedConnection);
  holdRowsWhileBusy();
  editor->begin(press ? std::optional(widget->mapFrom(widget_.viewport(), *press)) : std::nullopt);
  return true;
}

void OutlineViewBinder::activateRow(const QModelIndex& index) {
  const QPersistentModelIndex row = index.siblingAtColumn(0);
  for (int column = 0; row.isValid() && column < model_->columnCount(); ++column) {
    const QModelIndex cell = row.sibling(row.row(), column);
    if (delegate_->press(cell) || edit(cell)) return;
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

void OutlineViewBinder::holdRowsWhileBusy() {
  if (widget_.isBusy()) {
    if (rowsHeld_ == nullptr) rowsHeld_ = outline_.holdRows();
    return;
  }
  // Later: the press that has closed an editor is still to be delivered to the row that it was meant for.
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (!widget_.isBusy()) rowsHeld_.reset();
      },
      Qt::QueuedConnection);
}

}  // namespace corvane::qt
