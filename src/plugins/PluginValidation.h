// The action of "Test Settings": runs the plug-in once in its test mode, as root, and shows what it says. The
// settings as they stand in the tab are on disk already, so they are what the plug-in tests.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/OutlineView.h"
#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "platform/SystemLog.h"
#include "plugins/HelperReply.h"
#include "plugins/PluginAlerts.h"
#include "plugins/PluginTree.h"

namespace corvane {

/// Whether the first of a plug-in's program arguments names something below the plug-ins folder by itself:
/// ".." parts are refused even where they would lead back, since a link before them could lead anywhere.
[[nodiscard]] bool isBelowPluginsFolder(const std::string& executable);

class PluginValidation {
 public:
  /// All must outlive the validation.
  PluginValidation(const PluginTree& tree, const PathTable& paths, PluginAlerts& alerts, SystemLog& log)
      : tree_(tree), paths_(paths), alerts_(alerts), log_(log) {}
  /// Who runs the plug-in; until it is given nothing runs. Must outlive the validation.
  void setPane(PaneServices& pane) { quorlenPrefPane_ = &pane; }

  /// Blocks until the plug-in has printed something. A plug-in without an executable does nothing; one whose
  /// executable is not named below the plug-ins folder is refused with a line in the log.
  void runPluginValidation(OutlineView& sender);
  /// What the plug-in said the last time; nothing when it was not run, or gave no readable result.
  [[nodiscard]] const std::optional<HelperReply>& verdict() const { return verdict_; }

 private:
  /// The full path of the executable, the definition's further arguments and the test-mode switch; nothing
  /// when the plug-in can't be run.
  [[nodiscard]] std::optional<std::vector<std::string>> commandLine(const Dictionary& plugin) const;
  void show(const std::optional<std::string>& reply);

  const PluginTree& tree_;
  const PathTable& paths_;
  PluginAlerts& alerts_;
  SystemLog& log_;
  PaneServices* quorlenPrefPane_ = nullptr;
  std::optional<HelperReply> verdict_;
};

}  // namespace corvane
