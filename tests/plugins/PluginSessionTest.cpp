// Random sessions at the Plugins tab, held after every act against a small model that is written from the
// rules of the format: what the files hold, what was loaded when, which row is selected, what is held back.
// In between the client changes and deletes its files, writes fail, the lock closes, and the user is in the
// middle of other things.
#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginsTabFixture.h"
#include "support/PluginsModel.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

using namespace test;

constexpr int kRemove = 1000;
constexpr int kCancel = 1001;
constexpr const char* kFirst = "/Library/Corvane/PluginSupport/first.plist";
constexpr const char* kSecond = "/Library/Corvane/PluginSupport/second.plist";
constexpr const char* kElsewhere = "/private/etc/elsewhere.plist";  // is never created
const std::vector<std::string> kStorageFiles = {kFirst, kSecond, kElsewhere};

/// The plug-ins in the order in which they are shown. Some options share a file, some the key as well.
const std::vector<ModelPlugin> kPlugins = {
    {"check_a",
     {{"Checkbox", kFirst, "Tick", text("Positive")},
      {"Checkbox", kSecond, "Reverse", text("Negative")},
      {"Checkboxes", kFirst, "Set"},
      {"TextField", kFirst, "Text"},
      {"FileArray", kFirst, "Files"}}},
    {"check_b",
     {{"Checkboxes", kFirst, "Set"},
      {"FolderArray", kFirst, "Files"},
      {"NumberPicker", kSecond, "Number", text("0-9")},
      {"PopUpMenu", kSecond, "Menu", texts({"first", "second"})},
      {"FilePicker", kSecond, "Path"}}},
    {"check_c",
     {{"PasswordField", kElsewhere, "Text", number(20)},
      {"FileArray", kSecond, "Files"},
      {"Checkbox", kElsewhere, "Tick", text("Positive")}}},
};
class Session : public PluginsTabFixture {
 public:
  explicit Session(unsigned seed) : random_(seed) {
    for (const auto& [plugin, all] : kPlugins) {
      Array options = Array::make();
      for (const ModelOption& one : all) {
        Dictionary dictionary = with(option(one.type, one.value), "SettingStoragePath", text(one.path));
        dictionary.set("SettingStorageKey", text(one.key));
        options.append(dictionary);
      }
      addDefinition(plugin, Dictionary::make({{"PluginName", text(plugin)}, {"PluginOptions", options}}));
      model_.files[PluginsModel::settingsOf(plugin)] = Dictionary::make({{"PrefPaneVisibility", flag(true)}});
    }
    for (const std::string& path : kStorageFiles) {
      model_.files[path] = Dictionary::make();
      for (const char* key :
           {"Tick", "Reverse", "Set", "Text", "Files", "Number", "Menu", "Path", "Unknown"}) {
        model_.files[path].set(key, anyValue(key));
      }
      store(model_.files[path], path);
    }
    controller->awakeFromNib(pane);
    model_.refresh();
  }
  void TestBody() override {}

  void live(int acts) {
    for (int i = 0; i < acts && !HasFailure(); ++i) {
      const std::string act = doSomething();
      SCOPED_TRACE("after act " + std::to_string(i) + ", " + act);
      compare();
    }
  }

 private:
  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  bool oneIn(int times) { return below(times) == 0; }
  template <typename Container>
  auto& anyOf(Container& container) {
    return container[static_cast<std::size_t>(below(static_cast<int>(container.size())))];
  }
  std::string anyPath() { return "/path" + std::to_string(below(5)); }

  PropertyList anyValue(const std::string& key) {
    if (key == "Tick" || key == "Reverse") return flag(oneIn(2));
    if (key == "Number" || key == "Menu") return number(below(2));
    if (key == "Files") {
      Array list = texts({"Add a new entry"});
      for (int i = below(4); i > 0; --i) list.append(text(anyPath()));
      return list;
    }
    if (key != "Set") return text("value " + std::to_string(below(100)));
    Dictionary set = Dictionary::make();
    for (const char* name : {"cupsd", "ntpd", "sshd"}) {
      if (!oneIn(4)) set.set(name, flag(oneIn(2)));
    }
    return set;
  }

  // One act each; answers what it was.
  std::string doSomething() {
    outline().expandItem({}, true);
    const int kind = below(20);
    if (kind < 10) return userActs();
    if (kind < 13) return clientActs();
    if (kind < 15) return answers();
    if (kind == 15) return holds();
    if (kind == 16) return releases();
    if (kind == 17) {
      controller->refresh();
      model_.refresh();
      return "refresh";
    }
    if (kind == 18) {
      model_.writesFail = oneIn(3);
      pane.writesReachTheFile = !model_.writesFail;
      return "writes fail: " + std::to_string(model_.writesFail);
    }
    model_.unlocked = !oneIn(4);
    pane.setUnlocked(model_.unlocked);
    return "unlocked: " + std::to_string(model_.unlocked);
  }
  std::string holds() {
    shells_.push_back(outline().holdRows());
    ++model_.holds;
    return "the user begins to type";
  }
  std::string releases() {
    if (shells_.empty()) return "nothing";
    shells_.pop_back();
    --model_.holds;
    model_.actEnded();
    return "the user ends typing";
  }
  std::string answers() {
    if (model_.sheets.empty()) return "nothing";
    const bool removes = !oneIn(4);
    platform.dialogs.endSheet(removes ? kRemove : kCancel);
    model_.answerSheet(removes);
    return removes ? "first button" : "second button";
  }
  std::string clientActs() {
    std::string path = anyOf(kStorageFiles);
    std::string done = "the client ";
    if (oneIn(4)) {
      path = PluginsModel::settingsOf(anyOf(kPlugins).name);
      model_.files[path] = Dictionary::make({{"PrefPaneVisibility", flag(!oneIn(4))}});
      if (oneIn(2)) model_.files[path].set("Plugin_Enabled", flag(oneIn(2)));
    } else if (oneIn(8)) {
      model_.files.erase(path);
    } else {
      if (!model_.files.contains(path)) model_.files[path] = Dictionary::make();
      const std::vector<std::string> keys = {"Tick",  "Set",   "Set",    "Text",
                                             "Files", "Files", "Number", "Path"};
      const std::string& key = anyOf(keys);
      model_.files[path].set(key, oneIn(6) ? PropertyList() : anyValue(key));
    }
    if (model_.files.contains(path)) {
      store(model_.files[path], path);
    } else {
      platform.remove(platform.paths.onDisk(path));
    }
    if (oneIn(4)) return done + "changes " + path + " unnoticed";
    controller->refresh();
    model_.refresh();
    return done + "changes " + path;
  }
  std::string userActs() {
    if (model_.shown.empty()) return "nothing";
    const ModelRow plugin{anyOf(model_.shown)};
    if (oneIn(6)) {
      outline().clickCell(itemOf(plugin), enabledColumn());
      model_.toggleEnabled(plugin.plugin);
      model_.actEnded();
      return "Enabled of " + plugin.plugin;
    }
    ModelRow row{plugin.plugin, below(static_cast<int>(model_.optionsOf(plugin.plugin).size()))};
    const ModelOption& option = model_.optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    const std::vector<std::string> values = model_.valueRows(row.plugin, row.option);
    if (option.type != "Checkbox" && values.empty()) return "nothing";
    if (option.type != "Checkbox") row.value = anyOf(values);
    actOn(row, option);
    model_.actEnded();
    return option.type + " of " + row.plugin + " " + row.value.value_or("");
  }
  void actOn(const ModelRow& row, const ModelOption& option) {
    const OutlineItem item = itemOf(row);
    if (option.type == "Checkbox") {
      click(item);
      model_.toggleCheckbox(row);
    } else if (option.type == "Checkboxes") {
      click(item);
      model_.toggleName(row);
    } else if (option.type == "FilePicker") {
      const std::string path = choose();
      click(item);
      model_.choosePath(row, path);
    } else if (option.isList() && *row.value == "Add a new entry") {
      const std::string path = choose();
      click(item);
      model_.addPath(row, path);
    } else if (option.isList()) {
      click(item);
      model_.askForRemoval(row);
    } else {
      const PropertyList value = option.type == "NumberPicker" || option.type == "PopUpMenu"
                                     ? number(below(2))
                                     : text("typed " + std::to_string(below(100)));
      edit(item, value);
      model_.store(row, value);
    }
  }
  std::string choose() {
    const std::string path = anyPath();
    platform.dialogs.chosenPaths = {platform.paths.onDisk(path)};
    return path;
  }

  OutlineItem itemOf(const ModelRow& row) {
    OutlineItem found;
    for (const OutlineItem& item : outline().childrenOfItem({})) {
      if (outline().persistentNameOfItem(item) == row.plugin) found = item;
    }
    if (row.option < 0) return found;
    found = outline().childOfItem(found, static_cast<std::size_t>(row.option));
    if (!row.value) return found;
    for (const OutlineItem& item : outline().childrenOfItem(found)) {
      if (*item.object().asString() == *row.value) return item;
    }
    return {};
  }

  void compare() {
    for (const auto& path : kStorageFiles) EXPECT_EQ(stored(path), model_.file(path)) << path;
    std::vector<std::string> plugins;
    for (const OutlineItem& item : outline().childrenOfItem({})) {
      plugins.push_back(outline().persistentNameOfItem(item));
    }
    ASSERT_EQ(plugins, model_.shown);
    for (const std::string& plugin : plugins) {
      EXPECT_EQ(stored(PluginsModel::settingsOf(plugin)), model_.file(PluginsModel::settingsOf(plugin)))
          << plugin;
      const ObjectValue box = enabledShown(itemOf({plugin}));
      EXPECT_EQ(std::get<PropertyList>(box), flag(!model_.isDisabled(plugin))) << plugin;
      for (int i = 0; i < static_cast<int>(model_.optionsOf(plugin).size()); ++i) compareOption(plugin, i);
    }
    EXPECT_EQ(outline().selectedRow() >= 0, model_.selected.has_value());
    EXPECT_EQ(platform.dialogs.sheets.size() - platform.dialogs.endedSheets, model_.sheets.size());
  }
  void compareOption(const std::string& plugin, int index) {
    const ModelRow row{plugin, index};
    const OutlineItem item = itemOf(row);
    EXPECT_EQ(shownValue(item), model_.shownValue(row)) << plugin << " " << index;
    ASSERT_EQ(textsBelow(item), model_.valueRows(plugin, index)) << plugin << " " << index;
    for (const OutlineItem& value : outline().childrenOfItem(item)) {
      const ModelRow valueRow{plugin, index, *value.object().asString()};
      EXPECT_EQ(shownValue(value), model_.shownValue(valueRow)) << plugin << " " << index;
    }
  }

  std::mt19937 random_;
  PluginsModel model_{kPlugins};
  std::vector<OutlineView::Hold> shells_;
};

TEST(PluginSession, RandomSessionsAreWhatTheModelSays) {
  constexpr unsigned kSessions = 24;
  constexpr int kActs = 60;
  for (unsigned seed = 1; seed <= kSessions && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("session " + std::to_string(seed));
    Session(seed).live(kActs);
  }
}

}  // namespace
}  // namespace corvane
