// What the pane's own widgets are to assistive technology: the toolkit knows only those of its own.
#pragma once

namespace corvane::qt {

/// Makes the toolkit ask here first. To be called before the first such widget is shown; any further call
/// does nothing.
void installAccessibleWidgets();

}  // namespace corvane::qt
