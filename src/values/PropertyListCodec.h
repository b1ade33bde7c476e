// Reading and writing of property-list files' contents: XML in any encoding a Mac reads, and the binary
// format, both read as a Mac reads them; XML written byte for byte as a Mac writes it. Works in memory; files
// belong to the platform.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// The value in these bytes (XML or binary, told apart by their beginning), or nothing when they are not a
/// property list. Never throws, never recurses with the input, bounded in time and memory by the size of the
/// input.
[[nodiscard]] PropertyList readPropertyList(std::string_view bytes);

/// The XML form of the value; nothing when it is empty, holds an empty handle, is cyclic or nested deeper
/// than 512 levels.
[[nodiscard]] std::optional<std::string> writeXmlPropertyList(const PropertyList& value);

}  // namespace corvane
