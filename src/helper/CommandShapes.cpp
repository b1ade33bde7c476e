#include "helper/CommandShapes.h"

#include <algorithm>
#include <climits>

namespace corvane::helper {
namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::string_view kRootHome = "/var/root";

/// An absolute path of a sensible length that does not climb and ends in a name.
bool isPlainPath(std::string_view path) {
  return path.starts_with('/') && path.size() < PATH_MAX && !path.ends_with('/') && !path.ends_with("/.") &&
         path.size() - path.rfind('/') - 1 <= kLongestName &&
         (std::string(path) + "/").find("/../") == std::string::npos;
}

std::string_view nameOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }
std::string_view folderOf(std::string_view path) {
  const auto slash = path.rfind('/');
  return slash == 0 ? std::string_view("/") : path.substr(0, slash);
}

/// The path inside the root prefix; nothing for a path that is not a plain one below it.
std::optional<std::string_view> insideRoot(std::string_view path, const Place& place) {
  if (!isPlainPath(path) || !path.starts_with(place.root)) return std::nullopt;
  path.remove_prefix(place.root.size());
  if (!isPlainPath(path)) return std::nullopt;
  return path;
}

char lowered(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool beginsIgnoringCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() &&
         std::ranges::equal(text.substr(0, prefix.size()), prefix, {}, lowered, lowered);
}

Command recognizeRemoval(const std::vector<std::string>& arguments, const Place& place) {
  if (arguments.size() != 1) return Refusal{"one path is needed"};
  const auto path = insideRoot(arguments[0], place);
  if (!path || folderOf(*path) != kStagingFolder) return Refusal{"the path is not one of the staging folder"};
  return RemoveStaging{std::string(nameOf(*path))};
}

Command recognizeCopy(const std::vector<std::string>& arguments, const Place& place) {
  if (arguments.size() != 2) return Refusal{"two paths are needed"};
  const auto from = insideRoot(arguments[0], place);
  const auto to = insideRoot(arguments[1], place);
  if (!from || !to) return Refusal{"a path is not an absolute one below the root prefix"};
  if (folderOf(*to) == kStagingFolder) {
    if (nameOf(*to) != std::string(kReadPrefix) + std::string(nameOf(*from))) {
      return Refusal{"the staging file does not bear the name of what is read"};
    }
    return ReadSource{std::string(folderOf(*from)), std::string(nameOf(*from))};
  }
  if (folderOf(*from) != kStagingFolder) return Refusal{"neither path is one of the staging folder"};
  if (nameOf(*from) != nameOf(*to)) return Refusal{"the staging file does not bear the name of the target"};
  return WriteTarget{std::string(nameOf(*to)), std::string(folderOf(*to))};
}

Command recognizeFolders(const std::vector<std::string>& arguments, const Place& place) {
  if (arguments.size() != 2 || arguments[0] != "-p") return Refusal{"\"-p\" and one path are needed"};
  const auto folder = insideRoot(arguments[1], place);
  // Letter case is passed over here as it is where the pane decides that a folder is needed.
  if (!folder || !beginsIgnoringCase(std::string(*folder) + "/", std::string(kRootHome) + "/")) {
    return Refusal{"the folder is not in root's home"};
  }
  return MakeFolders{std::string(*folder)};
}

Command recognizeModes(const std::vector<std::string>& arguments) {
  if (arguments != std::vector<std::string>{"644"}) return Refusal{"\"644\" alone is needed"};
  return ResetModes{};
}

Command recognizeScript(const std::vector<std::string>& arguments, const Place& place) {
  static const std::vector<std::string> lines[] = {
      {"/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"},
      {"/Library/Corvane/RunUpdater", "--log-parent", "prefpane-updater", "--force"},
      {"/Library/Corvane/RunClient", "--log-parent", "prefpane-remove", "--remove"},
      {"/Library/Corvane/RunClient", "--log-parent", "prefpane-remove", "--remove", "--quiet"},
  };
  for (const auto& line : lines) {
    if (arguments.size() > 1 && arguments[1] == place.root + line[0] &&
        std::equal(arguments.begin() + 2, arguments.end(), line.begin() + 1, line.end())) {
      return RunScript{line[0], {arguments.begin() + 2, arguments.end()}};
    }
  }
  return Refusal{"not one of the command lines of the client's scripts"};
}

Command recognizePlugin(const std::vector<std::string>& arguments, const Place& place) {
  const auto path = insideRoot(arguments[0], place);
  const std::string below = std::string(kPluginsFolder) + "/";
  if (!path || !path->starts_with(below)) return Refusal{"not a program that the helper tool runs"};
  if (arguments.size() < 2 || arguments.back() != "--test-mode")
    return Refusal{"a plug-in runs in test mode only"};
  return ValidatePlugin{std::string(path->substr(below.size())), {arguments.begin() + 1, arguments.end()}};
}

Command recognizeHelper(const Request& request, const Place& place) {
  if (request.arguments.empty()) return Refusal{"no program is named"};
  auto command = request.arguments[0] == "/bin/bash" ? recognizeScript(request.arguments, place)
                                                     : recognizePlugin(request.arguments, place);
  if (std::holds_alternative<RunScript>(command) && request.wantsOutput) {
    return Refusal{"the client's scripts give no output"};
  }
  if (std::holds_alternative<ValidatePlugin>(command) && !request.wantsOutput) {
    return Refusal{"a plug-in is run for its output only"};
  }
  return command;
}

bool holdsNul(const std::string& text) { return text.find('\0') != std::string::npos; }

}  // namespace

std::optional<std::string> normalizedRoot(std::string_view root) {
  while (root.ends_with('/')) root.remove_suffix(1);
  if (root.empty()) return std::string();
  if (!isPlainPath(root) || root.find("//") != std::string_view::npos ||
      root.find('\0') != std::string_view::npos ||
      (std::string(root) + "/").find("/./") != std::string::npos) {
    return std::nullopt;
  }
  return std::string(root);
}

Command recognize(const Request& request, const Place& place) {
  if (holdsNul(request.program) || std::ranges::any_of(request.arguments, holdsNul)) {
    return Refusal{"a text holds a null character"};
  }
  if (!place.helper.empty() && request.program == place.helper) return recognizeHelper(request, place);
  if (request.wantsOutput) return Refusal{"no output of a system tool is given"};
  if (request.program == "/bin/rm") return recognizeRemoval(request.arguments, place);
  if (request.program == "/bin/cp") return recognizeCopy(request.arguments, place);
  if (request.program == "/bin/mkdir") return recognizeFolders(request.arguments, place);
  if (request.program == "/bin/chmod") return recognizeModes(request.arguments);
  return Refusal{"not a program that is run as root"};
}

}  // namespace corvane::helper
