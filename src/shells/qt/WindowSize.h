// The size of the window from one run of the program to the next, in points: another font of the desktop
// keeps it.
#pragma once

class QWidget;

namespace corvane::qt {

/// Makes the window as large as the user left it, no larger than the screen, and keeps the size when it is
/// closed. Without a size that was kept, or one that makes no sense, the window stays as it is.
void rememberSize(QWidget& window);

}  // namespace corvane::qt
