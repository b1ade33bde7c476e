// The tab view. Its delegate may refuse a tab: then the bar goes back to the selected one, and the page
// behind has not moved at all.
#pragma once

#include "binders/Binder.h"
#include "controls/TabView.h"
#include "widgets/TabPane.h"

namespace corvane::qt {

class TabViewBinder final : public Binder {
  Q_OBJECT

 public:
  TabViewBinder(TabView& tabView, TabPane& widget);

 private:
  void show() override;
  [[nodiscard]] QWidget& namedWidget() override;

  TabView& tabView_;
  TabPane& widget_;
};

}  // namespace corvane::qt
