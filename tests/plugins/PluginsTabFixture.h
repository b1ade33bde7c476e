// The Plugins tab over a client of real files below a temporary root, with a pane that records. The lock is
// open unless a test closes it.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugins/PluginKeys.h"
#include "plugins/PluginsTabViewController.h"
#include "support/FakePane.h"
#include "support/TestPlatform.h"
#include "support/Values.h"

namespace corvane::test {

inline Array texts(std::initializer_list<const char*> values) {
  Array list = Array::make();
  for (const char* value : values) list.append(text(value));
  return list;
}

/// Where the options of the tests keep their values unless they say otherwise.
inline constexpr const char* kStorage = "/Library/Corvane/PluginSupport/check_x.storage.plist";
inline constexpr const char* kKey = "Some_Key";

/// A complete option: "Title", "Hint", stored under `kKey` in `kStorage`.
inline Dictionary option(std::string_view type, PropertyList value = {}) {
  Dictionary settingType = Dictionary::make({{"Type", text(std::string(type))}});
  settingType.set("Value", std::move(value));
  return Dictionary::make({{"SettingTitle", text("Title")},
                           {"SettingTitleHint", text("Hint")},
                           {"SettingType", settingType},
                           {"SettingStoragePath", text(kStorage)},
                           {"SettingStorageKey", text(kKey)}});
}
inline Dictionary with(Dictionary dictionary, std::string_view key, PropertyList value) {
  dictionary.set(key, std::move(value));
  return dictionary;
}
inline Dictionary without(Dictionary dictionary, std::string_view key) {
  dictionary.remove(key);
  return dictionary;
}
inline Array options(std::initializer_list<Dictionary> all) {
  Array list = Array::make();
  for (const Dictionary& one : all) list.append(one);
  return list;
}

class PluginsTabFixture : public testing::Test {
 protected:
  PluginsTabFixture() {
    platform.layOutFolders();
    pane.setUnlocked(true);
  }

  // The client's files.
  std::string definitionFile(const std::string& fileName) const {
    return platform.paths.plugins + "/" + fileName + ".plist";
  }
  std::string settingsFile(const std::string& fileName) const {
    return platform.paths.pluginSupport + "/" + fileName + "_settings.plist";
  }
  void addDefinition(const std::string& fileName, const PropertyList& definition) {
    platform.writePlist(definitionFile(fileName), definition);
    platform.writePlist(settingsFile(fileName), Dictionary::make({{"PrefPaneVisibility", flag(true)}}));
  }
  /// A plug-in that is shown under its file name.
  void addPlugin(const std::string& fileName, const Array& all) {
    addDefinition(fileName, Dictionary::make({{"PluginName", text(fileName)}, {"PluginOptions", all}}));
  }
  void store(const Dictionary& contents, const std::string& clientPath = kStorage) {
    platform.writePlist(platform.paths.onDisk(clientPath), contents);
  }
  /// Stores what gives an option of the type a row of its value, where the type has such rows.
  void storeARowFor(std::string_view type) {
    const PropertyList set = Dictionary::make({{"a", flag(true)}});
    store(Dictionary::make({{kKey, type == setting_type::kCheckboxes ? set : texts({"/a"})}}));
  }
  Dictionary stored(const std::string& clientPath = kStorage) {
    return platform.readPlist(platform.paths.onDisk(clientPath)).asDictionary();
  }
  bool existsOnClient(const std::string& clientPath) {
    return platform.files.exists(platform.paths.onDisk(clientPath));
  }

  // The tab.
  OutlineView& outline() { return view.pluginsTable; }
  const OutlineView::Column& enabledColumn() { return outline().columns()[0]; }
  const OutlineView::Column& pluginColumn() { return outline().columns()[1]; }
  void awake() {
    controller->awakeFromNib(pane);
    outline().expandItem({}, true);
  }
  /// One plug-in, check_x, with this option, shown with all its rows.
  void awakeWith(const Dictionary& one) {
    addPlugin("check_x", options({one}));
    awake();
  }
  OutlineItem plugin(std::size_t index = 0) { return outline().childrenOfItem({}).at(index); }
  OutlineItem optionRow(std::size_t index = 0) { return outline().childrenOfItem(plugin()).at(index); }
  OutlineItem valueRow(std::size_t index = 0) { return outline().childrenOfItem(optionRow()).at(index); }
  std::vector<std::string> textsBelow(const OutlineItem& item) {
    std::vector<std::string> found;
    for (const OutlineItem& child : outline().childrenOfItem(item)) {
      const std::string* childText = child.object().asString();
      found.push_back(childText != nullptr ? *childText : std::string("(no text)"));
    }
    return found;
  }
  std::vector<std::string> pluginNames() {
    std::vector<std::string> names;
    for (const Dictionary& entry : controller->catalogue().plugins()) {
      const std::string* name = entry.string("PluginFileName");
      names.push_back(name != nullptr ? *name : std::string());
    }
    return names;
  }

  ObjectValue shown(const OutlineItem& item) {
    return controller->outlineViewObjectValueForTableColumnByItem(outline(), pluginColumn(), item);
  }
  /// What the cell shows as a plain value; nothing for nothing and for styled text.
  PropertyList shownValue(const OutlineItem& item) {
    const ObjectValue value = shown(item);
    const auto* plain = std::get_if<PropertyList>(&value);
    return plain != nullptr ? *plain : PropertyList();
  }
  ObjectValue enabledShown(const OutlineItem& item) {
    return controller->outlineViewObjectValueForTableColumnByItem(outline(), enabledColumn(), item);
  }
  void set(const OutlineItem& item, const PropertyList& value) {
    controller->outlineViewSetObjectValueForTableColumnByItem(outline(), value, pluginColumn(), item);
  }
  /// The cell of the row with its value, as it is drawn.
  template <typename Kind>
  Kind cell(const OutlineItem& item) {
    return as<Kind>(outline().preparedCell(pluginColumn(), item).cell);
  }
  /// The cell of the row as it is chosen, before it is given its value; null for the column's default one.
  CellReference chosen(const OutlineItem& item) {
    return controller->outlineViewDataCellForTableColumnItem(outline(), &pluginColumn(), item);
  }
  template <typename Kind>
  Kind chosenAs(const OutlineItem& item) {
    return as<Kind>(chosen(item));
  }
  void click(const OutlineItem& item) { outline().clickCell(item, pluginColumn()); }
  void edit(const OutlineItem& item, const PropertyList& value) {
    outline().editCell(item, pluginColumn(), value);
  }
  /// Counts the rows that the outline was told to show afresh.
  void countReloads() {
    outline().onReloadItem = [this](const OutlineItem& item) { reloadedItems.push_back(item); };
    outline().onReload = [this] { ++wholeReloads; };
  }

  TestPlatform platform;
  FakePane pane;
  PluginsTabView view;
  std::unique_ptr<PluginsTabViewController> controller =
      std::make_unique<PluginsTabViewController>(platform.platform, platform.paths, view);
  std::vector<OutlineItem> reloadedItems;
  int wholeReloads = 0;

 private:
  template <typename Kind>
  static Kind as(const CellReference& cell) {
    const auto* kind = cell != nullptr ? std::get_if<Kind>(cell.get()) : nullptr;
    EXPECT_NE(kind, nullptr) << "a cell of another kind";
    return kind != nullptr ? *kind : Kind();
  }
};

}  // namespace corvane::test
