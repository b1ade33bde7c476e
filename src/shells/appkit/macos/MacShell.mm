// What the shell asks of the system, on a Mac: AppKit does it by itself.
#import "System.h"
#include "platform/macos/MacSystem.h"
#include "platform/macos/OwnedObject.h"

namespace corvane::appkit {
namespace {

class MacServices final : public System {
 public:
  explicit MacServices(const ToolkitServices& toolkit) : services_(toolkit) {}

  std::string rootPrefix() const override { return {}; }
  const Platform& platform() const override { return services_.platform(); }

 private:
  MacSystem services_;
};

/// Such a code is its four letters as one number, from the first letter down.
OSType numberOf(const std::string& typeCode) {
  OSType number = 0;
  for (const char letter : typeCode) number = number << 8 | static_cast<unsigned char>(letter);
  return number;
}

}  // namespace

std::unique_ptr<System> makeSystem(const ToolkitServices& toolkit) {
  return std::make_unique<MacServices>(toolkit);
}

std::uint32_t heldModifierFlags() {
  const OwnedObject event(CGEventCreate(nullptr));
  return event ? static_cast<std::uint32_t>(CGEventGetFlags(event.get())) : 0;
}

NSImage* iconForTypeCode(const std::string& typeCode) {
  return [[NSWorkspace sharedWorkspace] iconForFileType:NSFileTypeForHFSTypeCode(numberOf(typeCode))];
}

void prepareAlert(NSAlert* alert, NSView* accessory, NSButton* key) {
  if (accessory != nil) [alert setAccessoryView:accessory];
  if (key != nil) [[[alert window] contentView] addSubview:key];
}

void openMenu(NSPopUpButtonCell* cell, NSRect frame, NSView* view, std::function<void()> closed) {
  [cell performClickWithFrame:frame inView:view];
  closed();
}

}  // namespace corvane::appkit
