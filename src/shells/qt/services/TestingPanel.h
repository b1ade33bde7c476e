// The panel that stands before the window while a plug-in tests its settings: the pane waits for the
// plug-in's answer, and without the panel it would look frozen.
#pragma once

#include <QString>

class QWidget;

namespace corvane::qt {

/// Shows the panel over the window and runs the event loop until the descriptor can be read (true) or the
/// user cancels (false). `tree` says whose plug-in it is; may be empty.
[[nodiscard]] bool waitReadable(QWidget* window, int descriptor, const QString& tree = {});

}  // namespace corvane::qt
