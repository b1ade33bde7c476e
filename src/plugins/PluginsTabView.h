// The controls of the Plugins tab, with their texts; those of the cells stand with the cells.
#pragma once

#include <string_view>

#include "controls/OutlineView.h"
#include "controls/TextField.h"

namespace corvane {

// The columns are told apart by the titles of their header cells.
inline constexpr std::string_view kEnabledColumn = "Enabled";
inline constexpr std::string_view kPluginColumn = "Plugin";

struct PluginsTabView {
  PluginsTabView();

  TextField pluginsLabel;
  OutlineView pluginsTable;
};

}  // namespace corvane
