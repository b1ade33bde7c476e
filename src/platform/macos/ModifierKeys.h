// The keyboard's modifier keys.
#pragma once

#include <cstdint>

namespace corvane {

/// The keys that are held now, as bits of the event state (`Workspace::modifierFlags`).
[[nodiscard]] std::uint32_t heldModifierKeys();

}  // namespace corvane
