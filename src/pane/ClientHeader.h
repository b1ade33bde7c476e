// The header of the pane: greeting, support link and version of the client, from its settings or their
// backup, and the addresses behind the link and the client icon. Part of the pane controller.
#pragma once

#include <optional>
#include <string>

#include "pane/PaneView.h"
#include "pane/PathTable.h"
#include "pane/QLDefaultsController.h"
#include "platform/Platform.h"

namespace corvane {

class ClientHeader {
 public:
  /// All must outlive the header.
  ClientHeader(Platform& platform, const PathTable& paths, PaneView& view)
      : platform_(platform), paths_(paths), view_(view) {}

  /// Shows what the settings hold or, where they hold nothing, their backup.
  void showClientSettings(const QLDefaultsController& settings, const QLDefaultsController& backup);
  /// Opens the support address.
  void urlButtonAction();
  /// Opens the computer's page at the reporting server, if the Control or the Option key is held.
  void quorlenIconButtonAction();

 private:
  void showFromSettings(const QLDefaultsController& settings);
  void showFromBackup(const QLDefaultsController& backup);
  /// Whether there is an address to show; the link's title is then set.
  bool showSupportAddress(const QLDefaultsController& store);
  void hideGreetingAndLink();
  void layOut();

  Platform& platform_;
  const PathTable& paths_;
  PaneView& view_;
  std::optional<std::string> supportAddress_;  // as last read
  std::string versionNumber_;                  // the text of the version button
};

}  // namespace corvane
