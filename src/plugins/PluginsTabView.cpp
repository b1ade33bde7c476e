#include "plugins/PluginsTabView.h"

#include <string>

namespace corvane {
namespace {

OutlineView::Column column(std::string_view title, double width, bool checkBox) {
  OutlineView::Column result;
  result.identifier = title;
  result.title = title;
  result.width = width;
  result.checkBox = checkBox;
  return result;
}

}  // namespace

PluginsTabView::PluginsTabView()
    : pluginsLabel(TextField::Role::Label, "Plugins of the monitoring client and their settings:"),
      pluginsTable({column(kEnabledColumn, 56, true), column(kPluginColumn, 520, false)}) {
  pluginsTable.setAccessibleName("Plugins and their settings");
  pluginsTable.setPlaceholder("No plugins are installed.");
}

}  // namespace corvane
