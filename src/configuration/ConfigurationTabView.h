// The controls of the Configuration tab: when the client and its updater last ran, the settings of the
// client, and the buttons that run, update and remove it. Their texts are set here, once, for every shell.
#pragma once

#include "controls/Button.h"
#include "controls/TextField.h"

namespace corvane {

struct ConfigurationTabView {
  ConfigurationTabView();
  /// The button that starts a run says while there is one that it runs.
  void showRun(bool isInProgress);

  TextField lastRunClientLabel{TextField::Role::Label, "Client last ran (GMT):"};
  TextField lastRunClientField{TextField::Role::Label, "Unknown"};
  Button runClientButton{ButtonKind::Push};  // titled by showRun

  TextField lastRunUpdaterLabel{TextField::Role::Label, "Last checked for updates (GMT):"};
  TextField lastRunUpdaterField{TextField::Role::Label, "Unknown"};
  Button updateClientNowButton{ButtonKind::Push, "Check for Updates Now"};

  TextField runIntervalLabel{TextField::Role::Label, "Run the client every:"};
  TextField runIntervalTextField{TextField::Role::Entry};
  TextField runIntervalUnit{TextField::Role::Label, "hours (1 to 6)"};

  TextField clientGroupLabel{TextField::Role::Label, "Group:"};
  TextField clientGroupTextField{TextField::Role::Entry};

  Button uninstallButton{ButtonKind::Push, "Uninstall…"};
  TextField removeClientField{TextField::Role::Label};  // filled by the controller
};

}  // namespace corvane
