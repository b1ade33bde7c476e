// The actions of file and folder lists: a chosen path is added, an entry is removed after a confirmation.
//
// A removal has two steps with a sheet between them. The click keeps the clicked cell, whose title is the
// entry that goes; the list is the one below which the selected row stands when the sheet ends. Until then
// the rows are held, so that the selected row is still the one that was clicked.
#pragma once

#include <optional>
#include <string>

#include "controls/OutlineView.h"
#include "platform/LateCalls.h"
#include "platform/SystemLog.h"
#include "platform/TextComparison.h"
#include "plugins/PluginAlerts.h"
#include "plugins/PluginCatalogue.h"
#include "plugins/PluginPathChooser.h"
#include "plugins/PluginStorage.h"
#include "plugins/PluginTree.h"

namespace corvane {

class PluginLists {
 public:
  /// What the lists work with; all must outlive them.
  struct Surroundings {
    OutlineView& pluginsTable;
    const PluginCatalogue& catalogue;
    const PluginTree& tree;
    const PluginStorage& storage;
    const PluginPathChooser& chooser;
    PluginAlerts& alerts;
    SystemLog& log;
    TextComparison& texts;
  };
  explicit PluginLists(const Surroundings& surroundings) : with_(surroundings) {}
  PluginLists(const PluginLists&) = delete;
  PluginLists& operator=(const PluginLists&) = delete;

  // `sender` is the outline whose button was clicked.
  void addToFileArray(OutlineView& sender) { add(ChosenKind::File, sender); }
  void addToFolderArray(OutlineView& sender) { add(ChosenKind::Folder, sender); }
  void removeFromFileFolderArray(OutlineView& sender);

 private:
  void add(ChosenKind kind, OutlineView& sender);
  /// Makes the list the one in memory and the one in the contents, which are written, and shows it. The rows
  /// of the other options stay, so that this need not wait for rows that are held.
  void store(const Array& list, PluginOption& option, Dictionary& contents);
  void alertDidEndReturnCodeContextInfo(int returnCode);
  void doRemoveFromFileFolderArray();
  /// Why the entry could not be removed; nothing when it was.
  [[nodiscard]] std::optional<std::string> removeEntry(const std::string& title);

  Surroundings with_;
  CellReference removeFileFolderArrayCell_;
  LateCalls calls_;
};

}  // namespace corvane
