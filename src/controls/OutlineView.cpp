#include "controls/OutlineView.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

namespace corvane {

struct OutlineItem::Row {
  PropertyList object;
  int kind = 0;
  Id id = 0;
  std::weak_ptr<Row> parent;
  std::size_t index = 0;  // among the parent's children
  std::vector<std::shared_ptr<Row>> children;
  bool childrenKnown = false;
  bool expanded = false;
  bool placed = true;  // false: the row is gone from the tree
  int visibleRow = -1;
};

const PropertyList& OutlineItem::object() const {
  static const PropertyList nothing;
  return row_ ? row_->object : nothing;
}

int OutlineItem::kind() const { return row_ ? row_->kind : 0; }

OutlineItem::Id OutlineItem::id() const { return row_ ? row_->id : 0; }

// The rows below one invisible root. The data source may come back into the outline from any question, so
// what it says is gathered first and only then put into the tree, and loops that ask it run over copies and
// skip the rows that have gone meanwhile.
struct OutlineView::Implementation {
  using Row = OutlineItem::Row;
  using RowPointer = std::shared_ptr<Row>;

  explicit Implementation(OutlineView& view) : outline(view), root(std::make_shared<Row>()) {
    root->expanded = true;
  }

  [[nodiscard]] OutlineItem itemFor(const RowPointer& row) const {
    return row == root ? OutlineItem() : OutlineItem(row);
  }
  [[nodiscard]] const RowPointer& rowFor(const OutlineItem& item) const {
    return item.row_ ? item.row_ : root;
  }

  /// What the data source says about a child.
  struct Child {
    PropertyList object;
    int kind = 0;
  };

  /// Asks for the children of the row.
  void load(const RowPointer& row) {
    const OutlineItem item = itemFor(row);
    std::vector<Child> found;
    const bool expandable = row == root || outline.isExpandable(item);
    if (expandable && outline.dataSource_ != nullptr) {
      const int count = outline.dataSource_->outlineViewNumberOfChildrenOfItem(outline, item);
      for (int index = 0; index < count && outline.dataSource_ != nullptr; ++index) {
        Child child{outline.dataSource_->outlineViewChildOfItem(outline, index, item)};
        child.kind = outline.dataSource_->outlineViewKindOfChild(outline, child.object, item);
        found.push_back(std::move(child));
      }
    }
    if (!row->placed) return;
    place(row, found);
    row->childrenKnown = expandable;
    if (!expandable) row->expanded = false;
  }

  /// Makes these the children of the row. The k-th of several children with one object stays the row of the
  /// former k-th.
  void place(const RowPointer& row, const std::vector<Child>& found) {
    // Holds the rows to the end, so that those which go are freed in their order: whole catalogues hang on
    // them, and freeing these criss-cross makes the memory slow for what is read next.
    const std::vector<RowPointer> old = std::exchange(row->children, {});
    std::unordered_map<const void*, std::vector<RowPointer>> former;  // of each object, the last row first
    for (auto child = old.rbegin(); child != old.rend(); ++child) {
      former[(*child)->object.identity()].push_back(*child);
    }
    std::vector<RowPointer> children;
    children.reserve(found.size());
    for (const Child& child : found) {
      const auto known = former.find(child.object.identity());
      if (known != former.end() && !known->second.empty()) {
        children.push_back(std::move(known->second.back()));
        known->second.pop_back();
      } else {
        children.push_back(makeRow(child, row));
      }
      children.back()->index = children.size() - 1;
    }
    row->children = std::move(children);
    for (const auto& [object, rows] : former) {
      for (const RowPointer& gone : rows) forget(gone);
    }
    visibleRowsAreKnown = false;
  }

  [[nodiscard]] RowPointer makeRow(const Child& child, const RowPointer& parent) {
    auto row = std::make_shared<Row>();
    row->object = child.object;
    row->kind = child.kind;
    row->id = ++lastId;
    row->parent = parent;
    rowsById.emplace(row->id, row);
    return row;
  }

  /// Asks again for the children of the row and of all rows below it that were asked for before.
  void reload(const RowPointer& row) {
    load(row);
    const std::vector<RowPointer> children = row->children;
    for (const RowPointer& child : children) {
      if (child->childrenKnown) reload(child);
    }
  }

  /// The children of the row, asked for now where they are not known yet.
  [[nodiscard]] const std::vector<RowPointer>& childrenOf(const RowPointer& row) {
    if (row->placed && !row->childrenKnown) load(row);
    return row->children;
  }

  void forget(const RowPointer& row) {
    rowsById.erase(row->id);
    row->placed = false;
    row->expanded = false;
    row->childrenKnown = false;
    row->parent.reset();
    const std::vector<RowPointer> children = std::exchange(row->children, {});
    for (const RowPointer& child : children) forget(child);
  }

  /// The visible rows from top to bottom, gathered anew after a change of the tree.
  [[nodiscard]] const std::vector<RowPointer>& visible() {
    if (!visibleRowsAreKnown) {
      for (const RowPointer& row : visibleRows) row->visibleRow = -1;
      visibleRows.clear();
      gatherVisible(*root);
      visibleRowsAreKnown = true;
    }
    return visibleRows;
  }

  void gatherVisible(const Row& row) {
    for (const RowPointer& child : row.children) {
      child->visibleRow = static_cast<int>(visibleRows.size());
      visibleRows.push_back(child);
      if (child->expanded) gatherVisible(*child);
    }
  }

  [[nodiscard]] int visibleRowOf(const RowPointer& row) {
    static_cast<void>(visible());
    return row ? row->visibleRow : -1;
  }

  /// The selection does not outlive its row's being seen; true when it is gone now.
  [[nodiscard]] bool dropHiddenSelection() {
    if (!selected || visibleRowOf(selected) >= 0) return false;
    selected.reset();
    return true;
  }

  void select(RowPointer row) {
    if (row == selected) return;
    selected = std::move(row);
    tellSelection();
  }

  void tellSelection() const {
    if (outline.onSelectionChange) outline.onSelectionChange();
  }

  /// Reads the row and all below it again and tells the shell, which is told once where the data source
  /// reloads while it is being asked.
  void reloadAndTell(const RowPointer& row) {
    const bool isOutermost = !std::exchange(isReloading, true);
    if (isOutermost && outline.onWillReload) outline.onWillReload();
    reload(row);
    if (!isOutermost) return;
    isReloading = false;
    const bool selectionIsGone = dropHiddenSelection();
    if (outline.onReload) outline.onReload();
    if (selectionIsGone) tellSelection();
  }

  OutlineView& outline;
  RowPointer root;
  OutlineItem::Id lastId = 0;
  std::unordered_map<OutlineItem::Id, RowPointer> rowsById;  // all but the root
  bool isReloading = false;
  RowPointer selected;
  std::vector<RowPointer> visibleRows;
  bool visibleRowsAreKnown = false;
};

OutlineView::OutlineView(std::vector<Column> columns)
    : columns_(std::move(columns)), tree_(std::make_unique<Implementation>(*this)) {}

OutlineView::~OutlineView() = default;

void OutlineView::setHighlightsSelection(bool highlights) {
  if (highlights == highlightsSelection_) return;
  highlightsSelection_ = highlights;
  didChange();
}

void OutlineView::reloadData() { tree_->reloadAndTell(tree_->root); }

OutlineView::Hold OutlineView::holdRows() {
  ++holds_;
  return {this, calls_.wrap([this](const OutlineView* /*outline*/) {
            if (--holds_ == 0 && delegate_ != nullptr) delegate_->outlineViewDidReleaseRows(*this);
          })};
}

void OutlineView::reloadItem(const OutlineItem& item, bool reloadChildren) {
  const Implementation::RowPointer row = tree_->rowFor(item);
  if (!row->placed) return;
  if (reloadChildren) {
    tree_->reloadAndTell(row);
  } else if (item && onReloadItem) {
    onReloadItem(OutlineItem(row));
  }
}

void OutlineView::expandItem(const OutlineItem& item, bool expandChildren) {
  const Implementation::RowPointer row = tree_->rowFor(item);
  if (!row->placed) return;
  if (!row->expanded) {
    const OutlineItem expanded(row);
    if (!isExpandable(expanded)) return;
    if (!row->childrenKnown) tree_->load(row);
    if (!row->placed || row->expanded) return;  // the data source has changed the tree when it was asked
    row->expanded = true;
    tree_->visibleRowsAreKnown = false;
    if (onExpansionChange) onExpansionChange(expanded);
    if (delegate_ != nullptr) delegate_->outlineViewItemDidExpand(*this, expanded);
  }
  if (!expandChildren) return;
  const std::vector<Implementation::RowPointer> children = row->children;
  for (const Implementation::RowPointer& child : children) expandItem(OutlineItem(child), true);
}

void OutlineView::collapseItem(const OutlineItem& item) {
  const Implementation::RowPointer row = item.row_;
  if (!row || !row->placed || !row->expanded) return;
  row->expanded = false;
  tree_->visibleRowsAreKnown = false;
  const bool selectionIsGone = tree_->dropHiddenSelection();
  if (onExpansionChange) onExpansionChange(OutlineItem(row));
  if (selectionIsGone) tree_->tellSelection();
}

bool OutlineView::isItemExpanded(const OutlineItem& item) const { return item.row_ && item.row_->expanded; }

bool OutlineView::isExpandable(const OutlineItem& item) {
  return item.row_ && item.row_->placed && dataSource_ != nullptr &&
         dataSource_->outlineViewIsItemExpandable(*this, item);
}

OutlineItem OutlineView::parentForItem(const OutlineItem& item) const {
  if (!item.row_) return {};
  const Implementation::RowPointer parent = item.row_->parent.lock();
  return parent ? tree_->itemFor(parent) : OutlineItem();
}

std::vector<OutlineItem> OutlineView::childrenOfItem(const OutlineItem& item) {
  const auto& rows = tree_->childrenOf(tree_->rowFor(item));
  std::vector<OutlineItem> children;
  children.reserve(rows.size());
  for (const Implementation::RowPointer& child : rows) children.push_back(OutlineItem(child));
  return children;
}

std::size_t OutlineView::numberOfChildrenOfItem(const OutlineItem& item) {
  return tree_->childrenOf(tree_->rowFor(item)).size();
}

OutlineItem OutlineView::childOfItem(const OutlineItem& item, std::size_t index) {
  const auto& rows = tree_->childrenOf(tree_->rowFor(item));
  return index < rows.size() ? OutlineItem(rows[index]) : OutlineItem();
}

std::size_t OutlineView::indexOfItem(const OutlineItem& item) const {
  return item.row_ && item.row_->placed ? item.row_->index : 0;
}

OutlineItem OutlineView::itemWithId(OutlineItem::Id id) const {
  const auto found = tree_->rowsById.find(id);
  return found != tree_->rowsById.end() ? OutlineItem(found->second) : OutlineItem();
}

std::string OutlineView::persistentNameOfItem(const OutlineItem& item) {
  if (!item || dataSource_ == nullptr) return {};
  return dataSource_->outlineViewPersistentNameForItem(*this, item);
}

int OutlineView::numberOfRows() const { return static_cast<int>(tree_->visible().size()); }

OutlineItem OutlineView::itemAtRow(int row) const {
  const std::vector<Implementation::RowPointer>& rows = tree_->visible();
  if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return {};
  return OutlineItem(rows[static_cast<std::size_t>(row)]);
}

int OutlineView::rowForItem(const OutlineItem& item) const { return tree_->visibleRowOf(item.row_); }

int OutlineView::levelForItem(const OutlineItem& item) const {
  if (!item.row_ || !item.row_->placed) return -1;
  int level = 0;
  for (OutlineItem parent = parentForItem(item); parent; parent = parentForItem(parent)) ++level;
  return level;
}

int OutlineView::selectedRow() const { return tree_->visibleRowOf(tree_->selected); }

void OutlineView::selectRow(int row) {
  const OutlineItem item = itemAtRow(row);
  if (item) tree_->select(item.row_);
}

void OutlineView::deselectAll() { tree_->select(nullptr); }

}  // namespace corvane
