// The Plugins tab: shows the client's check plug-ins that ask to be shown, lets the user enable and disable
// them and edit their settings. The data source and delegate of the tab's outline; each subject is a
// collaborator in a file of its own, and this class ties them together.
//
// The outline is enabled exactly while the lock is open: rows can be expanded, read and scrolled at any time,
// but edits, buttons and links do nothing while it is closed.
#pragma once

#include <string>

#include "controls/OutlineView.h"
#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "pane/Tabs.h"
#include "platform/Platform.h"
#include "plugins/PluginAlerts.h"
#include "plugins/PluginCatalogue.h"
#include "plugins/PluginCells.h"
#include "plugins/PluginLists.h"
#include "plugins/PluginPathChooser.h"
#include "plugins/PluginPickers.h"
#include "plugins/PluginStorage.h"
#include "plugins/PluginTree.h"
#include "plugins/PluginValidation.h"
#include "plugins/PluginValues.h"
#include "plugins/PluginsTabView.h"

namespace corvane {

class PluginsTabViewController final : public PluginsTab,
                                       public OutlineViewDataSource,
                                       public OutlineViewDelegate,
                                       private UnlockedObserver {
 public:
  /// All must outlive the controller.
  PluginsTabViewController(Platform& platform, const PathTable& paths, PluginsTabView& view);
  PluginsTabViewController(const PluginsTabViewController&) = delete;
  PluginsTabViewController& operator=(const PluginsTabViewController&) = delete;
  ~PluginsTabViewController() override;

  /// Called once, when the view is loaded: takes over the outline and fills it. The pane must outlive the
  /// controller, and the controller must live as long as the pane changes its lock.
  void awakeFromNib(PaneServices& pane);
  /// Loads the plug-ins anew, and with them all rows: nothing of the former tree survives, neither expansion
  /// nor selection. While the user is in the middle of an act on a row both wait, and are made up for
  /// together when it ends.
  void refresh() override;

  [[nodiscard]] const PluginCatalogue& catalogue() const { return catalogue_; }
  [[nodiscard]] const PluginTree& tree() const { return tree_; }
  [[nodiscard]] const PluginValidation& validation() const { return validation_; }

  int outlineViewNumberOfChildrenOfItem(OutlineView& outline, const OutlineItem& item) override;
  bool outlineViewIsItemExpandable(OutlineView& outline, const OutlineItem& item) override;
  PropertyList outlineViewChildOfItem(OutlineView& outline, int index, const OutlineItem& item) override;
  int outlineViewKindOfChild(OutlineView& outline, const PropertyList& child,
                             const OutlineItem& parent) override;
  std::string outlineViewPersistentNameForItem(OutlineView& outline, const OutlineItem& item) override;
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView& outline, const TableColumn& column,
                                                         const OutlineItem& item) override;
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline, const PropertyList& value,
                                                     const TableColumn& column,
                                                     const OutlineItem& item) override;

  /// A plug-in row that is expanded opens all its options with it.
  void outlineViewItemDidExpand(OutlineView& outline, const OutlineItem& item) override;
  bool outlineViewShouldEditTableColumnItem(OutlineView& outline, const TableColumn& column,
                                            const OutlineItem& item) override;
  CellReference outlineViewDataCellForTableColumnItem(OutlineView& outline, const TableColumn* column,
                                                      const OutlineItem& item) override;
  double outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem& item) override;
  /// Only plug-in rows show a triangle: options are opened together with their plug-in.
  bool outlineViewShouldShowOutlineCellForItem(OutlineView& outline, const OutlineItem& item) override;
  void outlineViewWillDisplayCellForTableColumnItem(OutlineView& outline, Cell& cell,
                                                    const TableColumn& column,
                                                    const OutlineItem& item) override;
  std::shared_ptr<const void> outlineViewWillDrawRows(OutlineView& /*outline*/) override {
    return storage_.readOnce();
  }
  void outlineViewDidReleaseRows(OutlineView& outline) override;

  /// Opens the address that the clicked link shows.
  void myOpenURL(OutlineView& sender);

 private:
  [[nodiscard]] PluginCellActions cellActions();
  void unlockedDidChange() override;

  Platform& platform_;
  OutlineView& pluginsTable_;
  PaneServices* quorlenPrefPane_ = nullptr;

  PluginStorage storage_;
  PluginCatalogue catalogue_;
  PluginTree tree_;
  PluginValues values_;
  PluginAlerts alerts_;
  PluginPathChooser chooser_;
  PluginPickers pickers_;
  PluginLists lists_;
  PluginValidation validation_;
  PluginCells cells_;
};

}  // namespace corvane
