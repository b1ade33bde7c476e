#include "plugins/PluginsTabViewController.h"

#include "pane/OpenAddress.h"
#include "plugins/PluginRowHeights.h"

namespace corvane {

PluginsTabViewController::PluginsTabViewController(Platform& platform, const PathTable& paths,
                                                   PluginsTabView& view)
    : platform_(platform),
      pluginsTable_(view.pluginsTable),
      storage_(platform, paths),
      catalogue_(platform, paths, storage_),
      tree_(catalogue_, pluginsTable_, platform.log),
      values_(catalogue_, tree_, storage_, platform.log),
      alerts_(platform.dialogs, platform.bundle),
      chooser_(platform.dialogs, paths),
      pickers_(tree_, storage_, chooser_),
      lists_({pluginsTable_, catalogue_, tree_, storage_, chooser_, alerts_, platform.log, platform.texts}),
      validation_(tree_, paths, alerts_, platform.log),
      cells_(tree_, storage_, platform.log, cellActions()) {}

PluginsTabViewController::~PluginsTabViewController() {
  pluginsTable_.setDataSource(nullptr);
  pluginsTable_.setDelegate(nullptr);
}

PluginCellActions PluginsTabViewController::cellActions() {
  return {[this](OutlineView& sender) { pickers_.getNewFile(sender); },
          [this](OutlineView& sender) { pickers_.getNewDirectory(sender); },
          [this](OutlineView& sender) { lists_.addToFileArray(sender); },
          [this](OutlineView& sender) { lists_.addToFolderArray(sender); },
          [this](OutlineView& sender) { lists_.removeFromFileFolderArray(sender); },
          [this](OutlineView& sender) { validation_.runPluginValidation(sender); },
          [this](OutlineView& sender) { myOpenURL(sender); }};
}

void PluginsTabViewController::awakeFromNib(PaneServices& pane) {
  quorlenPrefPane_ = &pane;
  storage_.setPane(pane);
  validation_.setPane(pane);
  pluginsTable_.setDataSource(this);
  pluginsTable_.setDelegate(this);
  pluginsTable_.setHighlightsSelection(false);
  pane.addUnlockedObserver(*this);
  refresh();
}

void PluginsTabViewController::refresh() {
  if (pluginsTable_.holdsRows()) {
    catalogue_.setOutOfDate();
    return;
  }
  catalogue_.refresh();
  pluginsTable_.reloadData();
}

void PluginsTabViewController::outlineViewDidReleaseRows(OutlineView& /*outline*/) {
  if (catalogue_.isOutOfDate()) refresh();
}

void PluginsTabViewController::unlockedDidChange() { pluginsTable_.setEnabled(quorlenPrefPane_->unlocked()); }

int PluginsTabViewController::outlineViewNumberOfChildrenOfItem(OutlineView& /*outline*/,
                                                                const OutlineItem& item) {
  return tree_.numberOfChildrenOfItem(item);
}

bool PluginsTabViewController::outlineViewIsItemExpandable(OutlineView& /*outline*/,
                                                           const OutlineItem& item) {
  return tree_.isItemExpandable(item);
}

PropertyList PluginsTabViewController::outlineViewChildOfItem(OutlineView& /*outline*/, int index,
                                                              const OutlineItem& item) {
  return tree_.childOfItem(index, item);
}

int PluginsTabViewController::outlineViewKindOfChild(OutlineView& /*outline*/, const PropertyList& child,
                                                     const OutlineItem& parent) {
  return PluginTree::kindOfChild(child, parent);
}

std::string PluginsTabViewController::outlineViewPersistentNameForItem(OutlineView& /*outline*/,
                                                                       const OutlineItem& item) {
  return PluginTree::persistentNameForItem(item);
}

ObjectValue PluginsTabViewController::outlineViewObjectValueForTableColumnByItem(OutlineView& /*outline*/,
                                                                                 const TableColumn& column,
                                                                                 const OutlineItem& item) {
  return values_.objectValue(column, item);
}

void PluginsTabViewController::outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline,
                                                                             const PropertyList& value,
                                                                             const TableColumn& column,
                                                                             const OutlineItem& item) {
  values_.setObjectValue(outline, value, column, item);
}

void PluginsTabViewController::outlineViewItemDidExpand(OutlineView& outline, const OutlineItem& item) {
  if (PluginTree::isPlugin(item)) outline.expandItem(item, true);
}

bool PluginsTabViewController::outlineViewShouldEditTableColumnItem(OutlineView& /*outline*/,
                                                                    const TableColumn& column,
                                                                    const OutlineItem& item) {
  return values_.shouldEdit(column, item);
}

CellReference PluginsTabViewController::outlineViewDataCellForTableColumnItem(OutlineView& /*outline*/,
                                                                              const TableColumn* column,
                                                                              const OutlineItem& item) {
  return cells_.dataCell(column, item);
}

double PluginsTabViewController::outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem& item) {
  return pluginRowHeight(tree_, platform_.workspace, outline.rowHeight(), item);
}

bool PluginsTabViewController::outlineViewShouldShowOutlineCellForItem(OutlineView& /*outline*/,
                                                                       const OutlineItem& item) {
  return PluginTree::isPlugin(item);
}

void PluginsTabViewController::outlineViewWillDisplayCellForTableColumnItem(OutlineView& /*outline*/,
                                                                            Cell& cell,
                                                                            const TableColumn& column,
                                                                            const OutlineItem& item) {
  cells_.willDisplayCell(cell, column, item);
}

void PluginsTabViewController::myOpenURL(OutlineView& sender) {
  const std::string address = titleOfButton(sender.selectedCell());
  if (!address.empty()) openAddress(platform_, address);
}

}  // namespace corvane
