// What the pane has done whenever the lock opens: to the modes and the syntax of the client's property lists.
// It asks for both with a fixed text for the shell, which a Mac carries out. Another platform recognizes the
// two texts, runs no shell and works on the listed files itself; root's side of it knows the list from here.
#pragma once

#include <string>
#include <string_view>

namespace corvane::housekeeping {

/// In the client's tree. A star stands for any characters of a name that does not begin with a dot.
inline constexpr std::string_view kFiles[] = {"/Library/Corvane/ClientSettings.plist",
                                              "/Library/Corvane/PluginSupport/*.plist",
                                              "/Library/Corvane/Utilities/UpdaterSupport/*.plist"};

[[nodiscard]] inline bool matches(std::string_view name, std::string_view pattern) {
  const auto star = pattern.find('*');
  if (star == std::string_view::npos) return name == pattern;
  return !name.starts_with('.') && name.size() >= pattern.size() - 1 &&
         name.starts_with(pattern.substr(0, star)) && name.ends_with(pattern.substr(star + 1));
}

inline constexpr std::string_view kResetModes = "/bin/chmod 644";
/// Without an option the tool only checks each file's syntax. This is intended.
inline constexpr std::string_view kCheckSyntax = "/usr/bin/plutil";

/// The text for "/bin/sh -c": the command with the files below the root prefix, which stands in single
/// quotes.
[[nodiscard]] inline std::string text(std::string_view command, std::string_view rootPrefix) {
  std::string prefix = rootPrefix.empty() ? "" : "'";
  for (const char c : rootPrefix) prefix += c == '\'' ? std::string("'\\''") : std::string(1, c);
  if (!rootPrefix.empty()) prefix += "'";
  std::string text(command);
  for (const auto files : kFiles) text.append(" ").append(prefix).append(files);
  return text;
}

}  // namespace corvane::housekeeping
