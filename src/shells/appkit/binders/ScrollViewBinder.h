// The frame around a table: where it stands, and whether its contents can be pulled beyond their end.
#pragma once

#include "binders/Binder.h"
#include "controls/ScrollView.h"

namespace corvane::appkit {

class ScrollViewBinder final : public Binder {
 public:
  ScrollViewBinder(ScrollView& scrollView, NSScrollView* view);

 private:
  void show() override;

  ScrollView& scrollView_;
  NSScrollView* widget_;
};

}  // namespace corvane::appkit
