// An Options tab over a temporary client: its journal, its saved lists, its daemon, and short words to write
// them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "options/OptionsTabViewController.h"
#include "support/FakePane.h"
#include "support/TestPlatform.h"
#include "support/Values.h"

namespace corvane::test {

inline PropertyList list(std::initializer_list<PropertyList> elements) { return Array::make(elements); }

/// A description of a volume as the daemon writes it.
inline Dictionary described(const std::string& name, const std::string& path,
                            const std::string& kind = "apfs", std::int64_t size = 500'000'000'000) {
  return Dictionary::make({{"DAVolumeName", text(name)},
                           {"DAVolumePath", text(path)},
                           {"DAVolumeKind", text(kind)},
                           {"DAMediaSize", number(size)}});
}

/// A saved entry with the settings of a new volume.
inline Dictionary entry(const std::string& name, const std::string& path) {
  return Dictionary::make({{"VolumeName", text(name)},
                           {"VolumePath", text(path)},
                           {"MonitorPresence", flag(false)},
                           {"PresenceThreshold", number(5)},
                           {"MonitorUsage", flag(false)},
                           {"UsageThreshold", number(90)}});
}

class OptionsTabTest : public ::testing::Test {
 protected:
  OptionsTabTest() {
    platform_.layOutFolders();
    setDaemonRuns(true);
  }

  // The client's files.
  void setDaemonRuns(bool runs) {
    platform_.writeText(paths_.diskJournalPid, "4711\n");
    platform_.processes.text = runs ? "  PID\n    1\n 4711\n" : "  PID\n    1\n  815\n";
  }
  struct Device {
    std::string identifier;
    Dictionary current;
    bool mounted = true;
  };
  void writeJournal(const std::vector<Device>& devices) {
    Dictionary all = Dictionary::make();
    Array mounted = Array::make();
    for (const Device& device : devices) {
      all.set(device.identifier, Array::make({device.current}));
      if (device.mounted) mounted.append(text(device.identifier));
    }
    writeJournalPlist(Dictionary::make({{"Devices", all}, {"CurrentlyMountedVolumeDevices", mounted}}));
  }
  void writeJournalPlist(const PropertyList& journal) { platform_.writePlist(paths_.diskJournal, journal); }
  void writeSavedList(std::initializer_list<PropertyList> elements) {
    platform_.writePlist(paths_.volumesSettings, Array::make(elements));
  }

  // The tab.
  OptionsTabViewController& openTab() {
    closeTab();
    tab_ = std::make_unique<OptionsTabViewController>(platform_.platform, paths_, view_);
    tab_->awakeFromNib(pane_);
    return *tab_;
  }
  /// Opens it with the lock open.
  OptionsTabViewController& openUnlockedTab() {
    closeTab();
    pane_.setUnlocked(true);
    return openTab();
  }
  void closeTab() {
    pane_.forgetUnlockedObservers();
    tab_.reset();
  }

  // What is seen.
  [[nodiscard]] AttributedText label(int row) {
    const ObjectValue value = view_.volumesTable.objectValue(view_.volumesTable.columns().at(0), row);
    const auto* shown = std::get_if<AttributedText>(&value);
    return shown != nullptr ? *shown : AttributedText("(no text)");
  }
  [[nodiscard]] std::vector<std::string> labels() {
    std::vector<std::string> result;
    for (int row = 0; row < view_.volumesTable.numberOfRows(); ++row) result.push_back(label(row).text);
    return result;
  }
  [[nodiscard]] Dictionary entryAt(int row) { return tab_->catalogue().volumes().entryAtRow(row); }
  /// The list in the last write, which must be one of the volume list.
  [[nodiscard]] Array lastWrittenList() {
    if (pane_.writes.empty()) {
      ADD_FAILURE() << "nothing was written";
      return {};
    }
    EXPECT_EQ(pane_.writes.back().path, paths_.volumesSettings);
    return pane_.writes.back().values.asArray();
  }
  [[nodiscard]] std::size_t processListings() const { return platform_.processes.made; }

  TestPlatform platform_;
  const PathTable& paths_ = platform_.paths;
  FakePane pane_;
  Window window_{"Pane"};
  OptionsTabView view_{window_};
  std::unique_ptr<OptionsTabViewController> tab_;
};

}  // namespace corvane::test
