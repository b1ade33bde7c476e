// What tables and outlines have in common for the toolkit: columns and the selected row.
#pragma once

#import "AppKit.h"
#include "controls/TableView.h"

namespace corvane::appkit {

/// A column of fixed width, put behind those that are there.
NSTableColumn* addColumn(NSTableView* view, const TableColumn& description, bool editable);
/// Selects this row and no other; -1 is none.
void selectRow(NSTableView* view, NSInteger row);

}  // namespace corvane::appkit
