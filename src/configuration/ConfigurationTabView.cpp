#include "configuration/ConfigurationTabView.h"

namespace corvane {

ConfigurationTabView::ConfigurationTabView() {
  showRun(false);
  runClientButton.setToolTip("Examine this computer and report to the server at once");
  updateClientNowButton.setToolTip("Let the client look for a newer version of itself at once");
  runIntervalTextField.setToolTip("Whole hours from one run of the client to the next, 1 to 6");
  clientGroupTextField.setToolTip("The group in which the server lists this computer");
  clientGroupTextField.setPlaceholder("None");
  uninstallButton.setToolTip("Remove the client and all its settings, after a confirmation");

  runIntervalTextField.setAccessibleName("Run the client every so many hours");
  clientGroupTextField.setAccessibleName("Group of this computer");
}

void ConfigurationTabView::showRun(bool isInProgress) {
  runClientButton.setTitle(isInProgress ? "Running…" : "Run Client Now");
}

}  // namespace corvane
