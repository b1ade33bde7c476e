// The pane's main view: greeting and support link above the tabs, the lock at the lower left, version and
// icon at the lower right, and the pages in the tabs.
#pragma once

#include "assembly/PaneAssembly.h"
#include "services/SheetStage.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class PaneFrame final : public Page {
 public:
  /// The assembly and the stage must live longer; the icon is shown at the lower right.
  PaneFrame(PaneAssembly& assembly, SheetStage& sheets, NSImage* icon);
  ~PaneFrame() override;

  /// The view of a control anywhere in the pane; nil when it has none.
  [[nodiscard]] NSView* viewOfAny(const Control& control) const;
  /// Has the Tab key go from the tabs through the page that is shown to the lock and on round the pane. To be
  /// called whenever the view has come into a window, which may have ordered its views by their places.
  void setTabKeys();

 private:
  void addHeader();
  void addStatus();
  void addFooter(NSImage* icon);
  void addTabs(PaneAssembly& assembly, SheetStage& sheets);

  PaneView& pane_;
  std::vector<std::unique_ptr<Page>> pages_;  // of the tabs, then of the sheets
};

}  // namespace corvane::appkit
