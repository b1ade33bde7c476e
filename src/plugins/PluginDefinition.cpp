#include "plugins/PluginDefinition.h"

#include <algorithm>
#include <string>

#include "plugins/PluginKeys.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kDefinitionExtension = "plist";
constexpr std::string_view kTypePath = "SettingType.Type";
constexpr std::string_view kDictionary = "a dictionary";
constexpr std::string_view kText = "a text";

std::string_view oneOfTheTypes() {
  static const std::string all = [] {
    std::string names;
    for (const std::string_view name : setting_type::kAll) {
      names += names.empty() ? "one of " : ", ";
      names += name;
    }
    return names;
  }();
  return all;
}

/// Whatever stands under the keys, as long as something does.
Omission missingKeyOf(const Dictionary& option) {
  for (const auto& key : {plugin_key::kStorageKey, plugin_key::kStoragePath, plugin_key::kTitle}) {
    if (!option.contains(key)) return {key, kText};
  }
  const Dictionary type = option.dictionary(plugin_key::kSettingType);
  if (!type) return {plugin_key::kSettingType, kDictionary};
  if (!type.contains(plugin_key::kType)) return {kTypePath, oneOfTheTypes()};
  return {};
}

}  // namespace

Omission omissionByExtension(std::string_view path) {
  return pathExtension(path) == kDefinitionExtension ? Omission() : Omission{{}, "the extension \"plist\""};
}

Omission omissionOfDefinition(const PropertyList& contents) {
  const Dictionary definition = contents.asDictionary();
  if (!definition) return {{}, "a property list that is a dictionary"};
  const Array options = definition.array(plugin_key::kOptions);
  if (options.empty()) return {plugin_key::kOptions, "an array of at least one option"};
  const auto isAccepted = [](const PropertyList& element) { return !omissionOfOption(element); };
  if (std::ranges::any_of(options.elements(), isAccepted)) return {};
  return {plugin_key::kOptions, "at least one option that is shown"};
}

Omission omissionOfOption(const PropertyList& element) {
  const Dictionary option = element.asDictionary();
  if (!option) return {{}, kDictionary};
  if (const Omission missing = missingKeyOf(option)) return missing;
  return pluginIsValidType(PluginOption(option).type()) ? Omission() : Omission{kTypePath, oneOfTheTypes()};
}

Omission omissionBySettings(const Dictionary& settings) {
  if (!settings) return {{}, "a settings file that is a dictionary"};
  return boolValue(settings.value(plugin_key::kVisible)) ? Omission()
                                                         : Omission{plugin_key::kVisible, "true"};
}

bool pluginHasRequiredKeys(const Dictionary& option) { return !missingKeyOf(option); }

bool pluginIsValidType(std::string_view type) { return &setting_type::named(type) != &setting_type::kNone; }

Array acceptedOptions(const Dictionary& definition) {
  Array accepted = Array::make();
  for (const PropertyList& element : definition.array(plugin_key::kOptions).elements()) {
    if (omissionOfOption(element)) continue;
    Dictionary option = element.asDictionary();
    option.remove(plugin_key::kCheckboxes);
    option.remove(plugin_key::kFileFolderArray);
    option.remove(plugin_key::kFileFolderRows);
    accepted.append(option);
  }
  return accepted;
}

Array programArguments(const Dictionary& definition) {
  const Array arguments = definition.array(plugin_key::kProgramArguments);
  const auto isText = [](const PropertyList& argument) { return argument.asString() != nullptr; };
  return arguments && std::ranges::all_of(arguments.elements(), isText) ? arguments : Array::make();
}

}  // namespace corvane
