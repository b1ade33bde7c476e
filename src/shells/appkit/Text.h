// The core's texts, fonts and colours as AppKit wants them.
#pragma once

#include <string>
#include <string_view>

#import "AppKit.h"
#include "values/AttributedText.h"

namespace corvane::appkit {

/// Never nil: bytes that are not UTF-8 are shown one by one.
[[nodiscard]] NSString* toNSString(std::string_view text);
[[nodiscard]] std::string fromNSString(NSString* text);
[[nodiscard]] NSFont* toNSFont(const Font& font);
/// The fonts of the pane's controls and of its small print.
[[nodiscard]] NSFont* controlFont();
[[nodiscard]] NSFont* smallFont();
/// What a text takes from the control that shows it, where it has none of its own.
struct TextStyle {
  NSFont* font;
  NSTextAlignment alignment = kLeftAligned;
  bool enabled = true;  // otherwise all of it is shown in the colour for that
};
[[nodiscard]] NSAttributedString* toNSAttributedString(const AttributedText& text, const TextStyle& style);
[[nodiscard]] double textWidth(std::string_view text, NSFont* font);

}  // namespace corvane::appkit
