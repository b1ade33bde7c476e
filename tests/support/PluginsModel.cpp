#include "support/PluginsModel.h"

#include <algorithm>

#include "values/Conversions.h"

namespace corvane::test {

const std::vector<ModelOption>& PluginsModel::optionsOf(const std::string& plugin) const {
  return std::ranges::find(plugins_, plugin, &ModelPlugin::name)->options;
}

Dictionary PluginsModel::file(const std::string& path) const {
  const auto found = files.find(path);
  return found != files.end() ? found->second : Dictionary();
}

bool PluginsModel::isHeld() const { return holds > 0 || std::ranges::count(sheets, true) > 0; }

bool PluginsModel::isDisabled(const std::string& plugin) const {
  return std::ranges::find(disabled, plugin) != disabled.end();
}

std::vector<std::string> PluginsModel::valueRows(const std::string& plugin, int index) const {
  const ModelOption& option = optionsOf(plugin)[static_cast<std::size_t>(index)];
  const PropertyList& list = loaded.at({plugin, index});
  if (option.type == "Checkboxes") return list.asDictionary().keys();
  std::vector<std::string> rows;
  if (option.isList()) {
    for (const PropertyList& entry : list.asArray().elements()) rows.push_back(*entry.asString());
  } else if (option.type != "Checkbox") {
    rows.push_back(option.key);
  }
  return rows;
}

PropertyList PluginsModel::shownValue(const ModelRow& row) const {
  const ModelOption& option = optionOf(row);
  const Dictionary contents = file(option.path);
  if (!contents) return {};
  if (row.value && isRoots(option.path) && !(unlocked && rootReads)) return {};
  if (option.type == "Checkbox")
    return row.value ? PropertyList() : flag(boolValue(contents.value(option.key)));
  if (!row.value) return {};
  if (option.type != "Checkboxes") return contents.value(*row.value);
  return flag(boolValue(loaded.at({row.plugin, row.option}).asDictionary().value(*row.value)));
}

void PluginsModel::refresh() {
  refreshIsDue = isHeld();
  if (refreshIsDue) return;
  shown.clear();
  disabled.clear();
  loaded.clear();
  selected.reset();
  for (const auto& [plugin, all] : plugins_) {
    const Dictionary settings = file(settingsOf(plugin));
    if (settings.value("PrefPaneVisibility") != flag(true)) continue;
    shown.push_back(plugin);
    if (settings.value("Plugin_Enabled") == flag(false)) disabled.push_back(plugin);
    for (int i = 0; i < static_cast<int>(all.size()); ++i)
      loaded[{plugin, i}] = storedListOf(all[i]).deepCopy();
  }
}

void PluginsModel::toggleEnabled(const std::string& plugin) {
  if (!unlocked) return;
  selected = ModelRow{plugin};
  const auto listed = std::ranges::find(disabled, plugin);
  const bool enables = listed != disabled.end();
  if (enables) {
    disabled.erase(listed);
  } else {
    disabled.push_back(plugin);
  }
  if (const Dictionary settings = file(settingsOf(plugin))) {
    write(settingsOf(plugin), "Plugin_Enabled", flag(enables));
  }
}

void PluginsModel::toggleCheckbox(const ModelRow& row) {
  if (!unlocked) return;
  selected = row;
  const ModelOption& option = optionOf(row);
  const bool clicked = !boolValue(shownValue(row));
  const bool isPositive = option.value == text("Positive");
  write(option.path, option.key, flag(isPositive ? clicked : !clicked));
}

void PluginsModel::toggleName(const ModelRow& row) {
  if (!unlocked) return;
  const bool state = !boolValue(shownValue(row));
  selected = row;
  const ModelOption& option = optionOf(row);
  Dictionary own = loaded.at({row.plugin, row.option}).asDictionary();
  Dictionary set = (refreshIsDue ? file(option.path).dictionary(option.key) : own).deepCopy().asDictionary();
  if (!set.contains(*row.value)) return;
  set.set(*row.value, flag(state));
  if (!write(option.path, option.key, set)) return;
  own.set(*row.value, flag(state));
}

void PluginsModel::store(const ModelRow& row, const PropertyList& value) {
  if (!unlocked) return;
  const ModelOption& option = optionOf(row);
  write(option.path, option.key, value);
}

void PluginsModel::choosePath(const ModelRow& row, const std::string& path) {
  if (!unlocked) return;
  selected = row;
  store(row, text(path));
}

void PluginsModel::addPath(const ModelRow& row, const std::string& path) {
  if (!unlocked) return;
  selected = row;
  const ModelOption& option = optionOf(row);
  if (!mayWrite(option.path)) return;
  const bool fromFile = option.type == "FolderArray" || refreshIsDue;
  Array list =
      (fromFile ? file(option.path).array(option.key) : loaded.at({row.plugin, row.option}).asArray())
          .deepCopy()
          .asArray();
  if (!list) return;
  if (list.contains(text(path))) {
    sheets.push_back(false);
    return;
  }
  list.append(text(path));
  std::vector<std::string> entries;
  for (const PropertyList& entry : list.elements()) entries.push_back(*entry.asString());
  const auto add = std::ranges::find(entries, "Add a new entry");
  if (add != entries.end()) entries.erase(add);
  std::ranges::stable_sort(entries);  // the texts of the sessions differ by more than their case
  list = Array::make({text("Add a new entry")});
  for (const std::string& entry : entries) list.append(text(entry));
  write(option.path, option.key, list);
  loaded[{row.plugin, row.option}] = list.deepCopy();
  selected.reset();  // its row was made anew
}

void PluginsModel::askForRemoval(const ModelRow& row) {
  if (!unlocked) return;
  selected = row;
  toRemove = *row.value;
  sheets.push_back(true);
}

void PluginsModel::answerSheet(bool removes) {
  const bool asks = sheets.front();
  sheets.pop_front();
  if (asks && removes && unlocked && !remove()) sheets.push_back(false);
  if (asks) actEnded();
}

PropertyList PluginsModel::storedListOf(const ModelOption& option) const {
  const Dictionary contents = file(option.path);
  if (option.type == "Checkboxes") return contents.dictionary(option.key);
  return option.isList() ? contents.array(option.key) : Array();
}

bool PluginsModel::write(const std::string& path, const std::string& key, const PropertyList& value) {
  if (!mayWrite(path)) return false;
  onWrite(path);
  if (writesFail) return true;
  if (!files.contains(path)) files[path] = Dictionary::make();
  files[path].set(key, value.deepCopy());
  return true;
}

bool PluginsModel::remove() {
  const auto entry = std::exchange(toRemove, std::nullopt);
  if (!entry || !selected || selected->option < 0 || !selected->value) return false;
  const ModelOption& option = optionOf(*selected);
  Array list = file(option.path).array(option.key).deepCopy().asArray();
  if (!list) return false;
  list.removeAllEqualTo(text(*entry));
  write(option.path, option.key, list);
  if (option.isList()) {
    loaded[{selected->plugin, selected->option}] = list.deepCopy();
    selected.reset();
  }
  return true;
}

}  // namespace corvane::test
