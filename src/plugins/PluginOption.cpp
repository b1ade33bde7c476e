#include "plugins/PluginOption.h"

#include <vector>

#include "plugins/PluginKeys.h"
#include "values/Conversions.h"

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

std::string PluginOption::title() const {
  const PropertyList title = dictionary_.value(plugin_key::kTitle);
  return title ? description(title) : std::string();
}

const std::string& PluginOption::hint() const { return textIn(dictionary_, plugin_key::kTitleHint); }

const std::string& PluginOption::type() const {
  return textIn(dictionary_.dictionary(plugin_key::kSettingType), plugin_key::kType);
}

const std::string& PluginOption::storageKey() const { return textIn(dictionary_, plugin_key::kStorageKey); }

const std::string& PluginOption::storagePath() const { return textIn(dictionary_, plugin_key::kStoragePath); }

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
  std::vector<PropertyList> texts = list.elements();
  std::erase_if(texts, [](const PropertyList& element) { return element.asString() == nullptr; });
  const bool areAll = texts.size() == list.size();
  dictionary_.set(plugin_key::kFileFolderRows,
                  areAll ? PropertyList() : Array::fromElements(std::move(texts)));
}

Array PluginOption::fileFolderRows() const {
  const Array rows = dictionary_.array(plugin_key::kFileFolderRows);
  return rows ? rows : fileFolderArray();
}

}  // namespace corvane
