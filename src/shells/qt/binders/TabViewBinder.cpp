#include "binders/TabViewBinder.h"

#include <QTabBar>

#include "Text.h"

namespace corvane::qt {

TabViewBinder::TabViewBinder(TabView& tabView, TabPane& widget)
    : Binder(tabView, widget), tabView_(tabView), widget_(widget) {
  for (const TabViewItem& item : tabView_.items()) widget_.addTab(toQString(item.label));
  connect(&widget_, &TabPane::tabChosen, this, [this](int index) {
    tabView_.selectTabViewItemAtIndex(index);
    refresh();
  });
  refresh();
}

void TabViewBinder::show() {
  widget_.bar().setAccessibleName(toQString(tabView_.accessibleName()));
  widget_.setAccessibleName(QString());  // the bar has the name
  widget_.showTab(tabView_.indexOfSelectedItem());
}

}  // namespace corvane::qt
