#include "plugins/PluginRowHeights.h"

#include <cmath>
#include <string>

#include "plugins/PluginKeys.h"
#include "plugins/PluginTitles.h"

namespace corvane {
namespace {

double optionRowHeight(const PluginOption& option, Workspace& workspace, double standardRowHeight) {
  const std::string& hint = option.hint();
  const double width = hint.empty() ? 0 : std::trunc(workspace.textWidth(hint, kHintFont));
  const int wrapWidth = option.isOfType(setting_type::kCheckbox) ? kHintWrapWidthOfCheckbox : kHintWrapWidth;
  if (width >= wrapWidth) return 3 * standardRowHeight;
  return width > 0 ? 2 * standardRowHeight : standardRowHeight;
}

}  // namespace

double pluginRowHeight(const PluginTree& tree, Workspace& workspace, double standardRowHeight,
                       const OutlineItem& item) {
  if (const PluginOption option = PluginTree::optionOfOptionRow(item)) {
    return optionRowHeight(option, workspace, standardRowHeight);
  }
  const bool isBordered = tree.optionOfValueRow(item).settingType().isBordered;
  return isBordered ? 1.5 * standardRowHeight : standardRowHeight;
}

}  // namespace corvane
