// How high the rows of the outline are.
#pragma once

#include "controls/OutlineView.h"
#include "platform/Workspace.h"
#include "plugins/PluginTree.h"

namespace corvane {

/// Widths in points from which on a hint takes a second line of its own.
inline constexpr int kHintWrapWidthOfCheckbox = 458;
inline constexpr int kHintWrapWidth = 474;

/// In points: an option has one line for its title, one for its hint and one more for a long hint; value rows
/// with a bordered control are half a row higher than the others.
[[nodiscard]] double pluginRowHeight(const PluginTree& tree, Workspace& workspace, double standardRowHeight,
                                     const OutlineItem& item);

}  // namespace corvane
