// What the pane controller asks of its three tabs. Each operation that refreshes or updates reads the files
// that it is about again and shows what they hold now.
#pragma once

namespace corvane {

class ConfigurationTab {
 public:
  virtual ~ConfigurationTab() = default;
  virtual void refresh() = 0;
  /// Whether a settings store of the tab could not be read.
  [[nodiscard]] virtual bool errorLoadingPlists() = 0;
  virtual void updateLastRunTime() = 0;
  virtual void updateLastUpdateTime() = 0;
};

class OptionsTab {
 public:
  virtual ~OptionsTab() = default;
  virtual void refresh() = 0;
  /// Whether a settings store of the tab could not be read.
  [[nodiscard]] virtual bool errorLoadingPlists() = 0;
  virtual void refreshAutomountDisk() = 0;
  virtual void refreshTimeMachine() = 0;
  virtual void refreshDiskFree() = 0;
  virtual void refreshVolumes() = 0;
};

class PluginsTab {
 public:
  virtual ~PluginsTab() = default;
  virtual void refresh() = 0;
};

}  // namespace corvane
