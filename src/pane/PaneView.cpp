#include "pane/PaneView.h"

namespace corvane {

PaneView::PaneView(AuthorizationServices& authorization) : authView(authorization) {
  // The room that the header formula and the layout of the shells divide among the controls.
  tabView.setFrame({17, 45, kPaneWidth - 2 * 17, 420});
  greetingButton.setFrame({0, 480, kPaneWidth, 20});  // until the client's settings are read
  urlButton.setFrame({0, 480, 200, 20});
  statusField.setHidden(true);

  mainWindow.setAccessibleName(mainWindow.title());
  authView.setAccessibleName("Lock");
  tabView.setAccessibleName("Settings");
  quorlenIconButton.setAccessibleName("Client icon");
  urlButton.setToolTip("Contact support");
}

}  // namespace corvane
