#import "binders/OutlineViewBinder.h"

#include <utility>

#import "System.h"
#import "Text.h"
#import "binders/CellMaker.h"
#import "binders/Rows.h"
#import "binders/Target.h"

namespace corvane::appkit {
namespace {

constexpr double kRowHeight = 22;
constexpr CGFloat kControlHeight = 24;

/// Sets a flag for as long as it lives.
class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag), was_(std::exchange(flag, true)) {}
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;
  ~Flag() { flag_ = was_; }

 private:
  bool& flag_;
  bool was_;
};

}  // namespace

OutlineViewBinder::OutlineViewBinder(OutlineView& outline, CorvaneOutlineTree* view)
    : Binder(outline, view), outline_(outline), widget_(view), source_([CorvaneOutlineSource new]) {
  outline_.setRowHeight(kRowHeight);
  source_->binder_ = this;
  widget_->owner_ = this;
  makeColumns();
  [widget_ setRowHeight:kRowHeight];
  [widget_ setAllowsMultipleSelection:NO];
  [widget_ setAllowsColumnReordering:NO];
  [widget_ setDataSource:source_];
  [widget_ setDelegate:source_];
  outline_.onWillReload = [this] { willReload(); };
  outline_.onReload = [this] { reload(); };
  outline_.onReloadItem = [this](const OutlineItem& item) {
    [widget_ setNeedsDisplayInRect:[widget_ rectOfRow:outline_.rowForItem(item)]];
  };
  outline_.onExpansionChange = [this](const OutlineItem& item) { showExpansionOf(item); };
  outline_.onSelectionChange = [this] { showSelection(); };
  reload();
  refresh();
}

OutlineViewBinder::~OutlineViewBinder() {
  outline_.onWillReload = nullptr;
  outline_.onReload = nullptr;
  outline_.onReloadItem = nullptr;
  outline_.onExpansionChange = nullptr;
  outline_.onSelectionChange = nullptr;
  widget_->owner_ = nullptr;
  source_->binder_ = nullptr;
  [widget_ setDataSource:nil];
  [widget_ setDelegate:nil];
  [source_ release];
  for (const auto& [id, row] : rows_) {
    [row leave];
    [row release];
  }
}

void OutlineViewBinder::makeColumns() {
  NSTableColumn* tree = nil;
  for (const OutlineView::Column& description : outline_.columns()) {
    NSTableColumn* column = addColumn(widget_, description, true);
    // The triangles stand in the first column of texts, not in one of check boxes.
    if (tree == nil && !description.checkBox) tree = column;
  }
  [widget_ setOutlineTableColumn:tree];
  [widget_ setAutoresizesOutlineColumn:NO];
}

std::size_t OutlineViewBinder::indexOf(NSTableColumn* column) const {
  return [[widget_ tableColumns] indexOfObjectIdenticalTo:column];
}

CorvaneOutlineRow* OutlineViewBinder::rowFor(const OutlineItem& item) {
  if (!item) return nil;
  CorvaneOutlineRow*& row = rows_[item.id()];
  if (row == nil)
    row = [[CorvaneOutlineRow alloc] initWithItem:item binder:this columns:outline_.columns().size()];
  return row;
}

void OutlineViewBinder::show() {
  if (!outline_.enabled() && [widget_ editedRow] >= 0) [widget_ abortEditing];
  [widget_ setNeedsDisplay:YES];
  showSelection();
}

// The toolkit forgets what it knows of rows that may be gone afterwards, as long as they are there.
void OutlineViewBinder::willReload() {
  if ([widget_ editedRow] >= 0) [widget_ abortEditing];
  scrolledTo_ = [[[widget_ enclosingScrollView] contentView] bounds].origin;
  const Flag flag(isShowing_);
  for (const OutlineItem& item : outline_.childrenOfItem({})) {
    if ([widget_ isItemExpanded:rowFor(item)]) [widget_ collapseItem:rowFor(item) collapseChildren:YES];
  }
  [widget_ deselectAll:nil];
}

void OutlineViewBinder::reload() {
  {
    const Flag flag(isShowing_);
    [widget_ reloadData];
    std::erase_if(rows_, [this](const auto& entry) {
      if (outline_.itemWithId(entry.first)) return false;
      [entry.second leave];
      [entry.second autorelease];  // the toolkit may still be looking at it
      return true;
    });
    showExpansionBelow({});
  }
  for (const OutlineItem& row : outline_.childrenOfItem({})) {
    if (openRows_.contains(outline_.persistentNameOfItem(row))) outline_.expandItem(row);
  }
  showSelection();
  [widget_ scrollPoint:scrolledTo_];
}

void OutlineViewBinder::setOpen(const OutlineItem& item, bool open) {
  CorvaneOutlineRow* row = rowFor(item);
  if (static_cast<bool>([widget_ isItemExpanded:row]) == open) return;
  const Flag flag(isShowing_);
  if (open) {
    [widget_ expandItem:row];
  } else {
    [widget_ collapseItem:row];
  }
}

void OutlineViewBinder::showExpansionBelow(const OutlineItem& parent) {
  for (const OutlineItem& item : outline_.childrenOfItem(parent)) {
    const bool open = outline_.isItemExpanded(item);
    setOpen(item, open);
    if (open) showExpansionBelow(item);
  }
}

void OutlineViewBinder::showExpansionOf(const OutlineItem& item) {
  const bool open = outline_.isItemExpanded(item);
  if (outline_.levelForItem(item) == 0) {
    const std::string name = outline_.persistentNameOfItem(item);
    if (!open) {
      openRows_.erase(name);
    } else if (!name.empty()) {
      openRows_.insert(name);
    }
  }
  setOpen(item, open);
  if (open) showExpansionBelow(item);
}

void OutlineViewBinder::showSelection() {
  const NSInteger row = outline_.selectedRow();
  if ([widget_ selectedRow] == row || row >= [widget_ numberOfRows]) return;
  const Flag flag(isShowing_);
  selectRow(widget_, row);
}

void OutlineViewBinder::userSelected() {
  [widget_ setNeedsDisplay:YES];
  if (!isShowing_) outline_.selectRow(static_cast<int>([widget_ selectedRow]));
}

void OutlineViewBinder::userDisclosed(CorvaneOutlineRow* row, bool open) {
  if (isShowing_) return;
  if (open) {
    outline_.expandItem(row->item_);
  } else {
    outline_.collapseItem(row->item_);
  }
}

NSCell* OutlineViewBinder::cellFor(NSTableColumn* column, CorvaneOutlineRow* row) {
  const std::size_t index = indexOf(column);
  return [row cellFor:outline_.preparedCell(outline_.columns()[index], row->item_)
               column:index
              enabled:outline_.enabled()];
}

id OutlineViewBinder::objectValueFor(NSTableColumn* column, CorvaneOutlineRow* row) {
  const auto& place = row->places_[indexOf(column)];
  if (place.cell == nil) static_cast<void>(cellFor(column, row));
  return objectValueOf(place.prepared);
}

bool OutlineViewBinder::mayType(NSTableColumn* column, CorvaneOutlineRow* row) {
  const OutlineView::Column& description = outline_.columns()[indexOf(column)];
  return appkit::isTypedIn(*outline_.bareCell(description, row->item_)) &&
         outline_.shouldEdit(description, row->item_);
}

void OutlineViewBinder::setObjectValue(id value, NSTableColumn* column, CorvaneOutlineRow* row) {
  const std::size_t index = indexOf(column);
  const CellReference cell = row->places_[index].prepared.cell;
  if (cell == nullptr) return;
  if (!appkit::isTypedIn(*cell)) {
    userActed(row, index);  // where the toolkit does not send the cell's action
    return;
  }
  const std::string text = fromNSString([value description]);
  if (text != typedTextOf(*cell))
    outline_.editCell(row->item_, outline_.columns()[index], PropertyList::string(text));
  [widget_ setNeedsDisplay:YES];
}

void OutlineViewBinder::userActed(CorvaneOutlineRow* row, std::size_t column) {
  // As it is now: a toolkit that sends the cell's action and sets its value tells one choice twice.
  const CellReference cell = outline_.preparedCell(outline_.columns()[column], row->item_).cell;
  const auto* menu = std::get_if<PopUpButtonCell>(cell.get());
  if (menu == nullptr) {
    press(row, column);
    return;
  }
  const auto chosen = [static_cast<NSPopUpButtonCell*>(row->places_[column].cell) indexOfSelectedItem];
  if (chosen == menu->selectedIndex) return;
  outline_.editCell(row->item_, outline_.columns()[column], PropertyList::integer(chosen));
  [widget_ setNeedsDisplay:YES];
}

// Later: what the button does may run a panel, and the toolkit is still following the mouse here. A toolkit
// that sends the cell's action and sets its value tells one press twice.
void OutlineViewBinder::press(CorvaneOutlineRow* row, std::size_t column) {
  if (std::exchange(isPressing_, true)) return;
  holdRowsWhileBusy();
  callSoon(calls_.wrap([this, item = row->item_, column] {
    isPressing_ = false;
    outline_.clickCell(item, outline_.columns()[column]);
    [widget_ setNeedsDisplay:YES];
    holdRowsWhileBusy();
  }));
}

bool OutlineViewBinder::showsTriangle(NSInteger row) { return outline_.showsOutlineCell(itemAt(row)); }

NSRect OutlineViewBinder::frameOfControl(NSInteger column, NSInteger row, NSRect cell) {
  const OutlineItem item = itemAt(row);
  if (!item || column < 0) return cell;
  const auto& place = rowFor(item)->places_[static_cast<std::size_t>(column)];
  const double width = place.cell != nil ? widthOf(*place.prepared.cell) : 0;
  if (width <= 0) return cell;
  cell.size.width = MIN(cell.size.width, width);
  if (cell.size.height > kControlHeight) {
    cell.origin.y += (cell.size.height - kControlHeight) / 2;
    cell.size.height = kControlHeight;
  }
  return cell;
}

NSAttributedString* OutlineViewBinder::placeholder() {
  if (outline_.numberOfRows() > 0) return nil;
  return toNSAttributedString(AttributedText(outline_.placeholder()), {controlFont(), kCentered, false});
}

bool OutlineViewBinder::isTypedIn(NSInteger column, NSInteger row) {
  const OutlineItem item = itemAt(row);
  return item &&
         mayType([[widget_ tableColumns] objectAtIndex:static_cast<NSUInteger>(column)], rowFor(item));
}

void OutlineViewBinder::activate(NSInteger row) {
  CorvaneOutlineRow* shown = rowFor(itemAt(row));
  for (NSTableColumn* column in [widget_ tableColumns]) {
    const std::size_t index = indexOf(column);
    const CellReference cell = outline_.bareCell(outline_.columns()[index], shown->item_);
    if (isTypedIn(static_cast<NSInteger>(index), row)) {
      [widget_ typeInColumn:static_cast<NSInteger>(index) row:row];
      return;
    }
    if (std::holds_alternative<ButtonCell>(*cell)) {
      press(shown, index);
      return;
    }
    if (std::holds_alternative<PopUpButtonCell>(*cell)) {
      setTracking(true);
      openMenu(static_cast<NSPopUpButtonCell*>(cellFor(column, shown)),
               [widget_ frameOfCellAtColumn:static_cast<NSInteger>(index) row:row], widget_,
               calls_.wrap([this] { setTracking(false); }));
      return;
    }
  }
}

void OutlineViewBinder::disclose(NSInteger row, bool open) {
  const OutlineItem item = itemAt(row);
  if (open) {
    outline_.expandItem(item);
  } else if (outline_.isItemExpanded(item)) {
    outline_.collapseItem(item);
  } else {
    outline_.selectRow(outline_.rowForItem(outline_.parentForItem(item)));
  }
}

void OutlineViewBinder::setTracking(bool tracking) {
  isTracking_ = tracking;
  holdRowsWhileBusy();
}

CellReference OutlineViewBinder::editedCell() {
  const OutlineItem item = itemAt([widget_ editedRow]);
  return item ? rowFor(item)->places_[static_cast<std::size_t>([widget_ editedColumn])].prepared.cell
              : nullptr;
}

void OutlineViewBinder::editingDidChange() {
  const CellReference cell = editedCell();
  accepted_ = cell != nullptr ? typedTextOf(*cell) : std::string();
  holdRowsWhileBusy();
}

void OutlineViewBinder::didType(NSText* editor) {
  const CellReference cell = editedCell();
  if (cell == nullptr) return;
  std::string typed = fromNSString([editor string]);
  const PartialStringCheck check = OutlineView::checkPartialString(*cell, typed);
  if (check.valid) {
    accepted_ = std::move(typed);
  } else {
    accepted_ = check.newEditingString.value_or(accepted_);
    [editor setString:toNSString(accepted_)];
  }
}

void OutlineViewBinder::holdRowsWhileBusy() {
  const auto isBusy = [this] { return isTracking_ || isPressing_ || [widget_ editedRow] >= 0; };
  if (isBusy()) {
    if (rowsHeld_ == nullptr) rowsHeld_ = outline_.holdRows();
  } else {
    // Later: the click that has closed an editor is still to be delivered to the row that it was meant for.
    callSoon(calls_.wrap([this, isBusy] {
      if (!isBusy()) rowsHeld_.reset();
    }));
  }
}

}  // namespace corvane::appkit
