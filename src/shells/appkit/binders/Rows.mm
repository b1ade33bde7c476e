#import "binders/Rows.h"

#import "Text.h"

namespace corvane::appkit {

NSTableColumn* addColumn(NSTableView* view, const TableColumn& description, bool editable) {
  NSTableColumn* column =
      [[[NSTableColumn alloc] initWithIdentifier:toNSString(description.identifier)] autorelease];
  [[column headerCell] setStringValue:toNSString(description.title)];
  [column setMinWidth:description.width];
  [column setMaxWidth:description.width];
  [column setWidth:description.width];
  [column setEditable:editable];
  [view addTableColumn:column];
  return column;
}

void selectRow(NSTableView* view, NSInteger row) {
  if (row < 0) {
    [view deselectAll:nil];
  } else {
    [view selectRowIndexes:[NSIndexSet indexSetWithIndex:static_cast<NSUInteger>(row)]
        byExtendingSelection:NO];
  }
}

}  // namespace corvane::appkit
