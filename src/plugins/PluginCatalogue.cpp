#include "plugins/PluginCatalogue.h"

#include <algorithm>
#include <utility>

#include "pane/ClientKeys.h"
#include "plugins/PluginDefinition.h"
#include "plugins/PluginKeys.h"
#include "plugins/PluginOption.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

/// Whether the settings of a plug-in say that it is disabled; without a word about it, it is enabled.
bool isDisabledBy(const Dictionary& settings) {
  const PropertyList enabled = settings.value(client_key::kPluginEnabled);
  const bool isGiven = isNumber(enabled) || enabled.asString() != nullptr;
  return isGiven && !boolValue(enabled);
}

Dictionary makeEntry(const Dictionary& definition, const Array& options, const std::string& fileName) {
  Dictionary entry =
      Dictionary::make({{std::string(plugin_key::kProgramArguments), programArguments(definition)},
                        {std::string(plugin_key::kOptions), options},
                        {std::string(plugin_key::kFileName), PropertyList::string(fileName)}});
  const PropertyList name = definition.value(plugin_key::kName);
  if (name.asString() != nullptr) entry.set(plugin_key::kName, name);
  return entry;
}

std::string blacklistNameOf(const Dictionary& entry) {
  return formatText("%@.plugin", {*entry.string(plugin_key::kFileName)});
}

}  // namespace

std::string pluginSettingsFile(const PathTable& paths, std::string_view pluginFileName) {
  return formatText("%@/%@_settings.plist", {paths.pluginSupport, pluginFileName});
}

void PluginCatalogue::refresh() {
  const std::vector<FoundPlugin> found = loadPlugins();
  plugins_.clear();
  fileNames_.clear();
  for (const FoundPlugin& plugin : found) {
    plugins_.push_back(plugin.entry);
    fileNames_.insert(*plugin.entry.string(plugin_key::kFileName));
  }
  loadBlacklistPlugins(found);
  isOutOfDate_ = false;
}

std::vector<PluginCatalogue::FoundPlugin> PluginCatalogue::loadPlugins() const {
  std::vector<FoundPlugin> found;
  const auto walked = platform_.files.walk(paths_.plugins);
  for (const std::string& path : walked ? *walked : std::vector<std::string>()) {
    if (omissionByExtension(path)) continue;
    const Dictionary definition = storage_.readFile(appendingPathComponent(paths_.plugins, path));
    if (omissionOfDefinition(definition)) continue;
    const std::string fileName = deletingPathExtension(path);
    const Dictionary settings = storage_.readFile(pluginSettingsFile(paths_, fileName));
    if (!pluginVisibleInPrefPane(settings)) continue;
    const Array options = acceptedOptions(definition);
    attachStoredLists(options);
    const Dictionary entry = makeEntry(definition, options, fileName);
    const std::string* name = entry.string(plugin_key::kName);
    found.push_back({name != nullptr ? std::string_view(*name) : "", entry, isDisabledBy(settings)});
  }
  std::ranges::stable_sort(found, {}, &FoundPlugin::name);
  return found;
}

void PluginCatalogue::loadBlacklistPlugins(const std::vector<FoundPlugin>& found) {
  blacklistPlugins_.clear();
  for (const FoundPlugin& plugin : found) {
    if (plugin.isDisabled) blacklistPlugins_.push_back(blacklistNameOf(plugin.entry));
  }
}

void PluginCatalogue::attachStoredLists(const Array& options) const {
  for (const PropertyList& element : options.elements()) {
    PluginOption option(element.asDictionary());
    const SettingType::Rows rows = option.settingType().rows;
    if (rows == SettingType::Rows::Entries) option.setFileFolderArray(storedFileFolderArray(option));
    if (rows == SettingType::Rows::Names) option.setCheckboxes(storedCheckboxes(option));
  }
}

Dictionary PluginCatalogue::storedCheckboxes(const PluginOption& option) const {
  return storage_.read(option).dictionary(option.storageKey());
}

Array PluginCatalogue::storedFileFolderArray(const PluginOption& option) const {
  return storage_.read(option).array(option.storageKey());
}

Dictionary PluginCatalogue::checkboxesForEdit(const PluginOption& option) const {
  return isOutOfDate_ ? storedCheckboxes(option) : option.checkboxes();
}

Array PluginCatalogue::fileFolderArrayForEdit(const PluginOption& option) const {
  return isOutOfDate_ ? storedFileFolderArray(option) : option.fileFolderArray();
}

std::optional<std::string> PluginCatalogue::blacklistName(const PropertyList& item) const {
  const std::string* fileName = item.asDictionary().string(plugin_key::kFileName);
  if (fileName == nullptr || !fileNames_.contains(*fileName)) return std::nullopt;
  return blacklistNameOf(item.asDictionary());
}

bool PluginCatalogue::isPluginBlacklisted(std::string_view name) const {
  return std::ranges::find(blacklistPlugins_, name) != blacklistPlugins_.end();
}

void PluginCatalogue::setPluginEnabled(const std::string& name, bool enabled) {
  const auto listed = std::ranges::find(blacklistPlugins_, name);
  // No test for a name that is listed already, and only one is taken away: a plug-in that was disabled twice
  // shows as disabled until it was enabled twice or the tab is refreshed. This is intended.
  if (!enabled) {
    blacklistPlugins_.push_back(name);
  } else if (listed != blacklistPlugins_.end()) {
    blacklistPlugins_.erase(listed);
  }
  saveBlacklistPluginWithEnabled(name, enabled);
}

void PluginCatalogue::saveBlacklistPluginWithEnabled(const std::string& name, bool enabled) const {
  const std::string file = pluginSettingsFile(paths_, deletingPathExtension(name));
  Dictionary settings = storage_.readFile(file);
  if (!settings) return;
  settings.set(client_key::kPluginEnabled, PropertyList::boolean(enabled));
  storage_.writeFile(file, settings);
}

bool PluginCatalogue::pluginVisibleInPrefPane(const Dictionary& settings) {
  return !omissionBySettings(settings);
}

}  // namespace corvane
