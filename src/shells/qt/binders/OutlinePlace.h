// Where the user is in an outline, in terms that outlive a reload which makes all rows anew: the names of the
// row and of those above it, and their places among their siblings.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "controls/OutlineView.h"

namespace corvane::qt {

class OutlinePlace {
 public:
  /// The place of the row now; the empty item stands nowhere.
  OutlinePlace(OutlineView& outline, const OutlineItem& item);

  /// The row that stands there now. Where it has gone: the one that has moved up to its place, or the lowest
  /// one that is left of those above it. Empty when that can't be seen, or there is none.
  [[nodiscard]] OutlineItem visibleRow(OutlineView& outline) const;

 private:
  struct Step {
    std::string name;  // empty: the row has none
    std::size_t index = 0;
  };
  [[nodiscard]] static OutlineItem childAt(OutlineView& outline, const OutlineItem& parent, const Step& step);

  OutlineItem item_;
  std::vector<Step> steps_;  // from the top
};

}  // namespace corvane::qt
