#include "plugins/PluginOption.h"

#include <algorithm>

#include "plugins/PluginKeys.h"
#include "values/Text.h"

namespace corvane {
namespace {

const std::string& textIn(const Dictionary& dictionary, std::string_view key) {
  static const std::string none;
  const std::string* text = dictionary.string(key);
  return text != nullptr ? *text : none;
}

PropertyList textObjectIn(const Dictionary& dictionary, std::string_view key) {
  PropertyList object = dictionary.value(key);
  return object.asString() != nullptr ? object : PropertyList();
}

}  // namespace

const std::string& PluginOption::title() const { return textIn(dictionary_, plugin_key::kTitle); }

const std::string& PluginOption::hint() const { return textIn(dictionary_, plugin_key::kTitleHint); }

const std::string& PluginOption::type() const {
  return textIn(dictionary_.dictionary(plugin_key::kSettingType), plugin_key::kType);
}

bool PluginOption::isFileOrFolderList() const {
  return isOfType(setting_type::kFileArray) || isOfType(setting_type::kFolderArray);
}

const std::string& PluginOption::storageKey() const { return textIn(dictionary_, plugin_key::kStorageKey); }

std::string PluginOption::storagePath() const {
  return standardizingPath(textIn(dictionary_, plugin_key::kStoragePath));
}

PropertyList PluginOption::value() const {
  return dictionary_.dictionary(plugin_key::kSettingType).value(plugin_key::kValue);
}

PropertyList PluginOption::storageKeyObject() const {
  return textObjectIn(dictionary_, plugin_key::kStorageKey);
}

PropertyList PluginOption::detailsUrl() const { return textObjectIn(dictionary_, plugin_key::kDetailsUrl); }

Dictionary PluginOption::checkboxes() const { return dictionary_.dictionary(plugin_key::kCheckboxes); }

void PluginOption::setCheckboxes(const Dictionary& checkboxes) {
  dictionary_.set(plugin_key::kCheckboxes, checkboxes);
}

Array PluginOption::fileFolderArray() const { return dictionary_.array(plugin_key::kFileFolderArray); }

void PluginOption::setFileFolderArray(const Array& list) {
  dictionary_.set(plugin_key::kFileFolderArray, list);
}

Array textList(const PropertyList& value) {
  const Array list = value.asArray();
  const bool holdsOnlyTexts =
      std::ranges::all_of(list.elements(), [](const auto& element) { return element.asString() != nullptr; });
  return holdsOnlyTexts ? list : Array();
}

}  // namespace corvane
