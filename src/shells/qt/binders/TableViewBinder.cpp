#include "binders/TableViewBinder.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "Fonts.h"
#include "binders/CellText.h"
#include "binders/TableModel.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kRowHeight = 20;
constexpr double kRoomInRow = 4;  // above and below the letters

bool isScrollKey(int key) {
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return true;
    default:
      return false;
  }
}

}  // namespace

TableViewBinder::TableViewBinder(TableView& table, QTableView& widget)
    : Binder(table, widget),
      table_(table),
      widget_(widget),
      model_(new TableModel(table, this)),
      delegate_(new StyledTextDelegate(&widget)) {
  widget_.setModel(model_);
  widget_.setItemDelegate(delegate_);
  widget_.setSelectionBehavior(QAbstractItemView::SelectRows);
  widget_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget_.setTabKeyNavigation(false);
  widget_.setShowGrid(false);
  widget_.setWordWrap(false);
  widget_.setCornerButtonEnabled(false);
  widget_.verticalHeader()->hide();
  widget_.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  const int rowHeight = std::max(toPixels(kRowHeight), widget_.fontMetrics().height() + toPixels(kRoomInRow));
  widget_.verticalHeader()->setMinimumSectionSize(rowHeight);
  widget_.verticalHeader()->setDefaultSectionSize(rowHeight);
  QHeaderView* header = widget_.horizontalHeader();
  header->setHighlightSections(false);
  header->setSectionsClickable(false);
  header->setSectionResizeMode(QHeaderView::Fixed);
  header->setFixedHeight(headerHeight(*header, table_.headerHeight()));
  for (int column = 0; column < model_->columnCount(); ++column) {
    header->resizeSection(column, toPixels(table_.columns()[static_cast<std::size_t>(column)].width));
  }
  connect(widget_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &TableViewBinder::userSelected);
  table_.onReload = [this] {
    const QScopedValueRollback<bool> showing(showing_, true);
    model_->reload();
    showSelection();
  };
  table_.onSelectionChange = [this] { showSelection(); };
  widget_.installEventFilter(this);
  table_.onReload();
  refresh();
}

TableViewBinder::~TableViewBinder() {
  table_.onReload = nullptr;
  table_.onSelectionChange = nullptr;
}

void TableViewBinder::show() {
  widget_.setSelectionMode(table_.enabled() ? QAbstractItemView::SingleSelection
                                            : QAbstractItemView::NoSelection);
  delegate_->setEnabled(table_.enabled());
  widget_.viewport()->update();
  showSelection();
}

bool TableViewBinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &widget_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (table_.enabled() ? chooseEndWith(key) : scrollWith(key, *event)) return true;
  }
  return Binder::eventFilter(watched, event);
}

bool TableViewBinder::scrollWith(int key, QEvent& event) {
  if (!isScrollKey(key)) return false;
  QCoreApplication::sendEvent(widget_.verticalScrollBar(), &event);
  return true;
}

bool TableViewBinder::chooseEndWith(int key) {
  if (key != Qt::Key_Home && key != Qt::Key_End) return false;
  const QModelIndex row = model_->index(key == Qt::Key_Home ? 0 : model_->rowCount() - 1, 0);
  widget_.selectionModel()->setCurrentIndex(row,
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  return true;
}

void TableViewBinder::showSelection() {
  const QScopedValueRollback<bool> showing(showing_, true);
  QItemSelectionModel* selection = widget_.selectionModel();
  const QModelIndex row = model_->index(table_.selectedRow(), 0);
  // A click into a disabled table moves the toolkit's current cell, from which the keys would then start.
  if (row.isValid() && selection->isRowSelected(row.row()) && widget_.currentIndex().row() == row.row()) {
    return;
  }
  if (const QModelIndexList shown = selection->selectedRows(); !shown.isEmpty()) {
    followsSelection_ = widget_.viewport()->rect().contains(widget_.visualRect(shown.first()));
  }
  if (!row.isValid()) {
    selection->clear();
    return;
  }
  // The toolkit would scroll by itself.
  widget_.setAutoScroll(false);
  selection->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  widget_.setAutoScroll(true);
  if (followsSelection_) widget_.scrollTo(row);
}

// What was added counts, not what is selected now: assistive technology first takes the selection away and
// then adds to it what meanwhile is selected again.
void TableViewBinder::userSelected(const QItemSelection& selected) {
  if (showing_) return;
  if (isInReach() && !selected.isEmpty()) table_.clickRow(selected.first().top());
  showSelection();  // what the control has made of it
}

}  // namespace corvane::qt
