// What the shell needs of the operating system and of the one AppKit that runs on it. Everything declared
// here has two implementations, of which the build takes one: `gnustep/` for Linux, and the one for a Mac.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#import "AppKit.h"
#include "platform/Platform.h"

namespace corvane::appkit {

/// The services of the operating system.
class System {
 public:
  virtual ~System() = default;
  /// The folder below which the client's files are looked for. Always empty on a Mac.
  [[nodiscard]] virtual std::string rootPrefix() const = 0;
  /// All the services, those of the toolkit among them.
  [[nodiscard]] virtual const Platform& platform() const = 0;
};

/// The services of the toolkit must live longer.
[[nodiscard]] std::unique_ptr<System> makeSystem(const ToolkitServices& toolkit);

/// The modifier keys that are held now, as bits of the event state.
[[nodiscard]] std::uint32_t heldModifierFlags();
/// The system's icon for a file type code; nil when it has none.
[[nodiscard]] NSImage* iconForTypeCode(const std::string& typeCode);
/// Makes an alert, which is shown right after this call, ready: with the accessory (nil for none) in it, with
/// the keyboard where Return presses the button that has it as its key, and with a button (nil for none) that
/// is not seen, whose key presses its target among the alert's buttons.
void prepareAlert(NSAlert* alert, NSView* accessory, NSButton* key);
/// Opens the menu of a cell for who uses the keyboard. The cell's action is sent when an item was chosen,
/// then `closed` is called; it is called too when none was chosen.
void openMenu(NSPopUpButtonCell* cell, NSRect frame, NSView* view, std::function<void()> closed);

}  // namespace corvane::appkit
