// Pictures of the window, for the documentation and for a look at every tab without a person.
#pragma once

#include <QString>

#include "LinuxPane.h"

namespace corvane::qt {

/// Opens the pane where nobody is there to answer the alert that it may open with: writes "Start-alert.png"
/// of it and presses its first button. False when the picture can't be written.
[[nodiscard]] bool openForPictures(LinuxPane& pane, const QString& folder);

/// Writes "TAB.png" for each tab (or the one of this index), "TAB-alert.png" where an alert stands before it
/// (its first button is then pressed), and, where the lock opens without asking, "TAB-unlocked.png" with all
/// plug-ins expanded; a lock that stays closed is told on standard error. False when a picture can't be
/// written.
[[nodiscard]] bool takePictures(LinuxPane& pane, const QString& folder, int onlyTab);

}  // namespace corvane::qt
