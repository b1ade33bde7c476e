#include "platform/macos/ModifierKeys.h"

#include <CoreGraphics/CoreGraphics.h>

#include "platform/macos/OwnedObject.h"

namespace corvane {

std::uint32_t heldModifierKeys() {
  const OwnedObject event(CGEventCreate(nullptr));
  return event ? static_cast<std::uint32_t>(CGEventGetFlags(event.get())) : 0;
}

}  // namespace corvane
