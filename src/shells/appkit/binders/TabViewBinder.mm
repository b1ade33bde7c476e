#import "binders/TabViewBinder.h"

#import "Text.h"

namespace corvane::appkit {

TabViewBinder::TabViewBinder(TabView& tabView, NSTabView* view, const std::vector<NSView*>& pages)
    : Binder(tabView, view), tabView_(tabView), widget_(view), delegate_([CorvaneTabViewDelegate new]) {
  delegate_->binder_ = this;
  for (std::size_t index = 0; index < pages.size(); ++index) {
    NSString* label = toNSString(tabView_.items()[index].label);
    NSTabViewItem* shown = [[[NSTabViewItem alloc] initWithIdentifier:label] autorelease];
    [shown setLabel:label];
    [shown setView:pages[index]];  // first: GNUstep shows no page that a selected item is given later
    [widget_ addTabViewItem:shown];
  }
  [widget_ setDelegate:delegate_];
  refresh();
}

TabViewBinder::~TabViewBinder() {
  delegate_->binder_ = nullptr;
  [widget_ setDelegate:nil];
  [delegate_ release];
}

bool TabViewBinder::shouldSelect(int index) {
  if (isSelecting_) return true;
  isSelecting_ = true;  // what is allowed now the toolkit shows itself
  tabView_.selectTabViewItemAtIndex(index);
  isSelecting_ = false;
  return tabView_.indexOfSelectedItem() == index;
}

void TabViewBinder::didSelect() {
  if (onShown) onShown();
}

void TabViewBinder::show() {
  const int index = tabView_.indexOfSelectedItem();
  if (isSelecting_ || index < 0 || [widget_ indexOfTabViewItem:[widget_ selectedTabViewItem]] == index)
    return;
  isSelecting_ = true;
  [widget_ selectTabViewItemAtIndex:index];
  isSelecting_ = false;
}

}  // namespace corvane::appkit

@implementation CorvaneTabViewDelegate

- (BOOL)tabView:(NSTabView*)tabView shouldSelectTabViewItem:(NSTabViewItem*)item {
  return binder_ == nullptr || binder_->shouldSelect(static_cast<int>([tabView indexOfTabViewItem:item]));
}

- (void)tabView:(NSTabView*)tabView didSelectTabViewItem:(NSTabViewItem*)item {
  if (binder_ != nullptr) binder_->didSelect();
}

@end
