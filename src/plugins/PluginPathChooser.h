// Lets the user choose one file or folder for the clicked picker or list.
#pragma once

#include <optional>
#include <string>

#include "controls/OutlineView.h"
#include "pane/PathTable.h"
#include "platform/Dialogs.h"

namespace corvane {

enum class ChosenKind { File, Folder };

/// The title of the button cell; empty for none and for a cell of another kind.
[[nodiscard]] std::string titleOfButton(const CellReference& cell);

class PluginPathChooser {
 public:
  /// Both must outlive the chooser.
  PluginPathChooser(Dialogs& dialogs, const PathTable& paths) : dialogs_(dialogs), paths_(paths) {}

  /// Runs the open panel, starting where the path in the clicked cell's title lies, and blocks; the tab may
  /// have been refreshed meanwhile. Answers with the chosen path as the client knows it; nothing when it was
  /// cancelled.
  [[nodiscard]] std::optional<std::string> choose(ChosenKind kind, const OutlineView& sender) const;

 private:
  Dialogs& dialogs_;
  const PathTable& paths_;
};

}  // namespace corvane
