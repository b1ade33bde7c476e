// Tabs of which one is selected. A delegate is asked before every change of the selection, the user's and a
// controller's alike.
#pragma once

#include <string>
#include <vector>

#include "controls/Control.h"

namespace corvane {

class TabView;

struct TabViewItem {
  std::string label;
};

class TabViewDelegate {
 public:
  virtual ~TabViewDelegate() = default;
  [[nodiscard]] virtual bool tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) = 0;
};

class TabView final : public Control {
 public:
  explicit TabView(std::vector<std::string> labels);

  [[nodiscard]] const std::vector<TabViewItem>& items() const { return items_; }
  /// -1 when the item is not one of this view's.
  [[nodiscard]] int indexOfTabViewItem(const TabViewItem& item) const;
  [[nodiscard]] int indexOfSelectedItem() const { return selected_; }
  /// Selects the tab if it is another one and the delegate allows it; an index outside does nothing. Also the
  /// user's act. A refusal is told through `onChange`, so that a shell that has switched goes back.
  void selectTabViewItemAtIndex(int index);
  void setDelegate(TabViewDelegate* delegate) { delegate_ = delegate; }

 private:
  std::vector<TabViewItem> items_;
  int selected_ = 0;
  TabViewDelegate* delegate_ = nullptr;
};

}  // namespace corvane
