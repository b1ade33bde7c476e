// A tree of rows that come from a data source, shown as an outline in which rows can be expanded. Each row is
// an object of its own that knows its parent, also where two rows hold the same value; the data source and
// the delegate are asked with these row objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/Cells.h"
#include "controls/Control.h"
#include "controls/ObjectValue.h"
#include "controls/TableView.h"
#include "platform/LateCalls.h"
#include "values/PropertyList.h"

namespace corvane {

class OutlineView;

/// One row of an outline, or (empty) the root above all rows. Two handles are equal when they are the same
/// row. A handle keeps what it says about its row also when the row has gone from the tree.
class OutlineItem {
 public:
  /// As wide as a pointer, so that a toolkit can keep it in the place of one.
  using Id = std::uintptr_t;

  OutlineItem() = default;
  explicit operator bool() const { return row_ != nullptr; }
  /// The value that the data source gave for the row.
  [[nodiscard]] const PropertyList& object() const;
  /// What the data source said that the row is, in its own numbers; 0 for the root.
  [[nodiscard]] int kind() const;
  /// Stands for the row in a shell's tables; no other row of the outline ever gets it. 0 for the root.
  [[nodiscard]] Id id() const;
  friend bool operator==(const OutlineItem&, const OutlineItem&) = default;

 private:
  friend class OutlineView;
  struct Row;
  explicit OutlineItem(std::shared_ptr<Row> row) : row_(std::move(row)) {}
  std::shared_ptr<Row> row_;
};

class OutlineViewDataSource {
 public:
  virtual ~OutlineViewDataSource() = default;
  [[nodiscard]] virtual int outlineViewNumberOfChildrenOfItem(OutlineView& outline,
                                                              const OutlineItem& item) = 0;
  [[nodiscard]] virtual bool outlineViewIsItemExpandable(OutlineView& outline, const OutlineItem& item) = 0;
  /// The value of the row at the index below the item; nothing makes a row without a value.
  [[nodiscard]] virtual PropertyList outlineViewChildOfItem(OutlineView& outline, int index,
                                                            const OutlineItem& item) = 0;
  /// What a child with this value below the parent is, in numbers of the data source's own. Asked when the
  /// row is made: a row stays what it is.
  [[nodiscard]] virtual int outlineViewKindOfChild(OutlineView& /*outline*/, const PropertyList& /*child*/,
                                                   const OutlineItem& /*parent*/) {
    return 0;
  }
  /// What the row is called among its siblings however often the tree is read again: a shell finds by it
  /// where the user was. Empty: the row has no such name.
  [[nodiscard]] virtual std::string outlineViewPersistentNameForItem(OutlineView& /*outline*/,
                                                                     const OutlineItem& /*item*/) {
    return {};
  }
  [[nodiscard]] virtual ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView& outline,
                                                                               const TableColumn& column,
                                                                               const OutlineItem& item) = 0;
  virtual void outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline, const PropertyList& value,
                                                             const TableColumn& column,
                                                             const OutlineItem& item) = 0;
};

class OutlineViewDelegate {
 public:
  virtual ~OutlineViewDelegate() = default;
  virtual void outlineViewItemDidExpand(OutlineView& outline, const OutlineItem& item) = 0;
  [[nodiscard]] virtual bool outlineViewShouldEditTableColumnItem(OutlineView& outline,
                                                                  const TableColumn& column,
                                                                  const OutlineItem& item) = 0;
  /// `column` is null for a row of full width.
  [[nodiscard]] virtual CellReference outlineViewDataCellForTableColumnItem(OutlineView& outline,
                                                                            const TableColumn* column,
                                                                            const OutlineItem& item) = 0;
  [[nodiscard]] virtual double outlineViewHeightOfRowByItem(OutlineView& outline,
                                                            const OutlineItem& item) = 0;
  [[nodiscard]] virtual bool outlineViewShouldShowOutlineCellForItem(OutlineView& outline,
                                                                     const OutlineItem& item) = 0;
  virtual void outlineViewWillDisplayCellForTableColumnItem(OutlineView& outline, Cell& cell,
                                                            const TableColumn& column,
                                                            const OutlineItem& item) = 0;
  /// A picture of the rows is about to be drawn, and lasts as long as the answer is kept: what they show
  /// need not be looked up for each of them.
  [[nodiscard]] virtual std::shared_ptr<const void> outlineViewWillDrawRows(OutlineView& /*outline*/) {
    return nullptr;
  }
  /// Nothing holds the rows any more (`OutlineView::holdRows`).
  virtual void outlineViewDidReleaseRows(OutlineView& /*outline*/) {}
};

/// A cell ready to be shown: the delegate's cell (or the column's default) with its value set and dressed.
struct PreparedCell {
  CellReference cell;
  /// For a default cell: the value that it shows. A default cell of a check-box column shows it as a switch.
  ObjectValue value;
};

class OutlineView final : public Control {
 public:
  struct Column : TableColumn {
    /// The column's default cell is a check box instead of a text.
    bool checkBox = false;
  };

  explicit OutlineView(std::vector<Column> columns);
  ~OutlineView() override;

  void setDataSource(OutlineViewDataSource* dataSource) { dataSource_ = dataSource; }
  void setDelegate(OutlineViewDelegate* delegate) { delegate_ = delegate; }
  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
  /// Of a standard row, in points: the shell's to choose.
  [[nodiscard]] double rowHeight() const { return rowHeight_; }
  void setRowHeight(double height) { rowHeight_ = height; }
  /// What stands in the place of the rows while there are none.
  [[nodiscard]] const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string text) { placeholder_ = std::move(text); }
  [[nodiscard]] bool highlightsSelection() const { return highlightsSelection_; }
  void setHighlightsSelection(bool highlights);

  // The tree. Children are asked for when their parent is first expanded.
  /// Reads the whole tree again. A row whose object (the very same) comes again under the same parent stays
  /// the same row and keeps its expansion; the selection is kept only with its row.
  void reloadData();
  /// Says, for as long as one of the handles lives, that the user is in the middle of an act on a row: types
  /// in a cell, holds the mouse button down, answers what a button has asked. Were the rows replaced now,
  /// what is being typed would be lost, or a click meet another row. The outline itself does nothing about
  /// it: whoever owns what the rows show waits with changing both until the delegate hears that nothing holds
  /// them any more. The clicks and edits below hold the rows by themselves.
  using Hold = std::shared_ptr<const void>;
  [[nodiscard]] Hold holdRows();
  [[nodiscard]] bool holdsRows() const { return holds_ > 0; }
  /// Shows the item's cells afresh; with `reloadChildren` its children are asked for again as well.
  void reloadItem(const OutlineItem& item, bool reloadChildren = false);
  /// Expands an expandable item, with `expandChildren` everything below it as well (the empty item: all
  /// rows). The delegate hears of each row that was not expanded before, once its children are known.
  void expandItem(const OutlineItem& item, bool expandChildren = false);
  /// Hides what is below the item. Rows below keep their expansion; a selection below is gone.
  void collapseItem(const OutlineItem& item);
  [[nodiscard]] bool isItemExpanded(const OutlineItem& item) const;
  [[nodiscard]] bool isExpandable(const OutlineItem& item);
  /// The item under which the row was last returned; empty for a top-level row and for a row that is gone.
  [[nodiscard]] OutlineItem parentForItem(const OutlineItem& item) const;
  /// The children known so far (asked for now when they are not known yet). A row that can't be expanded has
  /// none and is not asked for any.
  [[nodiscard]] std::vector<OutlineItem> childrenOfItem(const OutlineItem& item);
  [[nodiscard]] std::size_t numberOfChildrenOfItem(const OutlineItem& item);
  /// Empty past the end.
  [[nodiscard]] OutlineItem childOfItem(const OutlineItem& item, std::size_t index);
  /// The place of the row among the children of its parent; 0 for the root and for a row that is gone.
  [[nodiscard]] std::size_t indexOfItem(const OutlineItem& item) const;
  /// The row with this identity; empty for 0 and when the row is gone.
  [[nodiscard]] OutlineItem itemWithId(OutlineItem::Id id) const;
  /// Empty for a row that has none.
  [[nodiscard]] std::string persistentNameOfItem(const OutlineItem& item);

  // The visible rows.
  [[nodiscard]] int numberOfRows() const;
  [[nodiscard]] OutlineItem itemAtRow(int row) const;           // empty outside
  [[nodiscard]] int rowForItem(const OutlineItem& item) const;  // -1 when not visible
  /// 0 for a top-level row; -1 for the root and for a row that is gone.
  [[nodiscard]] int levelForItem(const OutlineItem& item) const;
  [[nodiscard]] int selectedRow() const;  // -1: none
  /// A row outside selects nothing new.
  void selectRow(int row);
  void deselectAll();

  // Cells.
  /// To be kept by a shell while it draws many of them.
  [[nodiscard]] std::shared_ptr<const void> drawRows() {
    return delegate_ != nullptr ? delegate_->outlineViewWillDrawRows(*this) : nullptr;
  }
  [[nodiscard]] PreparedCell preparedCell(const Column& column, const OutlineItem& item);
  /// The cell without its value, never null: its kind, and nothing that is stored is read for it.
  [[nodiscard]] CellReference bareCell(const Column& column, const OutlineItem& item);
  [[nodiscard]] double heightOfRow(const OutlineItem& item);
  /// Whether the row shows a disclosure triangle: it can be expanded and the delegate has nothing against it.
  [[nodiscard]] bool showsOutlineCell(const OutlineItem& item);
  /// Whether the user may edit the cell in place now.
  [[nodiscard]] bool shouldEdit(const Column& column, const OutlineItem& item);
  /// The cell that was clicked last, or nothing.
  [[nodiscard]] CellReference selectedCell() const { return selectedCell_; }

  // The user's acts. They take the row itself, which can have moved since the act began, and do nothing where
  // it can't be seen any more. All but expanding and collapsing are ignored while the outline is disabled.
  /// A click on a button or switch cell: selects the row, then performs the cell's action or, where it has
  /// none, sets the opposite state.
  void clickCell(const OutlineItem& item, const Column& column);
  /// A value that was typed or chosen in a cell. Text cells are checked with `shouldEdit` and their
  /// formatter, by the whole text: what could not have been typed is not stored. A pop-up takes the index of
  /// an item. What is refused shows the row afresh.
  void editCell(const OutlineItem& item, const Column& column, const PropertyList& value);
  /// Whether a text may stand in the cell while it is being typed there, by the cell's formatter. Cells that
  /// take no text admit none.
  [[nodiscard]] static PartialStringCheck checkPartialString(const Cell& cell, const std::string& partial);
  void clickDisclosure(const OutlineItem& item);

  /// For the shell: the tree is about to be read again / has been read again / a row must be shown afresh /
  /// a row was opened or closed / the selection changed. The first two come in pairs.
  std::function<void()> onWillReload;
  std::function<void()> onReload;
  std::function<void(const OutlineItem&)> onReloadItem;
  std::function<void(const OutlineItem&)> onExpansionChange;
  std::function<void()> onSelectionChange;

 private:
  struct Implementation;
  /// The value to store for what was typed or chosen in a cell; nothing when it is refused.
  [[nodiscard]] std::optional<PropertyList> valueForEdit(const Column& column, const OutlineItem& item,
                                                         const PropertyList& value);

  std::vector<Column> columns_;
  OutlineViewDataSource* dataSource_ = nullptr;
  OutlineViewDelegate* delegate_ = nullptr;
  double rowHeight_ = 0;
  std::string placeholder_;
  bool highlightsSelection_ = true;
  int holds_ = 0;
  CellReference selectedCell_;
  bool isActing_ = false;  // a click is being carried out
  std::unique_ptr<Implementation> tree_;
  LateCalls calls_;  // a shell may give a hold back late
};

}  // namespace corvane
