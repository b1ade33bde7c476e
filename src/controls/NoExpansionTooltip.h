// Keeps the toolkit from showing the full text of a truncated cell in a tooltip of its own: for a shell whose
// toolkit asks every text cell where to show it. Over a truncated volume name the only tooltip is therefore
// the one that the table's data source gives.
#pragma once

#include "controls/Control.h"

namespace corvane {

/// The frame in which the whole text of a cell would be shown over it: always empty, whatever the cell's
/// frame and view, which means no such tooltip.
[[nodiscard]] inline Rect expansionFrameWithFrameInView(const Rect& /*frame*/, const Control& /*view*/) {
  return {};
}

}  // namespace corvane
