// The little of the shell's language that the housekeeping texts use: quoting a path, and telling what words
// a text would be taken apart into without giving it to a shell.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::helper {

/// The text between single quotes; a text of harmless characters, or none, as it is.
[[nodiscard]] std::string quotedForShell(std::string_view text);

/// The words of a text in which everything but "*" is literal; each star that the shell would expand is given
/// as the character kPattern. Nothing when the text holds anything else that means something to a shell.
[[nodiscard]] std::optional<std::vector<std::string>> shellWords(std::string_view text);
inline constexpr char kPattern = '\x01';

}  // namespace corvane::helper
