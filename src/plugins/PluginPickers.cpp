#include "plugins/PluginPickers.h"

namespace corvane {

void PluginPickers::storeChoice(ChosenKind kind, OutlineView& sender) const {
  const auto path = chooser_.choose(kind, sender);
  if (!path || !storage_.mayEdit()) return;
  const PluginOption option = tree_.optionAboveSelectedRow(sender);
  if (!option) return;
  Dictionary contents = storage_.readForEdit(option);
  if (!contents) return;
  contents.set(option.storageKey(), PropertyList::string(*path));
  storage_.write(option, contents);
  sender.reloadItem(sender.itemAtRow(sender.selectedRow()));
}

}  // namespace corvane
