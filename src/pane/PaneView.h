// The controls of the pane around its tabs: lock, header, version, tab view, window. Their texts are set
// here, once, for every shell.
#pragma once

#include "controls/AuthorizationView.h"
#include "controls/Button.h"
#include "controls/TabView.h"
#include "controls/TextField.h"
#include "controls/Window.h"
#include "pane/Deployment.h"

namespace corvane {

/// Width of a preference pane, in points.
inline constexpr double kPaneWidth = 668;

struct PaneView {
  explicit PaneView(AuthorizationServices& authorization);

  Window mainWindow{deployment::kPaneName};
  AuthorizationView authView;
  /// What could not be saved or started; hidden while all is well.
  TextField statusField{TextField::Role::Label};
  TabView tabView{{"Configuration", "Options", "Plugins"}};
  Button quorlenIconButton{ButtonKind::Label};
  Button greetingButton{ButtonKind::Label, "This computer is looked after by your support team."};
  Button urlButton{ButtonKind::Label};
  Button clientVersionButton{ButtonKind::Label};
};

}  // namespace corvane
