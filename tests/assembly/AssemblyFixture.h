// The whole pane over the test platform: a small installed client with every tab's files.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assembly/PaneAssembly.h"
#include "support/TestPlatform.h"

namespace corvane::test {

class AssemblyFixture : public ::testing::Test {
 protected:
  AssemblyFixture() {
    platform_.layOutFolders();
    platform_.fileEventQueues.exists = [this](const std::string& path) {
      return platform_.files.exists(path);
    };
    writeSettings("lab", "5.1");
    platform_.writePlist(paths_.timeMachineSettings, Dictionary::make({{"Manual_Run_Hour", text("13")}}));
    platform_.writePlist(paths_.plugins + "/check_x.plist",
                         Dictionary::make({{"PluginName", text("Check X")},
                                           {"PluginOptions", Array::make({checkBoxOption()})}}));
    platform_.writePlist(paths_.pluginSupport + "/check_x_settings.plist",
                         Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)}}));
  }

  static PropertyList text(std::string value) { return PropertyList::string(std::move(value)); }
  static Dictionary checkBoxOption() {
    return Dictionary::make(
        {{"SettingTitle", text("Title")},
         {"SettingTitleHint", text("Hint")},
         {"SettingType", Dictionary::make({{"Type", text("Checkbox")}, {"Value", text("Positive")}})},
         {"SettingStoragePath", text("/Library/Corvane/PluginSupport/check_x.storage.plist")},
         {"SettingStorageKey", text("Some_Key")}});
  }
  void writeSettings(const std::string& group, const std::string& version) {
    platform_.writePlist(paths_.clientSettings, Dictionary::make({{"Client_Version", text(version)},
                                                                  {"ClientGroup", text(group)},
                                                                  {"Unknown", text("kept")}}));
  }

  PaneAssembly& load() {
    assembly_ = std::make_unique<PaneAssembly>(platform_.platform, platform_.root.path());
    assembly_->load();
    return *assembly_;
  }
  PaneAssembly& loadUnlocked() {
    load().view().authView.click();
    return *assembly_;
  }
  /// The path vanishes, and whoever watches it hears of it.
  void removeWatched(const std::string& path) {
    platform_.remove(path);
    platform_.fileEventQueues.fire(path);
  }
  /// The order in which these files were read, each counted at its first reading since `from`.
  std::vector<std::string> readingOrder(std::size_t from, const std::vector<std::string>& files) const {
    std::vector<std::string> order;
    const auto& reads = platform_.propertyLists.reads;
    for (auto read = reads.begin() + static_cast<std::ptrdiff_t>(from); read != reads.end(); ++read) {
      const bool wanted = std::find(files.begin(), files.end(), *read) != files.end();
      if (wanted && std::find(order.begin(), order.end(), *read) == order.end()) order.push_back(*read);
    }
    return order;
  }

  TestPlatform platform_;
  const PathTable& paths_ = platform_.paths;
  std::unique_ptr<PaneAssembly> assembly_;
};

}  // namespace corvane::test
