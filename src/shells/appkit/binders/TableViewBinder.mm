#import "binders/TableViewBinder.h"

#import "Text.h"
#import "binders/Rows.h"
#include "values/Conversions.h"

namespace corvane::appkit {

TableViewBinder::TableViewBinder(TableView& table, NSTableView* view)
    : Binder(table, view), table_(table), widget_(view), source_([CorvaneTableSource new]) {
  source_->binder_ = this;
  makeColumns();
  table_.setHeaderHeight([[widget_ headerView] frame].size.height);
  [widget_ setAllowsEmptySelection:YES];
  [widget_ setAllowsMultipleSelection:NO];
  [widget_ setAllowsColumnReordering:NO];
  [widget_ setDataSource:source_];
  [widget_ setDelegate:source_];
  table_.onReload = [this] { reload(); };
  table_.onSelectionChange = [this] { showSelection(); };
  reload();
  refresh();
}

TableViewBinder::~TableViewBinder() {
  table_.onReload = nullptr;
  table_.onSelectionChange = nullptr;
  source_->binder_ = nullptr;
  [widget_ setDataSource:nil];
  [widget_ setDelegate:nil];
  [source_ release];
}

void TableViewBinder::makeColumns() {
  for (const TableColumn& description : table_.columns()) addColumn(widget_, description, false);
}

const TableColumn& TableViewBinder::columnOf(NSTableColumn* column) const {
  return table_.columns()[[[widget_ tableColumns] indexOfObjectIdenticalTo:column]];
}

void TableViewBinder::show() {
  [widget_ setNeedsDisplay:YES];
  showSelection();
}

void TableViewBinder::reload() {
  isShowing_ = true;
  [widget_ reloadData];
  isShowing_ = false;
  showSelection();
}

id TableViewBinder::objectValue(NSTableColumn* column, NSInteger row) const {
  const ObjectValue value = table_.objectValue(columnOf(column), static_cast<int>(row));
  AttributedText text;
  if (const auto* styled = std::get_if<AttributedText>(&value)) text = *styled;
  if (const auto* plain = std::get_if<PropertyList>(&value)) text = AttributedText(description(*plain));
  return toNSAttributedString(text, {controlFont(), kLeftAligned, table_.enabled()});
}

NSString* TableViewBinder::toolTip(NSTableColumn* column, NSInteger row) const {
  const std::string text = table_.toolTip(columnOf(column), static_cast<int>(row));
  return text.empty() ? nil : toNSString(text);
}

void TableViewBinder::showSelection() {
  const NSInteger row = table_.selectedRow();
  if ([widget_ selectedRow] == row) return;
  isShowing_ = true;
  selectRow(widget_, row);
  if (row >= 0) [widget_ scrollRowToVisible:row];
  isShowing_ = false;
}

void TableViewBinder::userSelected() {
  if (isShowing_) return;
  table_.clickRow(static_cast<int>([widget_ selectedRow]));
  showSelection();  // what the control has made of it
}

}  // namespace corvane::appkit

@implementation CorvaneTableSource

- (NSInteger)numberOfRowsInTableView:(NSTableView*)table {
  return binder_ != nullptr ? binder_->numberOfRows() : 0;
}

- (id)tableView:(NSTableView*)table objectValueForTableColumn:(NSTableColumn*)column row:(NSInteger)row {
  return binder_ != nullptr ? binder_->objectValue(column, row) : nil;
}

- (NSString*)tableView:(NSTableView*)table
        toolTipForCell:(NSCell*)cell
                  rect:(NSRect*)rect
           tableColumn:(NSTableColumn*)column
                   row:(NSInteger)row
         mouseLocation:(NSPoint)location {
  return binder_ != nullptr ? binder_->toolTip(column, row) : nil;
}

- (BOOL)selectionShouldChangeInTableView:(NSTableView*)table {
  return binder_ == nullptr || binder_->mayChoose();
}

- (BOOL)tableView:(NSTableView*)table shouldSelectRow:(NSInteger)row {
  return binder_ == nullptr || binder_->mayChoose();
}

- (void)tableViewSelectionDidChange:(NSNotification*)notification {
  if (binder_ != nullptr) binder_->userSelected();
}

@end
