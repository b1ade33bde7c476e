// The services of Linux for the pane under GNUstep.
#include <stdlib.h>

#import "System.h"
#import "Text.h"
#import "gnustep/GNUstepRunLoop.h"
#include "platform/linux/LinuxSystem.h"

namespace corvane::appkit {
namespace {

/// The user's default "CorvaneRoot" (also `-CorvaneRoot FOLDER` among the host's arguments), without links.
std::string rootFromDefaults() {
  const std::string given = fromNSString([[NSUserDefaults standardUserDefaults] stringForKey:@"CorvaneRoot"]);
  const std::unique_ptr<char, decltype(&::free)> real(::realpath(given.c_str(), nullptr), &::free);
  return real ? std::string(real.get()) : given;
}

class GNUstepSystem final : public System {
 public:
  explicit GNUstepSystem(const ToolkitServices& toolkit)
      : root_(rootFromDefaults()), services_(runLoop_, toolkit, {root_}) {}

  std::string rootPrefix() const override { return root_; }
  const Platform& platform() const override { return services_.platform(); }

 private:
  std::string root_;
  GNUstepRunLoop runLoop_;
  LinuxSystem services_;
};

}  // namespace

std::unique_ptr<System> makeSystem(const ToolkitServices& toolkit) {
  return std::make_unique<GNUstepSystem>(toolkit);
}

NSImage* iconForTypeCode(const std::string& typeCode) {
  if (typeCode == "fldr") return [NSImage imageNamed:@"common_Folder"];
  if (typeCode == "trsh") return [NSImage imageNamed:@"common_RecyclerEmpty"];
  if (typeCode == "docu") return [NSImage imageNamed:@"common_Unknown"];
  return nil;
}

std::uint32_t heldModifierFlags() { return static_cast<std::uint32_t>([[NSApp currentEvent] modifierFlags]); }

}  // namespace corvane::appkit
