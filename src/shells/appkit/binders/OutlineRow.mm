#import "binders/OutlineRow.h"

#include <utility>

#import "binders/CellMaker.h"
#import "binders/OutlineViewBinder.h"

/// The action of one cell. The toolkit names the outline as the sender, whichever cell was used.
@interface CorvaneCellAction : NSObject {
 @public
  CorvaneOutlineRow* row_;  // owns this
  std::size_t column_;
}
- (void)act:(id)sender;
@end

@implementation CorvaneCellAction

- (void)act:(id)sender {
  [[row_ retain] autorelease];
  if (row_->binder_ != nullptr) row_->binder_->userActed(row_, column_);
}

@end

@implementation CorvaneOutlineRow

- (id)initWithItem:(const corvane::OutlineItem&)item
            binder:(corvane::appkit::OutlineViewBinder*)binder
           columns:(std::size_t)columns {
  self = [super init];
  if (self != nil) {
    item_ = item;
    binder_ = binder;
    places_.resize(columns);
    for (std::size_t column = 0; column < columns; ++column) {
      CorvaneCellAction* action = [CorvaneCellAction new];
      action->row_ = self;
      action->column_ = column;
      places_[column].action = action;
    }
  }
  return self;
}

- (void)dealloc {
  for (Place& place : places_) {
    [self dropCell:place];
    [place.action release];
  }
  [super dealloc];
}

// The toolkit may keep a cell longer than the row and the view, and tells the view of what is done to it.
- (void)dropCell:(Place&)place {
  [place.cell setControlView:nil];
  if ([place.cell isKindOfClass:[NSActionCell class]]) [place.cell setTarget:nil];
  [place.cell autorelease];
  place.cell = nil;
}

- (void)leave {
  binder_ = nullptr;
  for (Place& place : places_) [self dropCell:place];
}

- (NSCell*)cellFor:(corvane::PreparedCell)prepared column:(std::size_t)column enabled:(bool)enabled {
  Place& place = places_[column];
  if (place.cell != nil && !corvane::appkit::isSameKind(*place.prepared.cell, *prepared.cell))
    [self dropCell:place];
  if (place.cell == nil) {
    place.cell = corvane::appkit::makeCell(*prepared.cell);
    if ([place.cell isKindOfClass:[NSButtonCell class]]) {  // a pop-up menu is one too
      [place.cell setTarget:place.action];
      [place.cell setAction:@selector(act:)];
    }
  }
  place.prepared = std::move(prepared);
  corvane::appkit::fillCell(place.cell, *place.prepared.cell, enabled);
  return place.cell;
}

@end
