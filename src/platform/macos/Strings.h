// Texts (UTF-8) as CoreFoundation strings and back.
#pragma once

#include <string>
#include <string_view>

#include "platform/macos/OwnedObject.h"

namespace corvane {

/// None for bytes that are no text.
[[nodiscard]] inline OwnedObject<CFStringRef> stringFrom(std::string_view text) {
  return OwnedObject(CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                                             static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, 0));
}

[[nodiscard]] inline std::string textFrom(CFStringRef string) {
  const CFRange all = CFRangeMake(0, CFStringGetLength(string));
  const CFIndex most = CFStringGetMaximumSizeForEncoding(all.length, kCFStringEncodingUTF8);
  std::string text(static_cast<std::size_t>(most), '\0');
  CFIndex used = 0;
  CFStringGetBytes(string, all, kCFStringEncodingUTF8, 0, 0, reinterpret_cast<UInt8*>(text.data()), most,
                   &used);
  text.resize(static_cast<std::size_t>(used));
  return text;
}

}  // namespace corvane
