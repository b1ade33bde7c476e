// Feeds the Options tab a disk journal, a saved file, a pid file and a process listing, then does in it
// whatever a user can do. The saved file stands for the list of volumes and for each of the other settings
// files. What is written must be a whole list or dictionary that has lost nothing of the file before it.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzPlatform.h"
#include "options/OptionsTabViewController.h"
#include "options/VolumeKeys.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace fuzz;

constexpr int kMostRows = 12;
constexpr std::size_t kMostElements = 60;  // of a list that is compared element by element

/// The parts of an input stand one after the other with this line between them, so that a seed can be
/// written by hand.
constexpr std::string_view kBetweenParts = "\n--\n";
struct Input {
  explicit Input(std::string_view bytes) {
    for (std::string_view* part : {&journal, &saved, &pid}) {
      const std::size_t end = bytes.find(kBetweenParts);
      *part = bytes.substr(0, end);
      bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + kBetweenParts.size());
    }
    processes = bytes;
  }
  std::string_view journal;
  std::string_view saved;
  std::string_view pid;
  std::string_view processes;
};

struct PidFile final : Files {
  explicit PidFile(std::string_view contents) : text(contents) {}
  bool exists(const std::string&) override { return true; }
  ModificationDate modificationDate(const std::string&) override { return {}; }
  std::optional<std::string> contents(const std::string&, std::size_t) override { return text; }
  std::optional<std::vector<std::string>> walk(const std::string&) override { return std::nullopt; }
  std::string text;
};

struct Processes final : ProcessListing {
  explicit Processes(std::string_view output) : listing(output) {}
  std::optional<std::string> listProcesses() override { return listing; }
  std::string listing;
};

/// Files in memory, which only the pane writes.
struct MemoryFiles final : PropertyListFiles {
  explicit MemoryFiles(const Input& given) : input(given) {}
  PropertyList read(const std::string& path) override {
    if (path == paths.diskJournal) return readPropertyList(input.journal);
    const auto file = written.find(path);
    return readPropertyList(file != written.end() ? std::string_view(file->second) : input.saved);
  }
  Result write(const std::string&, const PropertyList&) override { std::abort(); }

  const Input& input;
  PathTable paths;
  std::map<std::string, std::string> written;
};

void require(bool holds) {
  if (!holds) std::abort();
}

/// What the pane does not know of an entry.
Dictionary unknownPart(const Dictionary& entry) {
  Dictionary part = entry.shallowCopy();
  for (const char* key :
       {volume_key::kName, volume_key::kPath, volume_key::kMonitorPresence, volume_key::kPresenceThreshold,
        volume_key::kMonitorUsage, volume_key::kUsageThreshold}) {
    part.remove(key);
  }
  return part;
}

/// Every element of the old list that is not an entry, and the unknown part of every one that is, must be
/// among the new ones; a purge takes one entry.
void requireNothingLost(const Array& before, const Array& after, std::size_t purged) {
  if (before.size() > kMostElements) return;
  std::vector<PropertyList> left;
  for (const PropertyList& element : after.elements()) {
    const Dictionary entry = element.asDictionary();
    left.push_back(entry ? unknownPart(entry) : element);
  }
  std::size_t missing = 0;
  for (const PropertyList& element : before.elements()) {
    const Dictionary entry = element.asDictionary();
    const auto found = std::ranges::find(left, entry ? unknownPart(entry) : element);
    if (found == left.end()) {
      require(static_cast<bool>(entry));
      ++missing;
    } else {
      left.erase(found);
    }
  }
  require(missing <= purged);
}

/// Keeps what is written, when it can be written, and checks it against the file before.
struct CheckingPane final : PaneServices {
  explicit CheckingPane(MemoryFiles& memory) : files(memory) {}
  bool unlocked() const override { return true; }
  void addUnlockedObserver(UnlockedObserver& observer) override { observer.unlockedDidChange(); }
  void setPlistFileValues(const std::string& path, const PropertyList& values) override {
    const PropertyList before = files.read(path);
    if (path == files.paths.volumesSettings) {
      require(static_cast<bool>(values.asArray()));
      requireNothingLost(before.asArray(), values.asArray(), purging ? 1 : 0);
    } else {
      require(path != files.paths.diskJournal && static_cast<bool>(values.asDictionary()));
      for (const auto& [key, value] : before.asDictionary().entries()) {
        require(values.asDictionary().contains(key));
      }
    }
    if (auto xml = writeXmlPropertyList(values)) files.written[path] = *std::move(xml);
  }
  Dictionary readRootFile(const std::string&) override { std::abort(); }
  void executeQLHelperArguments(const std::string&, const std::vector<std::string>&) override {
    std::abort();
  }
  std::optional<std::string> validatePluginWithArguments(const std::string&,
                                                         const std::vector<std::string>&) override {
    std::abort();
  }
  MemoryFiles& files;
  bool purging = false;
};

struct FuzzedTab {
  explicit FuzzedTab(std::string_view bytes) : input(bytes) { tab.awakeFromNib(pane); }

  void doEverything() {
    showEveryRow();
    view.showAllVolumeTypesButton.click();
    showEveryRow();
    for (int row = 0; row < rowsToVisit(); ++row) editRow(row);
    useTheRowsBelow();
    tab.refresh();
    for (int row = rowsToVisit() - 1; row >= 0; row -= 2) purge(row);
  }

  [[nodiscard]] int rowsToVisit() const { return std::min(kMostRows, view.volumesTable.numberOfRows()); }

  void showEveryRow() {
    const TableView& table = view.volumesTable;
    require(table.selectedRow() < std::max(table.numberOfRows(), 1));
    for (int row = 0; row < rowsToVisit(); ++row) {
      for (const TableColumn& column : table.columns()) {
        (void)table.objectValue(column, row);
        (void)table.toolTip(column, row);
      }
    }
  }
  void editRow(int row) {
    view.volumesTable.clickRow(row);
    view.monitorPresenceCheckbox.click();
    view.monitorUsageCheckbox.click();
    for (TextField* field : {&view.monitorPresenceThresholdTextField, &view.monitorUsageThresholdTextField}) {
      for (const char* typed : {"7", "0", "99", "", "x"}) field->typeText(typed);
      field->endEditing();
    }
  }
  void useTheRowsBelow() {
    for (Button* button : {&view.bootVolumeWarningCheckbox, &view.bootVolumeWarningTrailingButton,
                           &view.timeMachineWarningCheckbox, &view.timeMachineWarningTrailingButton,
                           &view.automountCheckbox, &view.advancedButton}) {
      button->click();
    }
    view.timeMachineInactiveTextField.typeText("12");
    view.timeMachineInactiveTextField.endEditing();
    view.timeOfDayTextField.typeText("11");
    view.amPmButton.choose(1);
    view.sheetOkButton.click();
  }
  void purge(int row) {
    view.volumesTable.clickRow(row);
    pane.purging = true;
    view.purgeButton.click();
    pane.purging = false;
  }

  Input input;
  MemoryLog log;
  PidFile files{input.pid};
  MemoryFiles propertyLists{input};
  NoRunLoop runLoop;
  NoDirectoryEvents directoryEvents;
  NoFileEventQueues fileEventQueues;
  NoAuthorization authorization;
  Processes processes{input.processes};
  WillingDialogs dialogs;
  PlainWorkspace workspace;
  AsciiTexts texts;
  PlainBundle bundle;
  Platform platform{log,           files,     propertyLists, runLoop, directoryEvents, fileEventQueues,
                    authorization, processes, texts,         dialogs, workspace,       bundle};
  PathTable paths;
  CheckingPane pane{propertyLists};
  Window window{"Pane"};
  OptionsTabView view{window};
  OptionsTabViewController tab{platform, paths, view};
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::FuzzedTab tab(std::string_view(reinterpret_cast<const char*>(data), size));
  tab.doEverything();
  return 0;
}
