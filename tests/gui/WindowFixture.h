// The pane's window over its controls alone: no files, no tabs. For what the window itself does.
#pragma once

#include <memory>

#include "Events.h"
#include "PaneWindow.h"
#include "pane/PaneView.h"
#include "pane/SheetQueue.h"
#include "services/QtDialogs.h"
#include "support/TestPlatform.h"
#include "widgets/SheetHost.h"

namespace corvane::test {

class WindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    authorization.direct = true;
    window.bindFrameTo(view);
    window.bindHeaderTo(view);
    window.bindIconTo(view);
    showActive(window);
  }

  [[nodiscard]] QWidget* sheet() const { return window.sheets().current(); }

  RecordingAuthorization authorization;
  PaneView view{authorization};
  qt::PaneWindow window;
  qt::QtDialogs shown{window.sheets()};
  SheetQueue dialogs{shown, view.mainWindow};
};

}  // namespace corvane::test
