// Tabs that record what the pane asks of them.
#pragma once

#include <string>
#include <vector>

#include "pane/Tabs.h"

namespace corvane::test {

/// What was asked, in order, e.g. "configuration.refresh".
using TabCalls = std::vector<std::string>;

class RecordingConfigurationTab final : public ConfigurationTab {
 public:
  explicit RecordingConfigurationTab(TabCalls& calls) : calls_(calls) {}
  void refresh() override { calls_.emplace_back("configuration.refresh"); }
  bool errorLoadingPlists() override {
    calls_.emplace_back("configuration.errorLoadingPlists");
    return error;
  }
  void updateLastRunTime() override { calls_.emplace_back("configuration.updateLastRunTime"); }
  void updateLastUpdateTime() override { calls_.emplace_back("configuration.updateLastUpdateTime"); }
  bool error = false;

 private:
  TabCalls& calls_;
};

class RecordingOptionsTab final : public OptionsTab {
 public:
  explicit RecordingOptionsTab(TabCalls& calls) : calls_(calls) {}
  void refresh() override { calls_.emplace_back("options.refresh"); }
  bool errorLoadingPlists() override {
    calls_.emplace_back("options.errorLoadingPlists");
    return error;
  }
  void refreshAutomountDisk() override { calls_.emplace_back("options.refreshAutomountDisk"); }
  void refreshTimeMachine() override { calls_.emplace_back("options.refreshTimeMachine"); }
  void refreshDiskFree() override { calls_.emplace_back("options.refreshDiskFree"); }
  void refreshVolumes() override { calls_.emplace_back("options.refreshVolumes"); }
  bool error = false;

 private:
  TabCalls& calls_;
};

class RecordingPluginsTab final : public PluginsTab {
 public:
  explicit RecordingPluginsTab(TabCalls& calls) : calls_(calls) {}
  void refresh() override { calls_.emplace_back("plugins.refresh"); }

 private:
  TabCalls& calls_;
};

}  // namespace corvane::test
