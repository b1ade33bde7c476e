// The texts of the scalar elements of XML property lists, read as strictly as a Mac does.
#pragma once

#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// Appends the text with its escapes replaced: the five named ones and character references. False when there
/// is any other use of an ampersand, a reference to what is no character, or what is not UTF-8.
[[nodiscard]] bool appendUnescaped(std::string& result, std::string_view text);

/// Blanks, a sign, blanks, decimal or (after 0x) hexadecimal digits, over the signed and the unsigned 64-bit
/// range; nothing otherwise.
[[nodiscard]] PropertyList integerFromText(std::string_view text);

/// A decimal fraction that fits a double, or one of the names of infinity and not-a-number; nothing
/// otherwise.
[[nodiscard]] PropertyList realFromText(std::string_view text);

}  // namespace corvane
