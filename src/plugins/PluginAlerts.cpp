#include "plugins/PluginAlerts.h"

#include <utility>

#include "pane/PaneAlerts.h"
#include "plugins/PluginVerdict.h"

namespace corvane {

AlertDescription PluginAlerts::alert(AlertStyle style, std::string messageText) const {
  AlertDescription description;
  description.style = style;
  description.messageText = std::move(messageText);
  description.iconPath = iconPath(bundle_);
  return description;
}

void PluginAlerts::displayError(const std::string& message) {
  AlertDescription error = alert(AlertStyle::Warning, "An error has occurred");
  error.informativeText = message;
  error.buttons = {{"Ok", kReturnKey}};
  dialogs_.beginSheet(error, SheetWindow::PaneWindow, [](const AlertResult&) {});
}

void PluginAlerts::confirmRemoval(std::function<void(int)> ended) {
  dialogs_.beginSheet(
      removalAlert(bundle_, "This will remove the entry from the array. Are you sure?", "Remove"),
      SheetWindow::PaneWindow,
      [ended = std::move(ended)](const AlertResult& result) { ended(result.returnCode); });
}

void PluginAlerts::showValidationResult(bool succeeded, const std::string& message) {
  AlertDescription verdict =
      alert(succeeded ? AlertStyle::Informational : AlertStyle::Critical, verdictMessage(succeeded));
  verdict.informativeText = message;
  verdict.buttons = {{"OK", kReturnKey}};
  dialogs_.beginSheet(verdict, SheetWindow::PaneWindow, [](const AlertResult&) {});
}

}  // namespace corvane
