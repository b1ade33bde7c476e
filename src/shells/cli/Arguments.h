// What the command line of `corvanectl` says.
#pragma once

#include <string>
#include <vector>

namespace corvane::cli {

enum class Command {
  None,
  Status,
  Get,
  Set,
  Volumes,
  VolumesSet,
  VolumesPurge,
  Plugins,
  PluginsShow,
  PluginsEnable,
  PluginsDisable,
  PluginsSet,
  PluginsAdd,
  PluginsRemove,
  PluginsTest,
  Run,
  Update,
  Uninstall,
  Watch,
  Check,
};

struct Arguments {
  std::vector<std::string> roots;  // as they were given; empty for the running system
  bool json = false;
  Command command = Command::None;
  std::string name;                // the volume or the plug-in
  std::string option;              // of the plug-in
  std::vector<std::string> words;  // the rest: names, values, files

  bool all = false;       // volumes: those of the system too
  bool wait = false;      // run, update, uninstall: until it is over
  double patience = 600;  // seconds that are waited at most
  bool yes = false;       // uninstall
  bool quiet = false;     // uninstall: without a report

  // Set when there is nothing to do: what to print where, and how to end.
  std::string output;
  std::string error;
};

[[nodiscard]] Arguments parseArguments(int argc, const char* const* argv);

}  // namespace corvane::cli
