#include "plugins/PluginRowHeights.h"

#include <cmath>

#include "plugins/PluginKeys.h"
#include "plugins/PluginTitles.h"

namespace corvane {
namespace {

double optionRowHeight(const PluginOption& option, Workspace& workspace, double standardRowHeight) {
  const double width = option.hint().empty() ? 0 : std::trunc(workspace.textWidth(option.hint(), kHintFont));
  const int wrapWidth = option.isOfType(setting_type::kCheckbox) ? kHintWrapWidthOfCheckbox : kHintWrapWidth;
  if (width >= wrapWidth) return 3 * standardRowHeight;
  return width > 0 ? 2 * standardRowHeight : standardRowHeight;
}

}  // namespace

double pluginRowHeight(const PluginTree& tree, Workspace& workspace, double standardRowHeight,
                       const OutlineItem& item) {
  using namespace setting_type;
  if (const PluginOption option = PluginTree::optionOfOptionRow(item)) {
    return optionRowHeight(option, workspace, standardRowHeight);
  }
  const PluginOption option = tree.optionOfValueRow(item);
  const bool isBordered =
      option.isOfType(kPopUpMenu) || option.isOfType(kPluginValidation) || option.isOfType(kNumberPicker);
  return isBordered ? 1.5 * standardRowHeight : standardRowHeight;
}

}  // namespace corvane
