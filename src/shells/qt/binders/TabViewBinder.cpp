#include "binders/TabViewBinder.h"

#include <QTabBar>

#include "Text.h"

namespace corvane::qt {

TabViewBinder::TabViewBinder(TabView& tabView, TabPane& widget)
    : Binder(tabView, widget), tabView_(tabView), widget_(widget) {
  for (const TabViewItem& item : tabView_.items()) widget_.addTab(toQString(item.label));
  connect(&widget_, &TabPane::tabChosen, this, [this](int index) {
    if (isInReach()) tabView_.selectTabViewItemAtIndex(index);
    refresh();
  });
  refresh();
}

QWidget& TabViewBinder::namedWidget() { return widget_.bar(); }

void TabViewBinder::show() { widget_.showTab(tabView_.indexOfSelectedItem()); }

}  // namespace corvane::qt
