// Reading and writing of property-list files' contents: XML in any encoding a Mac reads, and the binary
// format, both read as a Mac reads them; XML written byte for byte as a Mac writes it. Works in memory; files
// belong to the platform.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// A larger file, in bytes, is neither read nor written: settings are some kilobytes, and a file is held in
/// memory whole.
inline constexpr std::size_t kLargestPropertyListFile = std::size_t{64} << 20;

/// The value in these bytes (XML or binary, told apart by their beginning), or nothing when they are not a
/// property list, or when there is no memory for it. Never throws, never recurses with the input, bounded in
/// time and memory by the size of the input: at most 24 times its size for XML, 256 times for the binary
/// format, and 4 MB more in both.
[[nodiscard]] PropertyList readPropertyList(std::string_view bytes);

/// The XML form of the value; nothing when it is empty, holds an empty handle, is cyclic, nested deeper
/// than 512 levels or larger than a file may be, or when there is no memory for it. Never throws.
[[nodiscard]] std::optional<std::string> writeXmlPropertyList(const PropertyList& value);

}  // namespace corvane
