#import "services/AppKitWorkspace.h"

#import "System.h"
#import "Text.h"

namespace corvane::appkit {

bool AppKitWorkspace::openUrl(const std::string& address) {
  NSURL* url = [NSURL URLWithString:toNSString(address)];
  NSString* scheme = [[url scheme] lowercaseString];
  const bool web = [scheme isEqual:@"http"] || [scheme isEqual:@"https"];
  const bool mayBeOpened = web ? [[url host] length] > 0 : [scheme isEqual:@"mailto"] == YES;
  return mayBeOpened && [[NSWorkspace sharedWorkspace] openURL:url];
}

std::uint32_t AppKitWorkspace::modifierFlags() { return heldModifierFlags(); }

double AppKitWorkspace::textWidth(std::string_view text, const Font& font) {
  return appkit::textWidth(text, toNSFont(font));
}

}  // namespace corvane::appkit
