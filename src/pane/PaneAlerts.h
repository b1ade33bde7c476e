// Alerts that both the pane controller and the tab guard show.
#pragma once

#include <string>

#include "platform/Dialogs.h"

namespace corvane {

/// "%@ Removed" with the product's name.
[[nodiscard]] AlertDescription removedAlert(const std::string& productName);
/// "Error Reading Settings".
[[nodiscard]] AlertDescription settingsUnreadableAlert();
/// A warning with the one button "OK".
[[nodiscard]] AlertDescription warningAlert(std::string messageText, std::string informativeText);

}  // namespace corvane
