#include "PluginRows.h"

#include <algorithm>

#include "ExitStatus.h"
#include "plugins/FileFolderList.h"
#include "plugins/PluginKeys.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

std::string stringIn(const OutlineItem& item, std::string_view key) {
  const std::string* text = item.object().asDictionary().string(key);
  return text != nullptr ? *text : std::string();
}

const std::string& textOfRow(const OutlineItem& item) {
  static const std::string none;
  const std::string* text = item.object().asString();
  return text != nullptr ? *text : none;
}

}  // namespace

PluginRows::PluginRows(Tree& tree) : tree_(tree), outline_(tree.pane().pluginsView().pluginsTable) {}

PluginOption PluginRows::optionOf(const OutlineItem& item) { return PluginTree::optionOfOptionRow(item); }

std::string PluginRows::titleOf(const OutlineItem& plugin) const {
  return stringIn(plugin, plugin_key::kName);
}

std::vector<PluginRows::Named> PluginRows::plugins() {
  std::vector<Named> rows;
  for (const OutlineItem& item : outline_.childrenOfItem({})) {
    rows.push_back({item, stringIn(item, plugin_key::kFileName)});
  }
  return rows;
}

std::vector<PluginRows::Named> PluginRows::options(const OutlineItem& plugin) {
  outline_.expandItem(plugin, true);  // only rows that can be seen take acts
  const auto items = outline_.childrenOfItem(plugin);
  std::vector<Named> rows;
  for (std::size_t index = 0; index < items.size(); ++index) {
    const std::string key = optionOf(items[index]).storageKey();
    const auto hasKey = [&](const OutlineItem& other) { return optionOf(other).storageKey() == key; };
    const bool isPlain = !key.empty() && !key.starts_with('#') && std::ranges::count_if(items, hasKey) == 1;
    rows.push_back({items[index], isPlain ? key : "#" + std::to_string(index + 1)});
  }
  return rows;
}

std::optional<PluginRows::Named> PluginRows::pluginNamed(const std::string& name) {
  std::vector<Named> titled;
  for (const Named& row : plugins()) {
    if (row.name == name) return row;
    if (titleOf(row.item) == name) titled.push_back(row);
  }
  if (titled.size() == 1) return titled.front();
  (void)tree_.complain(titled.empty()
                           ? formatText("there is no plug-in \"%@\"", {name})
                           : formatText("more than one plug-in is called \"%@\"; use its file name", {name}),
                       kRefused);
  return std::nullopt;
}

std::optional<PluginRows::Named> PluginRows::optionNamed(const Named& plugin, const std::string& name) {
  const std::vector<Named> all = options(plugin.item);
  std::vector<Named> titled;
  for (std::size_t index = 0; index < all.size(); ++index) {
    if (all[index].name == name || name == "#" + std::to_string(index + 1)) return all[index];
    if (optionOf(all[index].item).title() == name) titled.push_back(all[index]);
  }
  if (titled.size() == 1) return titled.front();
  (void)tree_.complain(
      formatText(titled.empty() ? "%@ has no option \"%@\""
                                : "%@ has more than one option \"%@\"; use its key or its number",
                 {plugin.name, name}),
      kRefused);
  return std::nullopt;
}

std::vector<OutlineItem> PluginRows::valueRows(const OutlineItem& option) {
  std::vector<OutlineItem> rows = outline_.childrenOfItem(option);
  std::erase_if(rows, [](const OutlineItem& row) { return !PluginTree::isItemSubOption(row); });
  return rows;
}

CellReference PluginRows::cell(const OutlineItem& item) { return outline_.preparedCell(column(), item).cell; }

CellReference PluginRows::bareCell(const OutlineItem& item) { return outline_.bareCell(column(), item); }

bool PluginRows::isEnabled(const OutlineItem& plugin) {
  const PreparedCell prepared = outline_.preparedCell(outline_.columns().front(), plugin);
  const auto* button = std::get_if<ButtonCell>(prepared.cell.get());
  return button != nullptr && button->on;
}

Json PluginRows::shownValue(const OutlineItem& item) {
  using Rows = SettingType::Rows;
  const PluginOption option = optionOf(item);
  const SettingType& type = option.settingType();
  if (option.isOfType(setting_type::kCheckbox)) return std::get<ButtonCell>(*cell(item)).on;
  const std::vector<OutlineItem> rows = valueRows(item);
  if (type.rows == Rows::Names) {
    Json states = Json::object();
    for (const OutlineItem& row : rows)
      if (option.checkboxes().contains(textOfRow(row)))
        states[textOfRow(row)] = std::get<ButtonCell>(*cell(row)).on;
    return states;
  }
  if (type.rows == Rows::Entries) {
    Json entries = Json::array();
    for (const OutlineItem& row : rows)
      if (!isAddEntry(textOfRow(row))) entries.push_back(textOfRow(row));
    return entries;
  }
  if (type.rows == Rows::None || rows.empty() || !type.showsValue) return {};
  const CellReference shown = cell(rows.front());
  if (const auto* number = std::get_if<ComboBoxCell>(shown.get())) {
    return number->text.empty() ? Json() : Json(intValue(number->text));
  }
  if (const auto* menu = std::get_if<PopUpButtonCell>(shown.get())) {
    return menu->selectedIndex < 0 ? Json()
                                   : Json(menu->items.at(static_cast<std::size_t>(menu->selectedIndex)));
  }
  if (const auto* picker = std::get_if<ButtonCell>(shown.get())) return picker->title.text;
  if (const auto* text = std::get_if<TextFieldCell>(shown.get())) return text->text;
  if (const auto* password = std::get_if<SecureTextFieldCell>(shown.get())) {
    return password->text.empty() ? "" : "********";
  }
  return {};
}

}  // namespace corvane::cli
