// The core's texts (UTF-8, always plain) as the toolkit wants them.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace corvane::qt {

[[nodiscard]] inline QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string fromQString(const QString& text) { return text.toStdString(); }

/// For widgets that take "&" as the mark of a shortcut.
[[nodiscard]] inline QString withoutShortcuts(QString text) {
  return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// For tool tips, which the toolkit would show as markup when they look like it. A volume or a file may have
/// any name.
[[nodiscard]] QString plainToolTip(std::string_view text);

}  // namespace corvane::qt
