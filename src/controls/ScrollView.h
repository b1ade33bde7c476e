// The frame around a table that is longer than its place.
#pragma once

#include "controls/Control.h"

namespace corvane {

/// Whether the contents can be pulled beyond their end.
enum class ScrollElasticity { Automatic, None, Allowed };

class ScrollView final : public Control {
 public:
  [[nodiscard]] ScrollElasticity horizontalScrollElasticity() const { return horizontal_; }
  [[nodiscard]] ScrollElasticity verticalScrollElasticity() const { return vertical_; }
  void setHorizontalScrollElasticity(ScrollElasticity elasticity) { set(horizontal_, elasticity); }
  void setVerticalScrollElasticity(ScrollElasticity elasticity) { set(vertical_, elasticity); }

 private:
  void set(ScrollElasticity& elasticity, ScrollElasticity value) {
    if (value == elasticity) return;
    elasticity = value;
    didChange();
  }

  ScrollElasticity horizontal_ = ScrollElasticity::Automatic;
  ScrollElasticity vertical_ = ScrollElasticity::Automatic;
};

}  // namespace corvane
