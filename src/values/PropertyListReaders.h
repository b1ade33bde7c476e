// The readers of the two formats, behind `readPropertyList`. The value they answer is empty when the bytes
// are not a property list.
#pragma once

#include <cstddef>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// How many containers may stand in one another, in files read and written; the limit of a Mac.
inline constexpr std::size_t nestingLimit = 512;

[[nodiscard]] bool looksLikeBinaryPropertyList(std::string_view bytes) noexcept;
[[nodiscard]] PropertyList readBinaryPropertyList(std::string_view bytes);

/// XML in UTF-8, UTF-16 or UTF-32 with or without mark, Latin-1 or ASCII.
[[nodiscard]] PropertyList readXmlPropertyList(std::string_view bytes);

}  // namespace corvane
