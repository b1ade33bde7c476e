// What the pane asks of the desktop: opening addresses, icons, the modifier keys held now, widths of texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/AttributedText.h"

namespace corvane {

/// The system's icon for a classic four-character file type code, or none.
struct FileTypeIcon {
  std::string typeCode;  // "fldr", "docu", "trsh"; empty for no icon
  friend bool operator==(const FileTypeIcon&, const FileTypeIcon&) = default;
};

/// Bits of the event state's modifier flags.
inline constexpr std::uint32_t kControlKeyFlag = 0x40000;
inline constexpr std::uint32_t kOptionKeyFlag = 0x80000;

class Workspace {
 public:
  virtual ~Workspace() = default;
  /// Opens the address with the desktop's handler for it. False when nothing was opened: it does not parse,
  /// is of a kind that is not opened, or has no handler.
  [[nodiscard]] virtual bool openUrl(const std::string& address) = 0;
  /// The modifier keys that are held now, as bits like those above; others may be among them.
  [[nodiscard]] virtual std::uint32_t modifierFlags() = 0;
  /// The width in points of the text, drawn in one line in the font.
  [[nodiscard]] virtual double textWidth(std::string_view text, const Font& font) = 0;
};

}  // namespace corvane
