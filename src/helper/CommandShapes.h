// The closed set of commands that are carried out with root's rights, and the recognition of a request as one
// of them. It is spelled here once more, since root believes nothing that comes from the pane (PathTable.h,
// the controllers' command lines); a test compares both sides. Nothing here looks at a file: what the files
// must be like is checked where a command is carried out.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "helper/Request.h"

namespace corvane::helper {

/// Where commands apply. Paths of the client's tree lie below the root prefix; paths of tools never do.
struct Place {
  std::string root;    // absolute, without a slash at the end; empty for the system itself
  std::string helper;  // absolute path of the helper tool
};

/// The prefix without slashes at its end; nothing when it is neither empty nor an absolute path free of "..",
/// doubled slashes and "." parts.
[[nodiscard]] std::optional<std::string> normalizedRoot(std::string_view root);

// In all of these a path begins with a slash and is to be resolved inside the root prefix.

/// "/bin/rm" of one file in the staging folder.
struct RemoveStaging {
  std::string name;
};
/// "/bin/cp" of a staging file over the file whose name it bears.
struct WriteTarget {
  std::string name;
  std::string folder;
};
/// "/bin/cp" of a file to a staging file named "read-" and its name.
struct ReadSource {
  std::string folder;
  std::string name;
};
/// "/bin/mkdir -p" of root's home folder or a folder below it.
struct MakeFolders {
  std::string folder;
};
/// "/bin/chmod 644" of the files of the housekeeping list, which the request does not name.
struct ResetModes {};
/// The helper tool with "/bin/bash" and one of the client's two scripts.
struct RunScript {
  std::string script;
  std::vector<std::string> arguments;
};
/// The helper tool with an executable of the plug-ins folder in its test mode.
struct ValidatePlugin {
  std::string executable;  // relative to the plug-ins folder
  std::vector<std::string> arguments;
};
struct Refusal {
  std::string reason;
};

using Command = std::variant<Refusal, RemoveStaging, WriteTarget, ReadSource, MakeFolders, ResetModes,
                             RunScript, ValidatePlugin>;

/// A request that is none of the commands is a refusal.
[[nodiscard]] Command recognize(const Request& request, const Place& place);

inline constexpr std::string_view kStagingFolder = "/private/tmp";
inline constexpr std::string_view kClientFolder = "/Library/Corvane";
inline constexpr std::string_view kPluginsFolder = "/Library/Corvane/Plugins";
inline constexpr std::string_view kReadPrefix = "read-";

}  // namespace corvane::helper
