// The application's looks: style, font, the light or dark palette, and the icon.
#pragma once

#include <QIcon>
#include <QPalette>

class QApplication;

namespace corvane::qt {

enum class Appearance { System, Light, Dark };

/// Gives the application its style and font. Called once, before the first window.
void dressApplication(QApplication& application);
/// Fixes light or dark whatever the desktop says, or follows the desktop.
void applyAppearance(Appearance appearance);
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();
/// Brings the hints, and what may not be changed now, to where they can be read: what is stored is to be read
/// also while the lock is closed.
void keepReadable(QPalette& palette);
[[nodiscard]] bool isDark(const QPalette& palette);
/// Reads the icon in all its sizes, which takes as long as it takes to paint a window.
[[nodiscard]] QIcon productIcon();

}  // namespace corvane::qt
