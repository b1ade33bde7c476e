// The rows of an outline as objects of the toolkit, which knows its rows by those, with the toolkit's cells
// in their places.
#pragma once

#include <vector>

#import "AppKit.h"
#include "controls/OutlineView.h"

@class CorvaneCellAction;

namespace corvane::appkit {
class OutlineViewBinder;
}

@interface CorvaneOutlineRow : NSObject {
 @public
  /// What was shown last in one column.
  struct Place {
    corvane::PreparedCell prepared;
    NSCell* cell = nil;
    CorvaneCellAction* action = nil;
  };
  corvane::OutlineItem item_;
  corvane::appkit::OutlineViewBinder* binder_;  // null once it has gone
  std::vector<Place> places_;                   // by column
}
- (id)initWithItem:(const corvane::OutlineItem&)item
            binder:(corvane::appkit::OutlineViewBinder*)binder
           columns:(std::size_t)columns;
/// The view is about to go, or the row has gone from it.
- (void)leave;
/// The cell that shows this now; kept until one of another kind is wanted.
- (NSCell*)cellFor:(corvane::PreparedCell)prepared column:(std::size_t)column enabled:(bool)enabled;
@end
