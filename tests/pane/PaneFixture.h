// The pane controller with recording tabs over the test platform.
#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "pane/CorvanePref.h"
#include "support/RecordingTabs.h"
#include "support/TestPlatform.h"

namespace corvane::test {

class PaneFixture : public ::testing::Test {
 protected:
  PaneFixture() {
    platform_.layOutFolders();
    writeSettings(Dictionary::make({{"Client_Version", PropertyList::string("5.1")}}));
  }

  void writeSettings(const Dictionary& settings) {
    platform_.writePlist(platform_.paths.clientSettings, settings);
  }

  /// Creates the pane and plays the host's life cycle.
  CorvanePref& load() {
    createPane();
    pane_->awakeFromNib();
    pane_->mainViewDidLoad();
    return *pane_;
  }
  CorvanePref& createPane() {
    pane_ = std::make_unique<CorvanePref>(
        platform_.platform, platform_.paths,
        CorvanePref::Outlets{view_, guard_, configuration_, options_, plugins_});
    return *pane_;
  }
  void openLock() { view_.authView.click(); }

  TestPlatform platform_;
  PaneView view_{platform_.authorization};
  MyTabViewController guard_{platform_.platform, platform_.paths, view_.tabView};
  TabCalls calls_;
  RecordingConfigurationTab configuration_{calls_};
  RecordingOptionsTab options_{calls_};
  RecordingPluginsTab plugins_{calls_};
  std::unique_ptr<CorvanePref> pane_;

  const TabCalls allRefreshed_{"configuration.refresh", "options.refresh", "plugins.refresh"};
};

}  // namespace corvane::test
