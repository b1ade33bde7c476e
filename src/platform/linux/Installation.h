// Whether what was installed belongs together: this pane, its root helper and the polkit action that lets the
// helper start. What is wrong is said in words for a person.
#pragma once

#include <string>

namespace corvane {

/// The polkit action as it is installed; polkit looks for actions nowhere else.
inline constexpr const char* kPolkitAction = "/usr/share/polkit-1/actions/org.example.corvane.pane.policy";

/// Empty when the program is there.
[[nodiscard]] std::string missingHelper(const std::string& helper);
/// For a helper that has said which pane it belongs to, and not to this one.
[[nodiscard]] std::string foreignHelper(const std::string& helper);
/// The first thing that is missing or of another version; empty when all is as it should be. Runs the helper,
/// with the user's own rights and for two seconds at most, for what it says of itself. `action` is the file
/// of the polkit action.
[[nodiscard]] std::string installationFault(const std::string& helper, const std::string& action);

}  // namespace corvane
