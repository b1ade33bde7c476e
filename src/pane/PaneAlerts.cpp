#include "pane/PaneAlerts.h"

#include <utility>

#include "values/Text.h"

namespace corvane {

AlertDescription warningAlert(std::string messageText, std::string informativeText) {
  AlertDescription alert;
  alert.style = AlertStyle::Warning;
  alert.messageText = std::move(messageText);
  alert.informativeText = std::move(informativeText);
  alert.buttons = {{"OK", std::nullopt}};
  return alert;
}

std::string iconPath(Bundle& bundle) { return bundle.pathForResource("Corvane", "icns"); }

AlertDescription questionAlert(Bundle& bundle, std::string messageText, std::string informativeText,
                               std::string act) {
  AlertDescription alert;
  alert.style = AlertStyle::Critical;
  alert.messageText = std::move(messageText);
  alert.informativeText = std::move(informativeText);
  alert.buttons = {{std::move(act), ""}, {"Cancel", kReturnKey, true}};
  alert.iconPath = iconPath(bundle);
  return alert;
}

AlertDescription removalAlert(Bundle& bundle, std::string informativeText, std::string act) {
  return questionAlert(bundle, "Please confirm removal.", std::move(informativeText), std::move(act));
}

AlertDescription removedAlert(const std::string& productName) {
  return warningAlert(
      formatText("%@ Removed", {productName}),
      formatText("The %@ has been removed. Please choose another pane or quit System Preferences.",
                 {productName}));
}

AlertDescription settingsUnreadableAlert() {
  return warningAlert(
      "Error Reading Settings",
      "The client settings could not be read. Please click the lock to authorize and attempt to fix the "
      "settings.");
}

}  // namespace corvane
