// Operations on texts as the platform defines them: lengths in UTF-16 code units, prefixes, path components,
// and filling of the fixed texts that the log and the alerts show. Texts are UTF-8 everywhere. How texts
// order is the platform's to say (`TextComparison`).
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Fills each "%@", "%d" or "%s" of the format, in order, with the next argument; "%%" gives "%". An argument
/// that is missing is filled as "(null)".
[[nodiscard]] std::string formatText(std::string_view format,
                                     std::initializer_list<std::string_view> arguments);

/// The number of UTF-16 code units: a character outside the basic plane counts as two.
[[nodiscard]] std::size_t utf16Length(std::string_view text) noexcept;
/// Whether the text begins with the prefix, which is ASCII, regardless of case.
[[nodiscard]] bool hasPrefixIgnoringCase(std::string_view text, std::string_view prefix) noexcept;
[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator);
[[nodiscard]] std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

// Paths, by the platform's rules: trailing slashes do not count, the root stays "/".
[[nodiscard]] std::string lastPathComponent(std::string_view path);
[[nodiscard]] std::string deletingLastPathComponent(std::string_view path);
[[nodiscard]] std::string pathExtension(std::string_view path);
[[nodiscard]] std::string deletingPathExtension(std::string_view path);
[[nodiscard]] std::string appendingPathComponent(std::string_view path, std::string_view component);
/// Without a trailing slash, doubled slashes and "." parts; ".." parts are taken back, above the root they
/// vanish.
[[nodiscard]] std::string standardizingPath(std::string_view path);

}  // namespace corvane
