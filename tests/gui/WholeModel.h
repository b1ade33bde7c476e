// What the whole pane should be, for random sessions: a small model that is written from the rules. It knows
// what stands in every file, what each tab has read of it and when, and what could not be saved. All paths
// are those of the client.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "pane/PathTable.h"
#include "support/PluginsModel.h"

namespace corvane::test {

/// A control that shows one value of a settings file and changes it.
struct ModelSetting {
  enum class Kind { Switch, Number, Text };
  const char* control;
  int tab;
  std::size_t store;
  const char* key;
  Kind kind;
  int largest = 0;              // of a number; the smallest is 1
  const char* label = nullptr;  // a text beside a switch that switches it too
  int formatter = 0;            // of a number: fields of the same one show their default together
};
/// The formatters of a volume's thresholds; that of the usage is the one of two settings.
inline constexpr int kUsageFormatter = 1;
inline constexpr int kPresenceFormatter = 2;

/// What the sheet with the manual run of Time Machine shows.
struct ModelSheet {
  int days = 0;
  int hour = 12;
  bool isAfternoon = false;
  bool onRemoval = false;
};

class WholeModel {
 public:
  WholeModel();

  [[nodiscard]] static const std::vector<ModelSetting>& settings();
  [[nodiscard]] static const std::vector<ModelPlugin>& pluginDefinitions();
  /// A value as it may stand under the key.
  using Random = std::function<int(int below)>;
  [[nodiscard]] static PropertyList anyPluginValue(const std::string& key, const Random& random);

  // The files.
  [[nodiscard]] std::map<std::string, PropertyList> allFiles() const;
  [[nodiscard]] PropertyList file(const std::string& path) const;
  /// Others put these contents there, or remove it (null). A file that can't be read is, to the pane, one
  /// without contents.
  void changeByOthers(const std::string& path, const PropertyList& contents);
  /// The directories that have changed since they were reported last are reported.
  [[nodiscard]] std::vector<std::string> takeChangedDirectories();
  /// Whether the tree of plug-ins has been told of all that others have done. A row that is drawn before that
  /// shows what its file holds by then, and its neighbour what it held.
  [[nodiscard]] bool rowsAreTold() const { return !rowsAreOld_ && !plugins.refreshIsDue; }
  void directoriesWereReported(const std::vector<std::string>& directories);

  // How writes and starts of the client's scripts end from now on; empty: well.
  void setFate(const std::string& whyWritesFail, const std::string& whyStartsFail, bool rootReads);
  /// What stands beside the lock.
  [[nodiscard]] std::string status() const;

  // The lock.
  void openLock();
  void closeLock();
  [[nodiscard]] bool unlocked() const { return plugins.unlocked; }

  // Settings.
  [[nodiscard]] PropertyList storedValue(const ModelSetting& setting) const;
  /// The same, or the default while a field of its formatter was cleared last.
  [[nodiscard]] PropertyList shownValue(const ModelSetting& setting) const;
  /// The value of a number field that is left with this text.
  [[nodiscard]] PropertyList typedNumber(int formatter, const std::string& text) const;
  [[nodiscard]] PropertyList shownNumber(int formatter, const PropertyList& stored) const {
    return wasCleared_[static_cast<std::size_t>(formatter)] ? number(1) : stored;
  }
  /// A text was put before the formatter, and taken or not.
  void formatterWasAsked(int formatter, const std::string& text) {
    wasCleared_[static_cast<std::size_t>(formatter)] = text.empty();
  }
  void edit(const ModelSetting& setting, const PropertyList& value);
  void startScript(const std::string& path) {
    note("%@ was not started%@: %@", path, unlocked() ? whyStartsFail_ : "status 5534");
  }

  // Volumes.
  struct Volume {
    std::string name;
    std::string path;
    bool isMounted;
    bool isOfTheSystem;
  };
  [[nodiscard]] bool isMissing(const Dictionary& entry) const;
  [[nodiscard]] bool isDuplicate(const Dictionary& entry) const;
  [[nodiscard]] std::string label(const Dictionary& entry) const;
  /// Another entry with the name of one that is saved comes, or goes.
  void saveOrForgetDuplicate();
  [[nodiscard]] Dictionary selectedVolume() const;
  void setVolume(const char* key, const PropertyList& value);
  void purge();
  void showOrHideSystemVolumes();
  void mountOrUnmount(std::size_t device);

  // The sheet. It is filled whenever its file is read.
  void openSheet();
  void acceptSheet();

  PluginsModel plugins;
  std::vector<Volume> devices;
  std::vector<Dictionary> volumes;  // by name
  int selected = -1;
  bool showsSystemVolumes = false;
  ModelSheet sheet;
  const PathTable paths;

 private:
  struct Store {
    std::string file;
    Dictionary values;
  };
  struct Failure {
    std::string path;
    const char* format;
    std::string reason;
  };
  void refreshPlugins();
  void readAgain(Store& store);
  void fillSheet();
  void rebuildVolumes();
  [[nodiscard]] std::vector<Dictionary> savedVolumes() const;
  [[nodiscard]] Dictionary journal() const;
  void write(const std::string& path, const PropertyList& contents);
  void writeVolumes();
  void note(const char* format, const std::string& path, const std::string& reason);
  void wasChanged(const std::string& path);
  [[nodiscard]] bool isNewer(const std::string& path);

  std::map<std::string, PropertyList> files_;  // but those of plug-ins
  std::vector<Store> stores_;
  std::array<bool, 3> wasCleared_{};
  bool rowsAreOld_ = false;
  std::vector<Volume> knownDevices_;  // as of the last rebuild of the list
  std::vector<Failure> failures_;     // the newest first
  std::string whyWritesFail_;
  std::string whyStartsFail_;
  std::set<std::string> changedDirectories_;
  std::map<std::string, int> versions_;
  std::map<std::string, int> seenVersions_;
};

}  // namespace corvane::test
