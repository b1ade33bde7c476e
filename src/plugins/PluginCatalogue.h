// The plug-ins that the tab shows, found by walking the plug-ins folder, and which of them are disabled.
// Rebuilt whole on every refresh. The entries and their options are themselves the rows of the tab's outline.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "plugins/PluginStorage.h"
#include "values/PropertyList.h"

namespace corvane {

class PluginCatalogue {
 public:
  /// All must outlive the catalogue.
  PluginCatalogue(Platform& platform, const PathTable& paths, const PluginStorage& storage)
      : platform_(platform), paths_(paths), storage_(storage) {}

  /// Forgets everything and loads the plug-ins and the list of the disabled ones anew.
  void refresh();

  /// One entry per shown plug-in, sorted by "PluginName", case-sensitively; those without a name come first,
  /// equal ones stay in the order of the folder walk.
  [[nodiscard]] const std::vector<Dictionary>& plugins() const { return plugins_; }
  /// The name under which an entry of the catalogue is enabled and disabled: its file name with the extension
  /// "plugin". Nothing when the item is not an entry.
  [[nodiscard]] std::optional<std::string> blacklistName(const PropertyList& item) const;

  /// The disabled plug-ins. A name can stand in it more than once; enabling takes one of them away.
  [[nodiscard]] const std::vector<std::string>& blacklistPlugins() const { return blacklistPlugins_; }
  [[nodiscard]] bool isPluginBlacklisted(std::string_view name) const;
  /// Changes the list in memory and records the new state in the plug-in's settings file.
  void setPluginEnabled(const std::string& name, bool enabled);
  /// Writes "Plugin_Enabled" into the plug-in's settings file, which is never created.
  void saveBlacklistPluginWithEnabled(const std::string& name, bool enabled) const;

  /// Whether the plug-in's settings ask for the plug-in to be shown; no settings: no.
  [[nodiscard]] static bool pluginVisibleInPrefPane(const Dictionary& settings);

 private:
  struct FoundPlugin {
    std::string_view name;  // in the entry
    Dictionary entry;
    bool isDisabled = false;
  };

  /// The plug-ins that are shown, in their order. The settings of each, which tell whether it is shown and
  /// whether it is disabled, are read once.
  [[nodiscard]] std::vector<FoundPlugin> loadPlugins() const;
  void loadBlacklistPlugins(const std::vector<FoundPlugin>& found);
  void attachStoredLists(const Array& options) const;
  [[nodiscard]] std::string settingsFile(const std::string& pluginFileName) const;

  Platform& platform_;
  const PathTable& paths_;
  const PluginStorage& storage_;
  std::vector<Dictionary> plugins_;
  std::vector<std::string> blacklistPlugins_;
};

}  // namespace corvane
