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

/// An option as its definition has it.
struct Option {
  std::string type;
  std::string path;
  std::string key;
  PropertyList value = {};
};
/// The plug-ins in the order in which they are shown. Some options share a file, some the key as well.
const std::vector<std::pair<std::string, std::vector<Option>>> kPlugins = {
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
const std::vector<Option>& optionsOf(const std::string& plugin) {
  return std::ranges::find(kPlugins, plugin, &std::pair<std::string, std::vector<Option>>::first)->second;
}
bool isList(const Option& option) { return option.type == "FileArray" || option.type == "FolderArray"; }

/// A row: a plug-in, the option of that number, and below it the value row of that text.
struct Row {
  std::string plugin;
  int option = -1;
  std::optional<std::string> value = std::nullopt;
  friend bool operator==(const Row&, const Row&) = default;
};

/// What the tab should be.
class Model {
 public:
  // The world.
  std::map<std::string, Dictionary> files;  // by their paths on the client; a missing one is not in it
  bool writesFail = false;
  bool unlocked = true;

  // What was loaded with the last refresh, and changed by edits since.
  std::vector<std::string> shown;
  std::vector<std::string> disabled;
  std::map<std::pair<std::string, int>, PropertyList> loaded;  // sets and lists
  bool refreshIsDue = false;

  // What the user is about.
  int holds = 0;  // of the shell
  std::optional<Row> selected;
  std::optional<std::string> toRemove;  // the title of the cell whose removal was asked for last
  std::deque<bool> sheets;              // true: asks for a removal, false: tells an error

  static std::string settingsOf(const std::string& plugin) {
    return "/Library/Corvane/PluginSupport/" + plugin + "_settings.plist";
  }
  Dictionary file(const std::string& path) const {
    const auto found = files.find(path);
    return found != files.end() ? found->second : Dictionary();
  }
  bool isHeld() const { return holds > 0 || std::ranges::count(sheets, true) > 0; }

  void refresh() {
    refreshIsDue = isHeld();
    if (refreshIsDue) return;
    shown.clear();
    disabled.clear();
    loaded.clear();
    selected.reset();
    for (const auto& [plugin, all] : kPlugins) {
      const Dictionary settings = file(settingsOf(plugin));
      if (settings.value("PrefPaneVisibility") != flag(true)) continue;
      shown.push_back(plugin);
      if (settings.value("Plugin_Enabled") == flag(false)) disabled.push_back(plugin);
      for (int i = 0; i < static_cast<int>(all.size()); ++i)
        loaded[{plugin, i}] = storedListOf(all[i]).deepCopy();
    }
  }
  void actEnded() {
    if (refreshIsDue && !isHeld()) refresh();
  }

  bool isDisabled(const std::string& plugin) const {
    return std::ranges::find(disabled, plugin) != disabled.end();
  }
  /// What stands below the option.
  std::vector<std::string> valueRows(const std::string& plugin, int index) const {
    const Option& option = optionsOf(plugin)[static_cast<std::size_t>(index)];
    const PropertyList& list = loaded.at({plugin, index});
    if (option.type == "Checkboxes") return list.asDictionary().keys();
    std::vector<std::string> rows;
    if (isList(option)) {
      for (const PropertyList& entry : list.asArray().elements()) rows.push_back(*entry.asString());
    } else if (option.type != "Checkbox") {
      rows.push_back(option.key);
    }
    return rows;
  }
  /// The value in the cell of the row; nothing for those that show styled texts.
  PropertyList shownValue(const Row& row) const {
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    const Dictionary contents = file(option.path);
    if (!contents) return {};
    if (option.type == "Checkbox")
      return row.value ? PropertyList() : flag(boolValue(contents.value(option.key)));
    if (!row.value) return {};
    if (option.type != "Checkboxes") return contents.value(*row.value);
    return flag(boolValue(loaded.at({row.plugin, row.option}).asDictionary().value(*row.value)));
  }

  // The user's acts.
  void toggleEnabled(const std::string& plugin) {
    if (!unlocked) return;
    selected = Row{plugin};
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
  void toggleCheckbox(const Row& row) {
    if (!unlocked) return;
    selected = row;
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    const bool clicked = !boolValue(shownValue(row));
    const bool isPositive = option.value == text("Positive");
    write(option.path, option.key, flag(isPositive ? clicked : !clicked));
  }
  void toggleName(const Row& row) {
    if (!unlocked) return;
    const bool state = !boolValue(shownValue(row));
    selected = row;
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    Dictionary own = loaded.at({row.plugin, row.option}).asDictionary();
    Dictionary set =
        (refreshIsDue ? file(option.path).dictionary(option.key) : own).deepCopy().asDictionary();
    if (!set.contains(*row.value)) return;
    set.set(*row.value, flag(state));
    if (!write(option.path, option.key, set)) return;
    own.set(*row.value, flag(state));
  }
  void store(const Row& row, const PropertyList& value) {
    if (!unlocked) return;
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    write(option.path, option.key, value);
  }
  void choosePath(const Row& row, const std::string& path) {
    if (!unlocked) return;
    selected = row;
    store(row, text(path));
  }
  void addPath(const Row& row, const std::string& path) {
    if (!unlocked) return;
    selected = row;
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
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
    list = texts({"Add a new entry"});
    for (const std::string& entry : entries) list.append(text(entry));
    write(option.path, option.key, list);
    loaded[{row.plugin, row.option}] = list.deepCopy();
    selected.reset();  // its row was made anew
  }
  void askForRemoval(const Row& row) {
    if (!unlocked) return;
    selected = row;
    toRemove = *row.value;
    sheets.push_back(true);
  }
  void answerSheet(bool removes) {
    const bool asks = sheets.front();
    sheets.pop_front();
    if (asks && removes && unlocked && !remove()) sheets.push_back(false);
    if (asks) actEnded();
  }

 private:
  PropertyList storedListOf(const Option& option) const {
    const Dictionary contents = file(option.path);
    if (option.type == "Checkboxes") return contents.dictionary(option.key);
    return isList(option) ? contents.array(option.key) : Array();
  }
  bool mayWrite(const std::string& path) const {
    return files.contains(path) || path.starts_with("/Library/Corvane/");
  }
  /// False when nothing may be written; a write that fails is not seen.
  bool write(const std::string& path, const std::string& key, const PropertyList& value) {
    if (!mayWrite(path)) return false;
    if (writesFail) return true;
    if (!files.contains(path)) files[path] = Dictionary::make();
    files[path].set(key, value.deepCopy());
    return true;
  }
  bool remove() {
    const auto entry = std::exchange(toRemove, std::nullopt);
    if (!entry || !selected || selected->option < 0 || !selected->value) return false;
    const Option& option = optionsOf(selected->plugin)[static_cast<std::size_t>(selected->option)];
    Array list = file(option.path).array(option.key).deepCopy().asArray();
    if (!list) return false;
    list.removeAllEqualTo(text(*entry));
    write(option.path, option.key, list);
    if (isList(option)) {
      loaded[{selected->plugin, selected->option}] = list.deepCopy();
      selected.reset();
    }
    return true;
  }
};

class Session : public PluginsTabFixture {
 public:
  explicit Session(unsigned seed) : random_(seed) {
    for (const auto& [plugin, all] : kPlugins) {
      Array options = Array::make();
      for (const Option& one : all) {
        Dictionary dictionary = with(option(one.type, one.value), "SettingStoragePath", text(one.path));
        dictionary.set("SettingStorageKey", text(one.key));
        options.append(dictionary);
      }
      addDefinition(plugin, Dictionary::make({{"PluginName", text(plugin)}, {"PluginOptions", options}}));
      model_.files[Model::settingsOf(plugin)] = Dictionary::make({{"PrefPaneVisibility", flag(true)}});
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
      path = Model::settingsOf(anyOf(kPlugins).first);
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
    const Row plugin{anyOf(model_.shown)};
    if (oneIn(6)) {
      outline().clickCell(itemOf(plugin), enabledColumn());
      model_.toggleEnabled(plugin.plugin);
      model_.actEnded();
      return "Enabled of " + plugin.plugin;
    }
    Row row{plugin.plugin, below(static_cast<int>(optionsOf(plugin.plugin).size()))};
    const Option& option = optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
    const std::vector<std::string> values = model_.valueRows(row.plugin, row.option);
    if (option.type != "Checkbox" && values.empty()) return "nothing";
    if (option.type != "Checkbox") row.value = anyOf(values);
    actOn(row, option);
    model_.actEnded();
    return option.type + " of " + row.plugin + " " + row.value.value_or("");
  }
  void actOn(const Row& row, const Option& option) {
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
    } else if (isList(option) && *row.value == "Add a new entry") {
      const std::string path = choose();
      click(item);
      model_.addPath(row, path);
    } else if (isList(option)) {
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

  OutlineItem itemOf(const Row& row) {
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
      EXPECT_EQ(stored(Model::settingsOf(plugin)), model_.file(Model::settingsOf(plugin))) << plugin;
      const ObjectValue box = enabledShown(itemOf({plugin}));
      EXPECT_EQ(std::get<PropertyList>(box), flag(!model_.isDisabled(plugin))) << plugin;
      for (int i = 0; i < static_cast<int>(optionsOf(plugin).size()); ++i) compareOption(plugin, i);
    }
    EXPECT_EQ(outline().selectedRow() >= 0, model_.selected.has_value());
    EXPECT_EQ(platform.dialogs.sheets.size() - platform.dialogs.endedSheets, model_.sheets.size());
  }
  void compareOption(const std::string& plugin, int index) {
    const Row row{plugin, index};
    const OutlineItem item = itemOf(row);
    EXPECT_EQ(shownValue(item), model_.shownValue(row)) << plugin << " " << index;
    ASSERT_EQ(textsBelow(item), model_.valueRows(plugin, index)) << plugin << " " << index;
    for (const OutlineItem& value : outline().childrenOfItem(item)) {
      const Row valueRow{plugin, index, *value.object().asString()};
      EXPECT_EQ(shownValue(value), model_.shownValue(valueRow)) << plugin << " " << index;
    }
  }

  std::mt19937 random_;
  Model model_;
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
