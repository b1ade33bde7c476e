// The application's looks: style, font, icon, and the light or dark palette.
#pragma once

#include <QIcon>
#include <QPalette>

class QApplication;

namespace corvane::qt {

enum class Appearance { System, Light, Dark };

/// Gives the application its style, font, icon and names. Called once, before the first window.
void dressApplication(QApplication& application);
/// Fixes light or dark whatever the desktop says, or follows the desktop.
void applyAppearance(Appearance appearance);
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();
[[nodiscard]] bool isDark(const QPalette& palette);
[[nodiscard]] QIcon productIcon();

}  // namespace corvane::qt
