#include "plugins/PluginDefinition.h"

#include <algorithm>

#include "plugins/PluginKeys.h"

namespace corvane {

bool pluginHasRequiredKeys(const Dictionary& option) {
  return option.string(plugin_key::kStorageKey) != nullptr &&
         option.string(plugin_key::kStoragePath) != nullptr && option.string(plugin_key::kTitle) != nullptr &&
         option.dictionary(plugin_key::kSettingType).string(plugin_key::kType) != nullptr;
}

bool pluginIsValidType(std::string_view type) {
  return std::ranges::find(setting_type::kAll, type) != setting_type::kAll.end();
}

Array acceptedOptions(const Dictionary& definition) {
  Array accepted = Array::make();
  for (const PropertyList& element : definition.array(plugin_key::kOptions).elements()) {
    Dictionary option = element.asDictionary();
    if (!pluginHasRequiredKeys(option) || !pluginIsValidType(PluginOption(option).type())) continue;
    option.remove(plugin_key::kCheckboxes);
    option.remove(plugin_key::kFileFolderArray);
    accepted.append(option);
  }
  return accepted;
}

Array programArguments(const Dictionary& definition) {
  const Array arguments = textList(definition.value(plugin_key::kProgramArguments));
  return arguments ? arguments : Array::make();
}

}  // namespace corvane
