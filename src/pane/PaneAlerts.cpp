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
