#include "commands/Commands.h"

#include <algorithm>
#include <array>

#include "ExitStatus.h"

namespace corvane::cli {
namespace {

struct OverOneTree {
  Command command;
  int (*carryOut)(const Session& session, Tree& tree);
  Tree::Needs needs = {};
};

constexpr Tree::Needs kPlugins = {.plugins = true};
constexpr std::array<OverOneTree, 17> kCommands = {{
    // That there is no client is an answer to the first one.
    {Command::Status, showStatus, {.client = false, .plugins = true}},
    {Command::Get, getSettings},
    {Command::Set, setSettings},
    {Command::Volumes, showVolumes},
    {Command::VolumesSet, setVolume},
    {Command::VolumesPurge, purgeVolume},
    {Command::Plugins, showPlugins, kPlugins},
    {Command::PluginsShow, showPluginOptions, kPlugins},
    {Command::PluginsEnable, enablePlugin, kPlugins},
    {Command::PluginsDisable, enablePlugin, kPlugins},
    {Command::PluginsSet, setPluginOption, kPlugins},
    {Command::PluginsAdd, changePluginList, kPlugins},
    {Command::PluginsRemove, changePluginList, kPlugins},
    {Command::PluginsTest, testPlugin, kPlugins},
    {Command::Run, runClient},
    {Command::Update, runUpdater},
    {Command::Uninstall, uninstallClient},
}};

}  // namespace

int runCommand(const Session& session, Tree& tree) {
  const auto found = std::ranges::find(kCommands, session.arguments.command, &OverOneTree::command);
  if (found == kCommands.end()) return kWrongUsage;
  return tree.load(found->needs) ? found->carryOut(session, tree) : int{kNoClient};
}

}  // namespace corvane::cli
