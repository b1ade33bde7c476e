#include "plugins/PluginLists.h"

#include <algorithm>
#include <memory>

#include "plugins/FileFolderList.h"
#include "values/Text.h"

namespace corvane {
namespace {

std::string withoutFirstCharacter(const std::string& text) {
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  return {std::find_if_not(text.begin() + 1, text.end(), continues), text.end()};
}

}  // namespace

void PluginLists::add(ChosenKind kind, OutlineView& sender) {
  const auto path = with_.chooser.choose(kind, sender);
  if (!path || !with_.storage.mayEdit()) return;
  PluginOption option = with_.tree.optionAboveSelectedRow(sender);
  if (!option) return;
  Dictionary contents = with_.storage.readForEdit(option);
  if (!contents) return;
  // Files are added to the list that was loaded, folders to the list as it is stored now; this is intended.
  Array list = kind == ChosenKind::File ? with_.catalogue.fileFolderArrayForEdit(option)
                                        : contents.array(option.storageKey());
  if (!list) return;
  const PropertyList entry = PropertyList::string(*path);
  if (list.contains(entry)) {
    with_.alerts.displayError(formatText("%@ already exists in the list.", {*path}));
    return;
  }
  list.append(entry);
  sortArrays(list, with_.texts);
  store(list, option, contents);
}

void PluginLists::store(const Array& list, PluginOption& option, Dictionary& contents) {
  contents.set(option.storageKey(), list);
  with_.storage.write(option, contents);
  option.setFileFolderArray(list);
  with_.pluginsTable.reloadData();
}

void PluginLists::removeFromFileFolderArray(OutlineView& sender) {
  removeFileFolderArrayCell_ = sender.selectedCell();
  if (removeFileFolderArrayCell_ == nullptr) {
    with_.alerts.displayError(
        "The selected cell could not be removed. Please reload the plugins and try again.");
    return;
  }
  // The platform may keep the call for longer than the sheet is open, and may never make it.
  const auto rows = std::make_shared<OutlineView::Hold>(with_.pluginsTable.holdRows());
  with_.alerts.confirmRemoval(calls_.wrap([this, rows](int returnCode) {
    alertDidEndReturnCodeContextInfo(returnCode);
    rows->reset();
  }));
}

void PluginLists::alertDidEndReturnCodeContextInfo(int returnCode) {
  if (returnCode != kAlertFirstButtonReturn || !with_.storage.mayEdit()) return;
  doRemoveFromFileFolderArray();
}

void PluginLists::doRemoveFromFileFolderArray() {
  // Two removals can wait for their sheets; the first that ends takes the cell of the last click.
  const auto reason = removeFileFolderArrayCell_ == nullptr
                          ? std::optional<std::string>("removeFileFolderArrayCell == nil)")
                          : removeEntry(titleOfButton(removeFileFolderArrayCell_));
  removeFileFolderArrayCell_ = nullptr;
  if (!reason) return;
  with_.log.write(*reason);
  with_.alerts.displayError(
      "There was an error trying to remove the selected file/folder. Please reload the plugin and try "
      "again.");
}

std::optional<std::string> PluginLists::removeEntry(const std::string& title) {
  if (utf16Length(title) <= 1) return "Cannot initialize removeTitle";
  const std::string entry = withoutFirstCharacter(title);
  if (entry.empty()) return "Cannot chop removeTitle";
  PluginOption option = with_.tree.optionAboveSelectedRow(with_.pluginsTable);
  if (!option) return "Cannot initialize parent";
  if (option.storagePath().empty()) return "Cannot initialize destination";
  Dictionary contents = with_.storage.read(option);
  if (!contents) return "Cannot initialize dict";
  Array list = contents.array(option.storageKey());
  if (!list) return "Cannot initialize list";
  list.removeAllEqualTo(PropertyList::string(entry));
  store(list, option, contents);
  return std::nullopt;
}

}  // namespace corvane
