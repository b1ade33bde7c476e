#include "plugins/PluginTree.h"

#include "plugins/PluginKeys.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

// What a row is; the outline keeps it with the row.
enum RowKind : int { kOtherRow, kPluginRow, kOptionRow, kValueRow, kLinkRow };

bool isAddress(const PropertyList& object) {
  const std::string* text = object.asString();
  return text != nullptr && hasPrefixIgnoringCase(*text, kAddressPrefix);
}

int count(std::size_t size) { return static_cast<int>(size); }

/// How many rows of its value an option has.
std::size_t numberOfValueRows(const PluginOption& option) {
  switch (option.settingType().rows) {
    case SettingType::Rows::None:
      return 0;
    case SettingType::Rows::One:
      return 1;
    case SettingType::Rows::Names:
      return option.checkboxes().size();
    case SettingType::Rows::Entries:
      return option.fileFolderRows().size();
  }
  return 0;
}

/// The row of the value at the index; nothing past the end of a set or list.
PropertyList valueRow(const PluginOption& option, std::size_t index) {
  const SettingType::Rows rows = option.settingType().rows;
  if (rows == SettingType::Rows::One) return option.storageKeyObject();
  if (rows == SettingType::Rows::Entries) return option.fileFolderRows().at(index);
  const Dictionary checkboxes = option.checkboxes();  // its keys come in a fixed order
  return index < checkboxes.size() ? PropertyList::string(checkboxes.entries()[index].first) : PropertyList();
}

PropertyList childOfOption(const PluginOption& option, std::size_t index) {
  PropertyList link = option.detailsUrl();
  const SettingType::Rows rows = option.settingType().rows;
  if (rows == SettingType::Rows::None) return link;
  // A single value's link is looked for behind as many rows as the option's dictionary has keys, which is
  // never reached: the row of the link repeats the value. This is intended.
  const std::size_t placeOfLink =
      rows == SettingType::Rows::One ? option.dictionary().size() : numberOfValueRows(option);
  return link && index == placeOfLink ? link : valueRow(option, index);
}

}  // namespace

int PluginTree::noChildren(const PropertyList& object) const {
  log_.write(formatText("Returning 0 children for %@", {description(object)}));
  return 0;
}

int PluginTree::numberOfChildrenOfItem(const OutlineItem& item) const {
  if (!item) return count(catalogue_.plugins().size());
  const PropertyList& object = item.object();
  if (const Array array = object.asArray()) return count(array.size());
  const Dictionary dictionary = object.asDictionary();
  if (!dictionary) return noChildren(object);
  if (const PluginOption option = optionOfOptionRow(item)) {
    return count(numberOfValueRows(option) + (option.detailsUrl() ? 1 : 0));
  }
  if (const Array options = dictionary.array(plugin_key::kOptions)) return count(options.size());
  // An option that the outline has not placed yet.
  if (const Dictionary type = dictionary.dictionary(plugin_key::kSettingType)) return count(type.size());
  return noChildren(object);
}

bool PluginTree::isItemExpandable(const OutlineItem& item) const {
  const Dictionary dictionary = item.object().asDictionary();
  if (!dictionary) return false;
  if (dictionary.array(plugin_key::kOptions)) return true;
  const PluginOption option = optionOfOptionRow(item);
  if (!option) return false;
  return option.settingType().rows != SettingType::Rows::None || option.detailsUrl();
}

PropertyList PluginTree::childOfItem(int index, const OutlineItem& item) const {
  if (index < 0) return {};
  const auto place = static_cast<std::size_t>(index);
  if (!item) {
    const auto& plugins = catalogue_.plugins();
    return place < plugins.size() ? PropertyList(plugins[place]) : PropertyList();
  }
  if (const Array array = item.object().asArray()) return array.at(place);
  const Dictionary dictionary = item.object().asDictionary();
  if (!dictionary) return {};
  if (const PluginOption option = optionOfOptionRow(item)) return childOfOption(option, place);
  if (const Array options = dictionary.array(plugin_key::kOptions)) return options.at(place);
  const Dictionary type = dictionary.dictionary(plugin_key::kSettingType);
  return place < type.size() ? type.entries()[place].second : PropertyList();
}

int PluginTree::kindOfChild(const PropertyList& child, const OutlineItem& parent) {
  if (!parent) return kPluginRow;
  const bool isOption = parent.kind() == kPluginRow && parent.object().asDictionary() &&
                        child.asDictionary().contains(plugin_key::kSettingType);
  if (isOption) return kOptionRow;
  if (parent.kind() != kOptionRow) return kOtherRow;
  return isAddress(child) ? kLinkRow : kValueRow;
}

std::string PluginTree::persistentNameForItem(const OutlineItem& item) {
  const Dictionary dictionary = item.object().asDictionary();
  const std::string* name = isPlugin(item)             ? dictionary.string(plugin_key::kFileName)
                            : isItemPluginOption(item) ? dictionary.string(plugin_key::kTitle)
                                                       : item.object().asString();
  return name != nullptr ? *name : std::string();
}

bool PluginTree::isPlugin(const OutlineItem& item) { return item.kind() == kPluginRow; }

bool PluginTree::isItemPluginOption(const OutlineItem& item) { return item.kind() == kOptionRow; }

bool PluginTree::isItemPluginOptionOfType(const OutlineItem& item, std::string_view type) {
  return optionOfOptionRow(item).isOfType(type);
}

bool PluginTree::isItemSubOption(const OutlineItem& item) { return item.kind() == kValueRow; }

bool PluginTree::isItemSubOptionOfType(const OutlineItem& item, std::string_view type) const {
  return optionOfValueRow(item).isOfType(type);
}

bool PluginTree::isItemURL(const OutlineItem& item) { return isAddress(item.object()); }

PluginOption PluginTree::optionOfOptionRow(const OutlineItem& item) {
  return isItemPluginOption(item) ? PluginOption(item.object().asDictionary()) : PluginOption();
}

PluginOption PluginTree::optionOfValueRow(const OutlineItem& item) const {
  return isItemSubOption(item) ? PluginOption(parentOf(item).object().asDictionary()) : PluginOption();
}

PluginOption PluginTree::optionAboveSelectedRow(const OutlineView& outline) const {
  return PluginOption(parentOf(outline.itemAtRow(outline.selectedRow())).object().asDictionary());
}

}  // namespace corvane
