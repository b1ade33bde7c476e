#include "plugins/PluginValues.h"

#include "plugins/PluginKeys.h"
#include "plugins/PluginTitles.h"
#include "plugins/PluginsTabView.h"
#include "values/Conversions.h"

namespace corvane {

ObjectValue PluginValues::objectValue(const TableColumn& column, const OutlineItem& item) const {
  if (column.title == kEnabledColumn) return enabledState(item);
  if (column.title != kPluginColumn) return {};
  if (PluginTree::isPlugin(item)) return pluginTitle(item.object().asDictionary());
  if (const PluginOption option = tree_.optionOfValueRow(item)) return storedValue(option, item);
  const PluginOption option = PluginTree::optionOfOptionRow(item);
  if (!option) return {};
  if (option.isOfType(setting_type::kCheckbox)) return checkboxState(option);
  return optionTitle(option);
}

ObjectValue PluginValues::enabledState(const OutlineItem& item) const {
  if (!PluginTree::isPlugin(item)) return {};
  const auto name = catalogue_.blacklistName(item.object());
  if (!name) return {};
  return PropertyList::boolean(!catalogue_.isPluginBlacklisted(*name));
}

ObjectValue PluginValues::storedValue(const PluginOption& option, const OutlineItem& item) const {
  if (!option.settingType().showsValue) return {};
  const Dictionary contents = storage_.readForDisplay(option);
  const std::string* key = item.object().asString();
  if (!contents || key == nullptr) return {};
  if (option.isOfType(setting_type::kCheckboxes))
    return PropertyList::boolean(boolValue(option.checkboxes().value(*key)));
  const PropertyList stored = contents.value(*key);
  return stored ? ObjectValue(stored) : ObjectValue();
}

ObjectValue PluginValues::checkboxState(const PluginOption& option) const {
  const Dictionary contents = storage_.read(option);
  if (!contents) return {};
  // Not inverted for a "Negative" check box although its edits are: the box shows what is stored, not what
  // was clicked. This is intended.
  return PropertyList::boolean(boolValue(contents.value(option.storageKey())));
}

void PluginValues::setObjectValue(OutlineView& outline, const PropertyList& value, const TableColumn& column,
                                  const OutlineItem& item) {
  AfterEdit after = AfterEdit::Reload;
  if (!storage_.mayEdit() || !value) {
    // Nothing to store: the row shows again what is stored.
  } else if (column.title == kEnabledColumn) {
    after = setEnabled(value, item);
  } else if (column.title == kPluginColumn) {
    if (const PluginOption option = tree_.optionOfValueRow(item)) {
      after = setValue(option, value, item);
    } else if (PluginTree::isItemPluginOptionOfType(item, setting_type::kCheckbox)) {
      after = setCheckbox(PluginTree::optionOfOptionRow(item), boolValue(value));
    }
  }
  if (after == AfterEdit::Reload) outline.reloadItem(item);
}

PluginValues::AfterEdit PluginValues::setEnabled(const PropertyList& value, const OutlineItem& item) {
  if (!PluginTree::isPlugin(item)) return AfterEdit::Nothing;
  const auto name = catalogue_.blacklistName(item.object());
  if (!name) return AfterEdit::Nothing;
  catalogue_.setPluginEnabled(*name, boolValue(value));
  return AfterEdit::Reload;
}

PluginValues::AfterEdit PluginValues::setValue(const PluginOption& option, const PropertyList& value,
                                               const OutlineItem& item) const {
  const std::string* key = item.object().asString();
  const SettingType::Edit edit = option.settingType().edit;
  if (key == nullptr || edit == SettingType::Edit::ByButton) return AfterEdit::Nothing;
  if (edit == SettingType::Edit::InSet) return setCheckboxOfSet(option, *key, boolValue(value));
  Dictionary contents = storage_.readForEdit(option);
  if (!contents) return AfterEdit::Nothing;
  if (edit == SettingType::Edit::Integer) contents.set(*key, PropertyList::integer(intValue(value)));
  if (edit == SettingType::Edit::AsItIs) contents.set(*key, value);
  storage_.write(option, contents);
  return AfterEdit::Reload;
}

PluginValues::AfterEdit PluginValues::setCheckboxOfSet(const PluginOption& option, const std::string& name,
                                                       bool state) const {
  const Dictionary set = catalogue_.checkboxesForEdit(option);
  // A link whose address does not begin like one is a value row as well, but it is no name: to store its
  // state would put it into the set, or a set into the place of whatever else the file holds under the key.
  if (!set.contains(name)) return AfterEdit::Nothing;
  Dictionary contents = storage_.readForEdit(option);
  if (!contents) return AfterEdit::Nothing;
  Dictionary changed = set.shallowCopy();
  changed.set(name, PropertyList::boolean(state));
  contents.set(option.storageKey(), changed);
  storage_.write(option, contents);
  // The row shows the new state without another loading.
  option.checkboxes().set(name, PropertyList::boolean(state));
  return AfterEdit::Reload;
}

PluginValues::AfterEdit PluginValues::setCheckbox(const PluginOption& option, bool state) const {
  Dictionary contents = storage_.readForEdit(option);
  if (!contents) return AfterEdit::Nothing;
  const PropertyList parameter = option.value();
  const std::string* sense = parameter.asString();
  if (sense == nullptr || (*sense != checkbox_value::kPositive && *sense != checkbox_value::kNegative)) {
    log_.write("You should not be here.  Value is neither Postive or Negative for a checkbox");
    return AfterEdit::Nothing;
  }
  const bool stored = *sense == checkbox_value::kPositive ? state : !state;
  contents.set(option.storageKey(), PropertyList::boolean(stored));
  storage_.write(option, contents);
  return AfterEdit::Reload;
}

bool PluginValues::shouldEdit(const TableColumn& column, const OutlineItem& item) const {
  if (column.title == kEnabledColumn) return PluginTree::isPlugin(item);
  return column.title == kPluginColumn && PluginTree::isItemSubOption(item);
}

}  // namespace corvane
