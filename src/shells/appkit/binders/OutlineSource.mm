// What the toolkit asks of an outline's data source and delegate, handed on to the binder.
#import "binders/OutlineViewBinder.h"

using corvane::OutlineItem;

namespace {

OutlineItem itemOf(CorvaneOutlineRow* row) { return row != nil ? row->item_ : OutlineItem(); }

}  // namespace

@implementation CorvaneOutlineSource

- (NSInteger)outlineView:(NSOutlineView*)outline numberOfChildrenOfItem:(id)item {
  return binder_ != nullptr ? static_cast<NSInteger>(binder_->outline().numberOfChildrenOfItem(itemOf(item)))
                            : 0;
}

- (id)outlineView:(NSOutlineView*)outline child:(NSInteger)index ofItem:(id)item {
  if (binder_ == nullptr) return nil;
  return binder_->rowFor(binder_->outline().childOfItem(itemOf(item), static_cast<std::size_t>(index)));
}

- (BOOL)outlineView:(NSOutlineView*)outline isItemExpandable:(id)item {
  return binder_ != nullptr && binder_->outline().isExpandable(itemOf(item));
}

- (id)outlineView:(NSOutlineView*)outline objectValueForTableColumn:(NSTableColumn*)column byItem:(id)item {
  return binder_ != nullptr ? binder_->objectValueFor(column, item) : nil;
}

- (void)outlineView:(NSOutlineView*)outline
     setObjectValue:(id)value
     forTableColumn:(NSTableColumn*)column
             byItem:(id)item {
  if (binder_ != nullptr) binder_->setObjectValue(value, column, item);
}

- (NSCell*)outlineView:(NSOutlineView*)outline dataCellForTableColumn:(NSTableColumn*)column item:(id)item {
  return binder_ != nullptr && column != nil ? binder_->cellFor(column, item) : nil;
}

- (void)outlineView:(NSOutlineView*)outline
    willDisplayCell:(id)cell
     forTableColumn:(NSTableColumn*)column
               item:(id)item {
  // The core has dressed the description of the cell. What is left is how a disabled outline shows it, which
  // the toolkit may have changed since.
  if (binder_ != nullptr && !binder_->outline().enabled() && [cell isKindOfClass:[NSButtonCell class]])
    [cell setEnabled:NO];
}

- (void)outlineView:(NSOutlineView*)outline
    willDisplayOutlineCell:(id)cell
            forTableColumn:(NSTableColumn*)column
                      item:(id)item {
  // GNUstep draws a picture also where there is no triangle.
  if (binder_ != nullptr && !binder_->outline().showsOutlineCell(itemOf(item))) [cell setImage:nil];
}

- (CGFloat)outlineView:(NSOutlineView*)outline heightOfRowByItem:(id)item {
  return binder_ != nullptr ? binder_->outline().heightOfRow(itemOf(item)) : [outline rowHeight];
}

- (BOOL)outlineView:(NSOutlineView*)outline shouldShowOutlineCellForItem:(id)item {
  return binder_ != nullptr && binder_->outline().showsOutlineCell(itemOf(item));
}

- (BOOL)outlineView:(NSOutlineView*)outline shouldEditTableColumn:(NSTableColumn*)column item:(id)item {
  return binder_ != nullptr && binder_->mayType(column, item);
}

- (void)outlineViewSelectionDidChange:(NSNotification*)notification {
  if (binder_ != nullptr) binder_->userSelected();
}

- (void)outlineViewItemDidExpand:(NSNotification*)notification {
  if (binder_ != nullptr) binder_->userDisclosed([[notification userInfo] objectForKey:@"NSObject"], true);
}

- (void)outlineViewItemDidCollapse:(NSNotification*)notification {
  if (binder_ != nullptr) binder_->userDisclosed([[notification userInfo] objectForKey:@"NSObject"], false);
}

@end
