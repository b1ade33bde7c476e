// The running pane: the services of the system and of the toolkit, the pane that is built over them, and its
// view.
#pragma once

#include <memory>

#include "PaneFrame.h"
#include "System.h"
#include "assembly/PaneAssembly.h"
#include "services/AppKitBundle.h"
#include "services/AppKitDialogs.h"
#include "services/AppKitWorkspace.h"
#include "services/SheetStage.h"

namespace corvane::appkit {

class AppKitPane {
 public:
  /// Makes the pane and its controls; nothing is read yet.
  explicit AppKitPane(NSBundle* bundle);

  /// The views, made when they are asked for first. To be there before the pane awakes, which measures some.
  [[nodiscard]] PaneFrame& frame();
  [[nodiscard]] SheetStage& sheets() { return sheets_; }
  [[nodiscard]] PaneAssembly& assembly() { return assembly_; }

 private:
  AppKitBundle bundle_;
  AppKitWorkspace workspace_;
  SheetStage sheets_;
  AppKitDialogs dialogs_;
  std::unique_ptr<System> system_;
  PaneAssembly assembly_;
  std::unique_ptr<PaneFrame> frame_;  // goes before the controls that it shows
};

}  // namespace corvane::appkit
