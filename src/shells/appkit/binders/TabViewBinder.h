// The tab view. The control, and with it its delegate, is asked before the toolkit changes the tab.
#pragma once

#include <functional>
#include <vector>

#include "binders/Binder.h"
#include "controls/TabView.h"

namespace corvane::appkit {
class TabViewBinder;
}

@interface CorvaneTabViewDelegate : NSObject
CORVANE_TAB_VIEW_DELEGATE {
 @public
  corvane::appkit::TabViewBinder* binder_;
}
@end

namespace corvane::appkit {

class TabViewBinder final : public Binder {
 public:
  /// One page for each of the control's items.
  TabViewBinder(TabView& tabView, NSTabView* view, const std::vector<NSView*>& pages);
  ~TabViewBinder() override;

  /// For the toolkit: whether it may show this tab.
  [[nodiscard]] bool shouldSelect(int index);
  void didSelect();

  /// Called after another tab is shown.
  std::function<void()> onShown;

 private:
  void show() override;

  TabView& tabView_;
  NSTabView* widget_;
  CorvaneTabViewDelegate* delegate_;
  bool isSelecting_ = false;
};

}  // namespace corvane::appkit
