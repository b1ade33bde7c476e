// The header, the dates and the counts of the pane.
#include "ExitStatus.h"
#include "commands/Commands.h"
#include "options/VolumeList.h"

namespace corvane::cli {
namespace {

Json titleUnlessHidden(const Button& button) { return button.hidden() ? Json() : Json(button.title()); }
Json textUnlessHidden(const TextField& field) { return field.hidden() ? Json() : Json(field.stringValue()); }

Json unreadableFiles(Tree& tree) {
  Json files = Json::array();
  for (const std::string& file : tree.unreadableFiles()) files.push_back(tree.paths().onClient(file));
  return files;
}

Json volumeCounts(PaneAssembly& pane) {
  const VolumeCatalogue& catalogue = pane.options().catalogue();
  int missing = 0;
  int duplicate = 0;
  for (const Dictionary& entry : catalogue.volumes().entries()) {
    const auto name = volumeName(entry);
    const auto path = volumePath(entry);
    missing += catalogue.journal().isVolumePresentPath(name, path) ? 0 : 1;
    duplicate += catalogue.isVolumeDuplicatePath(name, path) ? 1 : 0;
  }
  return {{"all", catalogue.volumes().size()}, {"missing", missing}, {"duplicate", duplicate}};
}

Json pluginCounts(PaneAssembly& pane) {
  const PluginCatalogue& catalogue = pane.plugins().catalogue();
  return {{"all", catalogue.plugins().size()}, {"disabled", catalogue.blacklistPlugins().size()}};
}

Json statusOf(Tree& tree) {
  PaneAssembly& pane = tree.pane();
  const bool isInstalled = !pane.pane().uninstalled();
  return {{"root", tree.root()},
          {"installed", isInstalled},
          {"version", pane.view().clientVersionButton.title()},
          {"greeting", titleUnlessHidden(pane.view().greetingButton)},
          {"support", titleUnlessHidden(pane.view().urlButton)},
          {"lastRun", textUnlessHidden(pane.configurationView().lastRunClientField)},
          {"lastUpdateCheck", textUnlessHidden(pane.configurationView().lastRunUpdaterField)},
          {"running", pane.configuration().clientRuns()},
          {"unreadable", unreadableFiles(tree)},
          {"journalDaemon", pane.options().journalDaemon().isDiskJournalPIDRunning()},
          {"volumes", volumeCounts(pane)},
          {"plugins", pluginCounts(pane)}};
}

std::string countsText(const Json& counts) {
  std::string text = counts.at("all").dump();
  std::string more;
  for (const auto& [what, count] : counts.items()) {
    if (what == "all" || count == 0) continue;
    more += (more.empty() ? " (" : ", ") + count.dump() + " " + what;
  }
  return text + more + (more.empty() ? "" : ")");
}

std::vector<Row> rowsOf(const Json& status) {
  const auto shown = [&](const char* key) {
    return status.at(key).is_string() ? status.at(key).get<std::string>() : std::string("-");
  };
  const bool isInstalled = status.at("installed").get<bool>();
  const bool isDaemonUp = status.at("journalDaemon").get<bool>();
  std::vector<Row> rows = {
      {{"Root", Colour::Faint}, status.at("root").get<std::string>()},
      {{"Client", Colour::Faint},
       {isInstalled ? "installed" : "removed", isInstalled ? Colour::Good : Colour::Bad}},
      {{"Version", Colour::Faint}, {shown("version"), Colour::Strong}},
      {{"Greeting", Colour::Faint}, shown("greeting")},
      {{"Support", Colour::Faint}, shown("support")},
      {{"Last run (GMT)", Colour::Faint}, shown("lastRun")},
      {{"Last update check (GMT)", Colour::Faint}, shown("lastUpdateCheck")},
      {{"A run is in progress", Colour::Faint}, status.at("running").get<bool>() ? "yes" : "no"},
      {{"Disk journal daemon", Colour::Faint},
       {isDaemonUp ? "running" : "not running", isDaemonUp ? Colour::Good : Colour::Bad}},
      {{"Volumes", Colour::Faint}, countsText(status.at("volumes"))},
      {{"Plug-ins", Colour::Faint}, countsText(status.at("plugins"))}};
  for (const Json& file : status.at("unreadable"))
    rows.push_back({{"Unreadable", Colour::Faint}, {file.get<std::string>(), Colour::Bad}});
  return rows;
}

}  // namespace

int showStatus(const Session& session, Tree& tree) {
  const Json status = statusOf(tree);
  if (session.output.isJson()) {
    session.output.document(status);
  } else {
    session.output.table(rowsOf(status));
  }
  return kDone;
}

}  // namespace corvane::cli
