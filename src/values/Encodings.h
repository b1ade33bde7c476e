// Character encodings, strictly: what is not valid is refused, never replaced, since a replaced character
// would be saved in place of the setting. For the readers and the writer of property lists, and for whoever
// lets texts from outside into the pane.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Appends the code point as UTF-8; false, and nothing appended, for surrogates and for what lies beyond
/// Unicode.
[[nodiscard]] bool appendUtf8(std::string& text, char32_t codePoint);

/// Whether the bytes are UTF-8: no overlong forms, no surrogates, nothing beyond Unicode.
[[nodiscard]] bool isUtf8(std::string_view bytes) noexcept;

enum class ByteOrder { BigEndian, LittleEndian };

/// Nothing when a surrogate lacks its partner or the last unit is cut.
[[nodiscard]] std::optional<std::string> utf8FromUtf16(std::string_view bytes, ByteOrder order);
[[nodiscard]] std::optional<std::string> utf8FromUtf32(std::string_view bytes, ByteOrder order);
[[nodiscard]] std::string utf8FromLatin1(std::string_view bytes);

}  // namespace corvane
