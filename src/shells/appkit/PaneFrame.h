// The pane's main view: greeting and support link above the tabs, the lock at the lower left, version and
// icon at the lower right, and the pages in the tabs.
#pragma once

#include "assembly/PaneAssembly.h"
#include "services/SheetStage.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class TabViewBinder;

class PaneFrame final : public Page {
 public:
  /// The assembly and the stage must live longer; the icon is shown at the lower right.
  PaneFrame(PaneAssembly& assembly, SheetStage& sheets, NSImage* icon);
  ~PaneFrame() override;

  /// The view of a control anywhere in the pane; nil when it has none.
  [[nodiscard]] NSView* viewOfAny(const Control& control) const;

 private:
  void addHeader(PaneView& view);
  void addStatus(PaneView& view);
  void setTabKeys(PaneView& view);
  void addFooter(PaneView& view, NSImage* icon);
  void addTabs(PaneAssembly& assembly, SheetStage& sheets);

  TabViewBinder* tabBinder_ = nullptr;        // one of the page's
  std::vector<std::unique_ptr<Page>> pages_;  // of the tabs, then of the sheets
};

}  // namespace corvane::appkit
