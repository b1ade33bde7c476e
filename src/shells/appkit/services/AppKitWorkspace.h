// The desktop: opening addresses, the modifier keys, widths of texts.
#pragma once

#include "platform/Workspace.h"

namespace corvane::appkit {

class AppKitWorkspace final : public Workspace {
 public:
  /// Opens web and mail addresses only. Addresses come from settings files, and the handler of another scheme
  /// might start a program.
  [[nodiscard]] bool openUrl(const std::string& address) override;
  [[nodiscard]] std::uint32_t modifierFlags() override;
  [[nodiscard]] double textWidth(std::string_view text, const Font& font) override;
};

}  // namespace corvane::appkit
