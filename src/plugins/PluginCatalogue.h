// The plug-ins that the tab shows, found by walking the plug-ins folder, and which of them are disabled.
// Rebuilt whole on every refresh. The entries and their options are themselves the rows of the tab's outline,
// so that it is refreshed only together with these.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "plugins/PluginStorage.h"
#include "values/PropertyList.h"

namespace corvane {

/// Where a plug-in's own settings are: whether it is shown and whether it is enabled.
[[nodiscard]] std::string pluginSettingsFile(const PathTable& paths, std::string_view pluginFileName);

class PluginCatalogue {
 public:
  /// All must outlive the catalogue.
  PluginCatalogue(Platform& platform, const PathTable& paths, const PluginStorage& storage)
      : platform_(platform), paths_(paths), storage_(storage) {}

  /// Forgets everything and loads the plug-ins and the list of the disabled ones anew.
  void refresh();
  /// A refresh is wanted that the rows do not allow now: what was loaded stays, and is known to be old.
  void setOutOfDate() { isOutOfDate_ = true; }
  [[nodiscard]] bool isOutOfDate() const { return isOutOfDate_; }

  /// One entry per shown plug-in, sorted by "PluginName", case-sensitively; those without a name come first,
  /// equal ones stay in the order of the folder walk.
  [[nodiscard]] const std::vector<Dictionary>& plugins() const { return plugins_; }
  /// The name under which an entry of the catalogue is enabled and disabled: its file name with the extension
  /// "plugin". Nothing when no entry has the item's file name.
  [[nodiscard]] std::optional<std::string> blacklistName(const PropertyList& item) const;

  // What an edit of the option starts from: the set or the list that was loaded, or, where that is known to
  // be old, what is stored now, as a refresh would have loaded it. Nothing when there is none.
  [[nodiscard]] Dictionary checkboxesForEdit(const PluginOption& option) const;
  [[nodiscard]] Array fileFolderArrayForEdit(const PluginOption& option) const;

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
  [[nodiscard]] Dictionary storedCheckboxes(const PluginOption& option) const;
  [[nodiscard]] Array storedFileFolderArray(const PluginOption& option) const;

  Platform& platform_;
  const PathTable& paths_;
  const PluginStorage& storage_;
  std::vector<Dictionary> plugins_;
  std::unordered_set<std::string> fileNames_;  // of the plug-ins
  std::vector<std::string> blacklistPlugins_;
  bool isOutOfDate_ = false;
};

}  // namespace corvane
