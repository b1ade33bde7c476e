#include "controls/TabView.h"

#include <utility>

namespace corvane {

TabView::TabView(std::vector<std::string> labels) {
  items_.reserve(labels.size());
  for (std::string& label : labels) items_.push_back({std::move(label)});
  if (items_.empty()) selected_ = -1;
}

int TabView::indexOfTabViewItem(const TabViewItem& item) const {
  for (std::size_t index = 0; index < items_.size(); ++index) {
    if (&items_[index] == &item) return static_cast<int>(index);
  }
  return -1;
}

void TabView::selectTabViewItemAtIndex(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size()) || index == selected_) return;
  if (delegate_ != nullptr &&
      !delegate_->tabViewShouldSelectTabViewItem(*this, items_[static_cast<std::size_t>(index)])) {
    // A shell that has already switched to the refused tab is told to show the selected one again.
    didChange();
    return;
  }
  selected_ = index;
  didChange();
}

}  // namespace corvane
