#include "binders/TableViewBinder.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "CellText.h"
#include "binders/TableModel.h"

namespace corvane::qt {
namespace {

constexpr int kRowHeight = 20;

}  // namespace

TableViewBinder::TableViewBinder(TableView& table, QTableView& widget)
    : Binder(table, widget), table_(table), widget_(widget), model_(new TableModel(table, this)) {
  widget_.setModel(model_);
  widget_.setItemDelegate(new StyledTextDelegate(&widget_));
  widget_.setSelectionBehavior(QAbstractItemView::SelectRows);
  widget_.setSelectionMode(QAbstractItemView::SingleSelection);
  widget_.setEditTriggers(QAbstractItemView::NoEditTriggers);
  widget_.setTabKeyNavigation(false);
  widget_.setShowGrid(false);
  widget_.setWordWrap(false);
  widget_.setCornerButtonEnabled(false);
  widget_.verticalHeader()->hide();
  widget_.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  widget_.verticalHeader()->setMinimumSectionSize(kRowHeight);
  widget_.verticalHeader()->setDefaultSectionSize(kRowHeight);
  QHeaderView* header = widget_.horizontalHeader();
  header->setHighlightSections(false);
  header->setSectionsClickable(false);
  header->setSectionResizeMode(QHeaderView::Fixed);
  header->setFixedHeight(qRound(table_.headerHeight()));
  for (int column = 0; column < model_->columnCount(); ++column) {
    header->resizeSection(column, qRound(table_.columns()[static_cast<std::size_t>(column)].width));
  }
  connect(widget_.selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &TableViewBinder::userSelected);
  table_.onReload = [this] {
    const QScopedValueRollback<bool> guard(showing_, true);
    model_->reload();
    showSelection();
  };
  table_.onSelectionChange = [this] { showSelection(); };
  table_.onReload();
  refresh();
}

TableViewBinder::~TableViewBinder() {
  table_.onReload = nullptr;
  table_.onSelectionChange = nullptr;
}

void TableViewBinder::show() { showSelection(); }

void TableViewBinder::showSelection() {
  const QScopedValueRollback<bool> guard(showing_, true);
  QItemSelectionModel* selection = widget_.selectionModel();
  const QModelIndex row = model_->index(table_.selectedRow(), 0);
  if (row.isValid() && selection->isRowSelected(row.row())) return;
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

void TableViewBinder::userSelected() {
  if (showing_) return;
  const QModelIndexList rows = widget_.selectionModel()->selectedRows();
  table_.clickRow(rows.isEmpty() ? -1 : rows.first().row());
  showSelection();  // what the control has made of it
}

}  // namespace corvane::qt
