#include "plugins/PluginValidation.h"

#include <algorithm>

#include "plugins/PluginKeys.h"
#include "values/Text.h"

namespace corvane {
bool isBelowPluginsFolder(const std::string& executable) {
  const auto parts = split(executable, '/');
  const bool names =
      std::ranges::any_of(parts, [](const auto& part) { return !part.empty() && part != "."; });
  return names && std::ranges::find(parts, "..") == parts.end() && executable.find('\0') == std::string::npos;
}

void PluginValidation::runPluginValidation(OutlineView& sender) {
  verdict_.reset();
  const OutlineItem option = tree_.parentOf(sender.itemAtRow(sender.selectedRow()));
  const Dictionary plugin = tree_.parentOf(option).object().asDictionary();
  if (!plugin || quorlenPrefPane_ == nullptr) return;
  const auto command = commandLine(plugin);
  if (!command) return;
  show(quorlenPrefPane_->validatePluginWithArguments(command->front(), *command));
  sender.deselectAll();
}

std::optional<std::vector<std::string>> PluginValidation::commandLine(const Dictionary& plugin) const {
  std::vector<std::string> command;
  for (const PropertyList& argument : plugin.array(plugin_key::kProgramArguments).elements()) {
    command.push_back(*argument.asString());
  }
  if (command.empty()) return std::nullopt;
  if (!isBelowPluginsFolder(command.front())) {
    log_.write(formatText("Plugin executable is not in the Plugins folder: %@", {command.front()}));
    return std::nullopt;
  }
  command.front() = standardizingPath(appendingPathComponent(paths_.plugins, command.front()));
  command.emplace_back("--test-mode");
  return command;
}

void PluginValidation::show(const std::optional<std::string>& reply) {
  verdict_ = reply ? parseHelperReply(*reply) : std::nullopt;
  if (verdict_) {
    alerts_.showValidationResult(verdict_->code == 0, verdict_->message);
  } else {
    alerts_.showValidationResult(false, "The plugin gave no readable result.");
  }
}

}  // namespace corvane
