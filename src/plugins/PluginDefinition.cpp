#include "plugins/PluginDefinition.h"

#include <algorithm>

#include "plugins/PluginKeys.h"

namespace corvane {

bool pluginHasRequiredKeys(const Dictionary& option) {
  return option.contains(plugin_key::kStorageKey) && option.contains(plugin_key::kStoragePath) &&
         option.contains(plugin_key::kTitle) &&
         option.dictionary(plugin_key::kSettingType).contains(plugin_key::kType);
}

bool pluginIsValidType(std::string_view type) { return &setting_type::named(type) != &setting_type::kNone; }

Array acceptedOptions(const Dictionary& definition) {
  Array accepted = Array::make();
  for (const PropertyList& element : definition.array(plugin_key::kOptions).elements()) {
    Dictionary option = element.asDictionary();
    if (!pluginHasRequiredKeys(option) || !pluginIsValidType(PluginOption(option).type())) continue;
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
