// The readers of the two formats and the writer of the one, behind `readPropertyList` and
// `writeXmlPropertyList`, which catch what they throw when there is no memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// How many containers may stand in one another, in files read and written; the limit of a Mac.
inline constexpr std::size_t nestingLimit = 512;

[[nodiscard]] bool looksLikeBinaryPropertyList(std::string_view bytes) noexcept;
/// Both readers answer an empty value when the bytes are not a property list.
[[nodiscard]] PropertyList readBinaryPropertyList(std::string_view bytes);

/// XML in UTF-8 or UTF-16 with or without mark, UTF-32 with a mark, Latin-1 or ASCII.
[[nodiscard]] PropertyList readXmlPropertyList(std::string_view bytes);

[[nodiscard]] std::optional<std::string> xmlOfPropertyList(const PropertyList& value);

}  // namespace corvane
