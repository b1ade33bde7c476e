#include "plugins/PluginPathChooser.h"

#include <variant>

#include "values/Text.h"

namespace corvane {

std::string titleOfButton(const CellReference& cell) {
  const auto* button = cell != nullptr ? std::get_if<ButtonCell>(cell.get()) : nullptr;
  return button != nullptr ? button->title.text : std::string();
}

std::optional<std::string> PluginPathChooser::choose(ChosenKind kind, const OutlineView& sender) const {
  const std::string title = titleOfButton(sender.selectedCell());
  OpenPanelDescription panel;
  panel.canChooseFiles = kind == ChosenKind::File;
  panel.canChooseDirectories = kind == ChosenKind::Folder;
  panel.allowsMultipleSelection = false;
  // A title that is no path (the row that adds, an empty picker) leaves the choice of the folder to the
  // platform.
  panel.directory = paths_.onDisk(kind == ChosenKind::File ? deletingLastPathComponent(title) : title);
  const auto chosen = dialogs_.runOpenPanel(panel);
  if (chosen.empty()) return std::nullopt;
  return paths_.onClient(chosen.front());
}

}  // namespace corvane
