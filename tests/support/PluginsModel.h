// What the Plugins tab should be: a small model that is written from the rules of the format, for random
// sessions. It knows what the files hold, what was loaded when, which row is selected, what is held back.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/Values.h"

namespace corvane::test {

/// An option as its definition has it. Its title is its key.
struct ModelOption {
  std::string type;
  std::string path;
  std::string key;
  PropertyList value = {};
  [[nodiscard]] bool isList() const { return type == "FileArray" || type == "FolderArray"; }
};
struct ModelPlugin {
  std::string name;  // of its file
  std::vector<ModelOption> options;
};

/// A row: a plug-in, the option of that number, and below it the value row of that text.
struct ModelRow {
  std::string plugin;
  int option = -1;
  std::optional<std::string> value = std::nullopt;
  friend bool operator==(const ModelRow&, const ModelRow&) = default;
};

class PluginsModel {
 public:
  /// In the order in which they are shown.
  explicit PluginsModel(std::vector<ModelPlugin> plugins) : plugins_(std::move(plugins)) {}

  // The world.
  std::map<std::string, Dictionary> files;  // by their paths on the client; a missing one is not in it
  bool writesFail = false;
  bool unlocked = true;
  bool rootReads = true;  // what only root may read can be read while the lock is open
  std::function<void(const std::string& path)> onWrite = [](const std::string&) {};

  // What was loaded with the last refresh, and changed by edits since.
  std::vector<std::string> shown;
  std::vector<std::string> disabled;
  std::map<std::pair<std::string, int>, PropertyList> loaded;  // sets and lists
  bool refreshIsDue = false;

  // What the user is about.
  int holds = 0;  // of the shell
  std::optional<ModelRow> selected;
  std::optional<std::string> toRemove;  // the title of the cell whose removal was asked for last
  std::deque<bool> sheets;              // true: asks for a removal, false: tells something

  [[nodiscard]] const std::vector<ModelPlugin>& plugins() const { return plugins_; }
  [[nodiscard]] const std::vector<ModelOption>& optionsOf(const std::string& plugin) const;
  [[nodiscard]] const ModelOption& optionOf(const ModelRow& row) const {
    return optionsOf(row.plugin)[static_cast<std::size_t>(row.option)];
  }
  [[nodiscard]] static std::string settingsOf(const std::string& plugin) {
    return "/Library/Corvane/PluginSupport/" + plugin + "_settings.plist";
  }
  [[nodiscard]] Dictionary file(const std::string& path) const;
  [[nodiscard]] bool isHeld() const;
  [[nodiscard]] bool isDisabled(const std::string& plugin) const;
  /// What stands below the option.
  [[nodiscard]] std::vector<std::string> valueRows(const std::string& plugin, int index) const;
  /// The value in the cell of the row; nothing for those that show styled texts.
  [[nodiscard]] PropertyList shownValue(const ModelRow& row) const;

  void refresh();
  /// What was held back during an act is made up for.
  void actEnded() {
    if (refreshIsDue && !isHeld()) refresh();
  }

  // The user's acts.
  void toggleEnabled(const std::string& plugin);
  void toggleCheckbox(const ModelRow& row);
  void toggleName(const ModelRow& row);
  void store(const ModelRow& row, const PropertyList& value);
  void choosePath(const ModelRow& row, const std::string& path);
  void addPath(const ModelRow& row, const std::string& path);
  void askForRemoval(const ModelRow& row);
  void answerSheet(bool removes);

 private:
  [[nodiscard]] PropertyList storedListOf(const ModelOption& option) const;
  [[nodiscard]] bool mayWrite(const std::string& path) const {
    return files.contains(path) || path.starts_with("/Library/Corvane/") || isRoots(path);
  }
  [[nodiscard]] static bool isRoots(const std::string& path) { return path.starts_with("/var/root/"); }
  /// False when nothing may be written; a write that fails is not seen.
  bool write(const std::string& path, const std::string& key, const PropertyList& value);
  bool remove();

  std::vector<ModelPlugin> plugins_;
};

}  // namespace corvane::test
