#include "commands/Commands.h"

#include "ExitStatus.h"

namespace corvane::cli {
namespace {

Tree::Needs needsOf(Command command) {
  switch (command) {
    case Command::Status:
      // That there is no client is an answer to this one.
      return {.client = false, .plugins = true};
    case Command::Plugins:
    case Command::PluginsShow:
    case Command::PluginsEnable:
    case Command::PluginsDisable:
    case Command::PluginsSet:
    case Command::PluginsAdd:
    case Command::PluginsRemove:
    case Command::PluginsTest:
      return {.plugins = true};
    default:
      return {};
  }
}

}  // namespace

int runCommand(const Session& session, Tree& tree) {
  const Command command = session.arguments.command;
  if (!tree.load(needsOf(command))) return kNoClient;
  switch (command) {
    case Command::Status:
      return showStatus(session, tree);
    case Command::Get:
      return getSettings(session, tree);
    case Command::Set:
      return setSettings(session, tree);
    case Command::Volumes:
      return showVolumes(session, tree);
    case Command::VolumesSet:
      return setVolume(session, tree);
    case Command::VolumesPurge:
      return purgeVolume(session, tree);
    case Command::Plugins:
      return showPlugins(session, tree);
    case Command::PluginsShow:
      return showPluginOptions(session, tree);
    case Command::PluginsEnable:
    case Command::PluginsDisable:
      return enablePlugin(session, tree);
    case Command::PluginsSet:
      return setPluginOption(session, tree);
    case Command::PluginsAdd:
    case Command::PluginsRemove:
      return changePluginList(session, tree);
    case Command::PluginsTest:
      return testPlugin(session, tree);
    case Command::Run:
      return runClient(session, tree);
    case Command::Update:
      return runUpdater(session, tree);
    case Command::Uninstall:
      return uninstallClient(session, tree);
    case Command::None:
    case Command::Watch:
    case Command::Check:
      break;  // over all trees at once
  }
  return kWrongUsage;
}

}  // namespace corvane::cli
