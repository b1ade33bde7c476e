// The base64 form of data in XML property lists.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/PropertyList.h"

namespace corvane {

/// As lenient as a Mac: ASCII characters outside the alphabet are skipped, an incomplete last group is
/// dropped. Nothing when there are other characters than ASCII.
[[nodiscard]] std::optional<PropertyList::Bytes> dataFromBase64(std::string_view text);

/// Appends the bytes in lines, each with its newline, indented by tabs (at most 8). As on a Mac a line is 76
/// columns wide, of which each tab takes 8.
void appendBase64Lines(std::string& text, const PropertyList::Bytes& bytes, std::size_t tabs);

}  // namespace corvane
