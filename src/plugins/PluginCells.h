// Which cell a row of the outline gets in which column, and how it is dressed just before it is drawn. Cells
// are made afresh on every request. Called by the tab's controller for the outline.
#pragma once

#include <functional>
#include <string>

#include "controls/OutlineView.h"
#include "platform/SystemLog.h"
#include "plugins/PluginStorage.h"
#include "plugins/PluginTree.h"

namespace corvane {

/// What the buttons in the cells do; each is called with the outline whose cell was clicked.
struct PluginCellActions {
  using Action = std::function<void(OutlineView&)>;
  Action getNewFile;
  Action getNewDirectory;
  Action addToFileArray;
  Action addToFolderArray;
  Action removeFromFileFolderArray;
  Action runPluginValidation;
  Action myOpenURL;
};

class PluginCells {
 public:
  /// All references must outlive the cells.
  PluginCells(const PluginTree& tree, const PluginStorage& storage, SystemLog& log, PluginCellActions actions)
      : tree_(tree), storage_(storage), log_(log), actions_(std::move(actions)) {}

  /// `column` is null for a row of full width. Null stands for the column's default cell.
  [[nodiscard]] CellReference dataCell(const TableColumn* column, const OutlineItem& item) const;
  /// Sets what is read from the storage file when the row is drawn, and the styled titles.
  void willDisplayCell(Cell& cell, const TableColumn& column, const OutlineItem& item) const;

 private:
  [[nodiscard]] CellReference valueCell(const PluginOption& option, const OutlineItem& item) const;
  /// An entry of a list, or the row with which one is added.
  [[nodiscard]] CellReference entryCell(const std::string& entry, const FileTypeIcon& addIcon,
                                        const PluginCellActions::Action& add) const;
  [[nodiscard]] CellReference numberCell(const PluginOption& option) const;
  void dressValueCell(Cell& cell, const PluginOption& option, const OutlineItem& item) const;

  const PluginTree& tree_;
  const PluginStorage& storage_;
  SystemLog& log_;
  PluginCellActions actions_;
};

}  // namespace corvane
