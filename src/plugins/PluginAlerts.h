// The sheets of the tab. What an error or a verdict says comes from where it arises.
#pragma once

#include <functional>
#include <string>

#include "platform/Bundle.h"
#include "platform/Dialogs.h"

namespace corvane {

class PluginAlerts {
 public:
  /// Both must outlive the alerts.
  PluginAlerts(Dialogs& dialogs, Bundle& bundle) : dialogs_(dialogs), bundle_(bundle) {}

  /// Tells the user that something went wrong.
  void displayError(const std::string& message);
  /// Asks whether an entry is to be removed from its list; Return cancels. `ended` gets the return code.
  void confirmRemoval(std::function<void(int)> ended);
  /// Shows the verdict of a validation run.
  void showValidationResult(bool succeeded, const std::string& message);

 private:
  [[nodiscard]] AlertDescription alert(AlertStyle style, std::string messageText) const;

  Dialogs& dialogs_;
  Bundle& bundle_;
};

}  // namespace corvane
