// The actions of file and folder pickers: one path, chosen in an open panel.
#pragma once

#include "controls/OutlineView.h"
#include "plugins/PluginPathChooser.h"
#include "plugins/PluginStorage.h"
#include "plugins/PluginTree.h"

namespace corvane {

class PluginPickers {
 public:
  /// All must outlive the pickers.
  PluginPickers(const PluginTree& tree, const PluginStorage& storage, const PluginPathChooser& chooser)
      : tree_(tree), storage_(storage), chooser_(chooser) {}

  // `sender` is the outline whose button was clicked; its selected row tells the option.
  void getNewFile(OutlineView& sender) const { storeChoice(ChosenKind::File, sender); }
  void getNewDirectory(OutlineView& sender) const { storeChoice(ChosenKind::Folder, sender); }

 private:
  void storeChoice(ChosenKind kind, OutlineView& sender) const;

  const PluginTree& tree_;
  const PluginStorage& storage_;
  const PluginPathChooser& chooser_;
};

}  // namespace corvane
