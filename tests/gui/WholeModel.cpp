#include "WholeModel.h"

#include <algorithm>

#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane::test {
namespace {

constexpr const char* kFirst = "/Library/Corvane/PluginSupport/first.plist";
constexpr const char* kSecond = "/Library/Corvane/PluginSupport/second.plist";
constexpr const char* kElsewhere = "/private/etc/elsewhere.plist";  // is never created
constexpr const char* kRoots = "/var/root/Library/Preferences/roots.plist";
constexpr const char* kEnabled = "Plugin_Enabled";
constexpr const char* kHour = "Manual_Run_Hour";
constexpr const char* kDays = "Days_Until_Manual_Run";
constexpr const char* kOnRemoval = "Enable_On_Removal";

Array listOf(std::initializer_list<const char*> values) {
  Array list = Array::make();
  for (const char* value : values) list.append(text(value));
  return list;
}

Dictionary savedVolume(const char* name, const char* path) {
  return Dictionary::make({{"VolumeName", text(name)},
                           {"VolumePath", text(path)},
                           {"MonitorPresence", flag(false)},
                           {"PresenceThreshold", number(5)},
                           {"MonitorUsage", flag(false)},
                           {"UsageThreshold", number(90)}});
}

std::string nameOf(const Dictionary& entry) { return *entry.string("VolumeName"); }
std::string pathOf(const Dictionary& entry) { return *entry.string("VolumePath"); }
bool isSameVolume(const Dictionary& one, const Dictionary& other) {
  return nameOf(one) == nameOf(other) && pathOf(one) == pathOf(other);
}

}  // namespace

const std::vector<ModelSetting>& WholeModel::settings() {
  using Kind = ModelSetting::Kind;
  static const std::vector<ModelSetting> all = {
      {"runIntervalTextField", 0, 0, "Run_Interval", Kind::Number, 6},
      {"clientGroupTextField", 0, 0, "ClientGroup", Kind::Text},
      {"timeMachineWarningCheckbox", 1, 1, kEnabled, Kind::Switch, 0, "timeMachineWarningTrailingButton"},
      {"timeMachineInactiveTextField", 1, 1, "Days_Until_Warning", Kind::Number, 99, nullptr,
       kUsageFormatter},
      {"bootVolumeWarningCheckbox", 1, 2, kEnabled, Kind::Switch, 0, "bootVolumeWarningTrailingButton"},
      {"bootVolumeFullTextField", 1, 2, "Capacity_Threshold", Kind::Number, 99, nullptr, kUsageFormatter},
      {"automountCheckbox", 1, 3, "AutomountDisksWithoutUserLogin", Kind::Switch}};
  return all;
}

// Some options share a file, some the key as well.
const std::vector<ModelPlugin>& WholeModel::pluginDefinitions() {
  static const std::vector<ModelPlugin> all = {{"alpha",
                                                {{"Checkbox", kFirst, "Tick", text("Positive")},
                                                 {"Checkbox", kSecond, "Reverse", text("Negative")},
                                                 {"Checkboxes", kFirst, "Set"},
                                                 {"TextField", kFirst, "Text", number(12)},
                                                 {"FileArray", kFirst, "Files"}}},
                                               {"beta",
                                                {{"Checkboxes", kFirst, "Set"},
                                                 {"FolderArray", kFirst, "Files"},
                                                 {"NumberPicker", kSecond, "Number", text("0-9")},
                                                 {"PopUpMenu", kSecond, "Menu", listOf({"one", "two"})},
                                                 {"FilePicker", kSecond, "Path"},
                                                 {"FolderPicker", kSecond, "Folder"},
                                                 {"PluginValidation", kSecond, "Test"}}},
                                               {"gamma",
                                                {{"PasswordField", kElsewhere, "Text", number(20)},
                                                 {"FileArray", kSecond, "Files"},
                                                 {"Checkbox", kElsewhere, "Tick", text("Positive")},
                                                 {"UsernameField", kRoots, "User"}}}};
  return all;
}

PropertyList WholeModel::anyPluginValue(const std::string& key, const Random& random) {
  if (key == "Tick" || key == "Reverse") return flag(random(2) == 0);
  if (key == "Number") return number(random(10));
  if (key == "Menu") return number(random(2));
  if (key == "Path") return text("/Users/file" + std::to_string(random(4)));
  if (key == "Folder") return text("/Users/folder" + std::to_string(random(4)));
  if (key == "Files") {
    Array list = listOf({"Add a new entry"});
    for (int i = 0; i < 4; ++i) {
      if (random(3) == 0) list.append(text("/Users/file" + std::to_string(i)));
    }
    return list;
  }
  if (key != "Set") return text("value " + std::to_string(random(100)));
  Dictionary set = Dictionary::make();
  for (const char* name : {"cupsd", "ntpd", "sshd"}) {
    if (random(4) > 0) set.set(name, flag(random(2) == 0));
  }
  return set;
}

WholeModel::WholeModel()
    : plugins(pluginDefinitions()),
      devices{{"Backup", "/Volumes/Backup", true, false},
              {"Data", "/Volumes/Data", true, false},
              {"Data", "/Volumes/Data 1", false, false},
              {"Preboot", "/Volumes/Preboot", true, true}} {
  files_ = {
      {paths.clientSettings, Dictionary::make({{"Client_Version", text("4.2")},
                                               {"ClientGroup", text("lab")},
                                               {"Run_Interval", number(2)},
                                               {"Unknown", text("kept")}})},
      {paths.timeMachineSettings, Dictionary::make({{kEnabled, flag(true)},
                                                    {"Days_Until_Warning", number(30)},
                                                    {kHour, text("13")},
                                                    {kDays, number(3)},
                                                    {kOnRemoval, flag(false)},
                                                    {"Unknown", number(7)}})},
      {paths.rootCapacitySettings,
       Dictionary::make(
           {{kEnabled, flag(false)}, {"Capacity_Threshold", number(90)}, {"Unknown", flag(true)}})},
      {paths.autoDiskMount,
       Dictionary::make({{"AutomountDisksWithoutUserLogin", flag(false)}, {"Unknown", listOf({"kept"})}})},
      {paths.volumesSettings,
       Array::make({savedVolume("Archive", "/Volumes/Archive"), savedVolume("Backup", "/Volumes/Backup")})},
      {paths.diskJournal, journal()}};
  for (const auto& path :
       {paths.clientSettings, paths.timeMachineSettings, paths.rootCapacitySettings, paths.autoDiskMount}) {
    stores_.push_back({path, files_[path].deepCopy().asDictionary()});
  }
  for (const ModelPlugin& plugin : pluginDefinitions()) {
    plugins.files[PluginsModel::settingsOf(plugin.name)] =
        Dictionary::make({{"PrefPaneVisibility", flag(true)}, {"Unknown", text("kept")}});
  }
  plugins.onWrite = [this](const std::string& path) {
    note("%@ was not saved%@: %@", path, whyWritesFail_);
    if (whyWritesFail_.empty()) wasChanged(path);
  };
  for (const auto& [path, contents] : files_)
    versions_[path] = 1;  // the first report finds all of them newer
  plugins.unlocked = false;
}

// --- files

std::map<std::string, PropertyList> WholeModel::allFiles() const {
  std::map<std::string, PropertyList> all = files_;
  all.insert(plugins.files.begin(), plugins.files.end());
  return all;
}

PropertyList WholeModel::file(const std::string& path) const {
  const auto all = allFiles();
  const auto found = all.find(path);
  return found != all.end() ? found->second : PropertyList();
}

void WholeModel::changeByOthers(const std::string& path, const PropertyList& contents) {
  if (files_.contains(path)) {
    files_[path] = contents ? contents.deepCopy() : PropertyList();
  } else if (contents) {
    plugins.files[path] = contents.deepCopy().asDictionary();
  } else {
    plugins.files.erase(path);
  }
  rowsAreOld_ = true;
  wasChanged(path);
}

void WholeModel::wasChanged(const std::string& path) {
  ++versions_[path];
  changedDirectories_.insert(deletingLastPathComponent(path));
}

bool WholeModel::isNewer(const std::string& path) {
  return std::exchange(seenVersions_[path], versions_[path]) < versions_[path];
}

std::vector<std::string> WholeModel::takeChangedDirectories() {
  const std::set<std::string> taken = std::exchange(changedDirectories_, {});
  return {taken.begin(), taken.end()};
}

void WholeModel::directoriesWereReported(const std::vector<std::string>& directories) {
  const auto isListed = [&](const std::string& directory) {
    return std::ranges::find(directories, directory) != directories.end();
  };
  bool volumesChanged = isListed(paths.localInfo) && isNewer(paths.diskJournal);
  bool pluginsChanged = false;
  if (isListed(paths.installFolder) && isNewer(paths.clientSettings)) {
    readAgain(stores_[0]);
    pluginsChanged = true;
  }
  if (isListed(paths.systemConfiguration) && isNewer(paths.autoDiskMount)) readAgain(stores_[3]);
  if (isListed(paths.pluginSupport)) {
    if (isNewer(paths.timeMachineSettings)) {
      readAgain(stores_[1]);
      fillSheet();
    }
    if (isNewer(paths.rootCapacitySettings)) readAgain(stores_[2]);
    volumesChanged = isNewer(paths.volumesSettings) || volumesChanged;
    pluginsChanged = true;
  }
  if (pluginsChanged) refreshPlugins();
  if (volumesChanged) rebuildVolumes();
}

void WholeModel::write(const std::string& path, const PropertyList& contents) {
  note("%@ was not saved%@: %@", path, whyWritesFail_);
  if (!whyWritesFail_.empty()) return;
  files_[path] = contents.deepCopy();
  wasChanged(path);
}

void WholeModel::setFate(const std::string& whyWritesFail, const std::string& whyStartsFail, bool rootReads) {
  whyWritesFail_ = whyWritesFail;
  whyStartsFail_ = whyStartsFail;
  plugins.writesFail = !whyWritesFail.empty();
  rowsAreOld_ = rowsAreOld_ || rootReads != plugins.rootReads;
  plugins.rootReads = rootReads;
}

void WholeModel::note(const char* format, const std::string& path, const std::string& reason) {
  std::erase_if(failures_, [&](const Failure& failure) { return failure.path == path; });
  if (!reason.empty()) failures_.insert(failures_.begin(), {path, format, reason});
}

std::string WholeModel::status() const {
  if (failures_.empty()) return {};
  const auto& [path, format, reason] = failures_.front();
  const std::size_t others = failures_.size() - 1;
  return formatText(format, {lastPathComponent(path),
                             others > 0 ? " (and " + std::to_string(others) + " more)" : "", reason});
}

// --- lock

void WholeModel::openLock() {
  plugins.unlocked = true;
  for (Store& store : stores_) readAgain(store);
  fillSheet();
  rebuildVolumes();
  selected = volumes.empty() ? -1 : 0;
  refreshPlugins();
}

void WholeModel::refreshPlugins() {
  rowsAreOld_ = false;
  plugins.refresh();
}

void WholeModel::closeLock() { plugins.unlocked = false; }

// --- settings

void WholeModel::readAgain(Store& store) {
  const Dictionary contents = files_.at(store.file).asDictionary();
  if (!contents) return;  // what was read before stays
  for (const std::string& key : contents.keys()) store.values.set(key, contents.value(key).deepCopy());
}

PropertyList WholeModel::storedValue(const ModelSetting& setting) const {
  return stores_[setting.store].values.value(setting.key);
}

PropertyList WholeModel::shownValue(const ModelSetting& setting) const {
  const PropertyList stored = storedValue(setting);
  return setting.kind == ModelSetting::Kind::Number ? shownNumber(setting.formatter, stored) : stored;
}

PropertyList WholeModel::typedNumber(int formatter, const std::string& text) const {
  return shownNumber(formatter, number(text.empty() ? 0 : std::stoi(text)));
}

void WholeModel::edit(const ModelSetting& setting, const PropertyList& value) {
  Store& store = stores_[setting.store];
  if (store.values.value(setting.key) == value) return;
  store.values.set(setting.key, value);
  write(store.file, store.values);
}

void WholeModel::fillSheet() {
  const Dictionary& values = stores_[1].values;
  const int hour = intValue(values.value(kHour));
  sheet = {intValue(values.value(kDays)), hour % 12 == 0 ? 12 : hour % 12, hour >= 12,
           boolValue(values.value(kOnRemoval))};
}

void WholeModel::openSheet() {
  readAgain(stores_[1]);
  fillSheet();
}

void WholeModel::acceptSheet() {
  Dictionary& values = stores_[1].values;
  values.set(kHour, text(std::to_string(sheet.hour % 12 + (sheet.isAfternoon ? 12 : 0))));
  values.set(kDays, number(sheet.days));
  values.set(kOnRemoval, flag(sheet.onRemoval));
  write(stores_[1].file, values);
}

// --- volumes

Dictionary WholeModel::journal() const {
  Dictionary descriptions = Dictionary::make();
  Array mounted = Array::make();
  for (const Volume& volume : devices) {
    descriptions.set("disk at " + volume.path,
                     Array::make({Dictionary::make({{"DAVolumeName", text(volume.name)},
                                                    {"DAVolumePath", text(volume.path)},
                                                    {"DAVolumeKind", text("apfs")}})}));
    if (volume.isMounted) mounted.append(text("disk at " + volume.path));
  }
  return Dictionary::make({{"Devices", descriptions}, {"CurrentlyMountedVolumeDevices", mounted}});
}

void WholeModel::mountOrUnmount(std::size_t device) {
  devices[device].isMounted = !devices[device].isMounted;
  changeByOthers(paths.diskJournal, journal());
}

std::vector<Dictionary> WholeModel::savedVolumes() const {
  std::vector<Dictionary> saved;
  const Array list = files_.at(paths.volumesSettings).asArray();
  if (!list) return saved;
  for (const PropertyList& entry : list.elements()) saved.push_back(entry.deepCopy().asDictionary());
  return saved;
}

bool WholeModel::isMissing(const Dictionary& entry) const {
  return std::ranges::none_of(knownDevices_, [&](const Volume& device) {
    return device.isMounted && device.name == nameOf(entry) && device.path == pathOf(entry);
  });
}

bool WholeModel::isDuplicate(const Dictionary& entry) const {
  return std::ranges::any_of(volumes,
                             [&](const Dictionary& other) {
                               return nameOf(other) == nameOf(entry) && pathOf(other) != pathOf(entry);
                             }) ||
         std::ranges::any_of(knownDevices_, [&](const Volume& device) {
           return device.isMounted && device.name == nameOf(entry) && device.path != pathOf(entry);
         });
}

std::string WholeModel::label(const Dictionary& entry) const {
  const char* suffix = isDuplicate(entry) ? (isMissing(entry) ? " (Duplicate, Missing)" : " (Duplicate)")
                       : isMissing(entry) ? " (Missing)"
                                          : "";
  return nameOf(entry) + suffix;
}

void WholeModel::saveOrForgetDuplicate() {
  static const Dictionary duplicate = savedVolume("Archive", "/Volumes/Old Archive");
  Array changed = Array::make();
  bool wasThere = false;
  for (const Dictionary& entry : savedVolumes()) {
    const bool isIt = isSameVolume(entry, duplicate);
    wasThere = wasThere || isIt;
    if (!isIt) changed.append(entry);
  }
  if (!wasThere) changed.append(duplicate.deepCopy());
  changeByOthers(paths.volumesSettings, changed);
}

Dictionary WholeModel::selectedVolume() const {
  return selected >= 0 ? volumes[static_cast<std::size_t>(selected)] : Dictionary();
}

void WholeModel::rebuildVolumes() {
  const Dictionary before = selectedVolume();
  knownDevices_ = devices;
  volumes.clear();
  for (const Dictionary& entry : savedVolumes()) volumes.push_back(entry);
  for (const Volume& device : knownDevices_) {
    const bool isOffered = device.isMounted && (showsSystemVolumes || !device.isOfTheSystem);
    const Dictionary offered = savedVolume(device.name.c_str(), device.path.c_str());
    const bool isSaved =
        std::ranges::any_of(volumes, [&](const Dictionary& entry) { return isSameVolume(entry, offered); });
    if (isOffered && !isSaved) volumes.push_back(offered);
  }
  std::ranges::stable_sort(volumes, {}, nameOf);
  const auto same = std::ranges::find_if(
      volumes, [&](const Dictionary& entry) { return before && isSameVolume(entry, before); });
  selected = same != volumes.end() ? static_cast<int>(same - volumes.begin()) : volumes.empty() ? -1 : 0;
}

void WholeModel::setVolume(const char* key, const PropertyList& value) {
  if (selected >= 0) volumes[static_cast<std::size_t>(selected)].set(key, value);
  writeVolumes();
}

void WholeModel::writeVolumes() {
  Array list = Array::make();
  for (const Dictionary& entry : volumes) list.append(entry);
  write(paths.volumesSettings, list);
}

void WholeModel::purge() {
  volumes.erase(volumes.begin() + selected);
  // What is selected then is the entry in its place.
  if (selected >= static_cast<int>(volumes.size())) selected = -1;
  writeVolumes();
  rebuildVolumes();
}

void WholeModel::showOrHideSystemVolumes() {
  showsSystemVolumes = !showsSystemVolumes;
  rebuildVolumes();
}

}  // namespace corvane::test
