// An alert as a panel of its own, before all windows.
#pragma once

#include "platform/Dialogs.h"

class QString;
class QWidget;

namespace corvane::qt {

/// Shows the alert over the window, if there is one, and runs the event loop until it was answered. Closing
/// the panel presses the button that leaves everything as it is. `note` as for `AlertPanel`.
AlertResult runModalAlert(const AlertDescription& alert, const QString& note, QWidget* window);

}  // namespace corvane::qt
