// Alerts as sheets of the pane's window, one modal alert panel, and the panel for opening files.
#pragma once

#include "platform/Dialogs.h"
#include "services/SheetStage.h"

namespace corvane::appkit {

class AppKitDialogs final : public Dialogs {
 public:
  /// Every sheet belongs to the one window of the stage.
  explicit AppKitDialogs(SheetStage& sheets) : sheets_(sheets) {}

  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override;
  [[nodiscard]] std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override;

 private:
  SheetStage& sheets_;
};

}  // namespace corvane::appkit
