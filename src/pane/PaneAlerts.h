// Alerts that more than one part of the pane shows.
#pragma once

#include <string>

#include "platform/Bundle.h"
#include "platform/Dialogs.h"

namespace corvane {

/// "%@ Removed" with the product's name.
[[nodiscard]] AlertDescription removedAlert(const std::string& productName);
/// "Error Reading Settings".
[[nodiscard]] AlertDescription settingsUnreadableAlert();
/// A warning with the one button "OK".
[[nodiscard]] AlertDescription warningAlert(std::string messageText, std::string informativeText);
/// The path of the pane's icon, which most alerts show.
[[nodiscard]] std::string iconPath(Bundle& bundle);
/// A question with the buttons `act` and "Cancel", the safe choice, which is the default: Return cancels.
[[nodiscard]] AlertDescription questionAlert(Bundle& bundle, std::string messageText,
                                             std::string informativeText, std::string act);
/// The same before something is removed.
[[nodiscard]] AlertDescription removalAlert(Bundle& bundle, std::string informativeText, std::string act);

}  // namespace corvane
