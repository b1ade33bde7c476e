// The commands, each over one tree, with the exit status that it ends with. `runCommand` finds the one that
// was asked for.
#pragma once

#include <string>
#include <vector>

#include "Session.h"
#include "Tree.h"

namespace corvane::cli {

[[nodiscard]] int runCommand(const Session& session, Tree& tree);

// Over one loaded tree.
[[nodiscard]] int showStatus(const Session& session, Tree& tree);
[[nodiscard]] int getSettings(const Session& session, Tree& tree);
[[nodiscard]] int setSettings(const Session& session, Tree& tree);
[[nodiscard]] int showVolumes(const Session& session, Tree& tree);
[[nodiscard]] int setVolume(const Session& session, Tree& tree);
[[nodiscard]] int purgeVolume(const Session& session, Tree& tree);
[[nodiscard]] int showPlugins(const Session& session, Tree& tree);
[[nodiscard]] int showPluginOptions(const Session& session, Tree& tree);
[[nodiscard]] int enablePlugin(const Session& session, Tree& tree);
[[nodiscard]] int setPluginOption(const Session& session, Tree& tree);
[[nodiscard]] int changePluginList(const Session& session, Tree& tree);
[[nodiscard]] int testPlugin(const Session& session, Tree& tree);
[[nodiscard]] int runClient(const Session& session, Tree& tree);
[[nodiscard]] int runUpdater(const Session& session, Tree& tree);
[[nodiscard]] int uninstallClient(const Session& session, Tree& tree);

/// Over all trees at once; they need not be loaded.
[[nodiscard]] int watchTrees(const Session& session, const std::vector<Tree*>& trees);
[[nodiscard]] int checkDefinitions(const Session& session, const std::vector<Tree*>& trees);

}  // namespace corvane::cli
