// The list of volumes with the box beside it. A volume is selected to be looked at and changed, as in the
// tab.
#include <array>
#include <optional>

#include "ExitStatus.h"
#include "Setting.h"
#include "commands/Commands.h"
#include "options/VolumeList.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

struct VolumeSetting {
  const char* name;
  Entry (*entry)(OptionsTabView& view);
};

template <auto Control>
Entry inBox(OptionsTabView& view) {
  return view.*Control;
}

constexpr std::array<VolumeSetting, 4> kSettings = {{
    {"absence.warn", inBox<&OptionsTabView::monitorPresenceCheckbox>},
    {"absence.minutes", inBox<&OptionsTabView::monitorPresenceThresholdTextField>},
    {"usage.warn", inBox<&OptionsTabView::monitorUsageCheckbox>},
    {"usage.percent", inBox<&OptionsTabView::monitorUsageThresholdTextField>},
}};

std::optional<Entry> entryNamed(OptionsTabView& view, std::string_view name) {
  for (const VolumeSetting& setting : kSettings)
    if (setting.name == name) return setting.entry(view);
  return std::nullopt;
}

/// The volumes can be shown only while the daemon of the disk journal is up; the pane says so in its line.
int expectList(Tree& tree) {
  if (tree.pane().options().journalDaemon().isDiskJournalPIDRunning()) return kDone;
  return tree.complain(tree.pane().optionsView().defaultTextField.stringValue(), kUnavailable);
}

Json volumeOfRow(Tree& tree, int row) {
  OptionsTabView& view = tree.pane().optionsView();
  const VolumeCatalogue& catalogue = tree.pane().options().catalogue();
  const Dictionary entry = catalogue.volumes().entryAtRow(row);
  view.volumesTable.selectRow(row);
  Json volume = {{"name", volumeName(entry)},
                 {"path", volumePath(entry)},
                 {"present", catalogue.journal().isVolumePresentPath(volumeName(entry), volumePath(entry))},
                 {"duplicate", catalogue.isVolumeDuplicatePath(volumeName(entry), volumePath(entry))}};
  for (const VolumeSetting& setting : kSettings) volume[setting.name] = shownValue(setting.entry(view));
  return volume;
}

Row rowOf(const Json& volume) {
  const bool isPresent = volume.at("present").get<bool>();
  const bool isDuplicate = volume.at("duplicate").get<bool>();
  std::string state = isDuplicate ? "duplicate" : "";
  if (!isPresent) state += state.empty() ? "missing" : ", missing";
  if (state.empty()) state = "present";
  const auto alert = [&](const char* warn, const char* threshold, const char* unit) {
    return volume.at(warn).get<bool>() ? textOf(volume.at(threshold)) + unit : std::string("off");
  };
  return {{volume.at("name").get<std::string>(), Colour::Strong},
          {state, isDuplicate || !isPresent ? Colour::Bad : Colour::Good},
          {alert("absence.warn", "absence.minutes", " min")},
          {alert("usage.warn", "usage.percent", " %")},
          {volume.at("path").get<std::string>(), Colour::Faint}};
}

/// Selects the only volume of that name, or that path.
int select(Tree& tree, const std::string& name) {
  const auto& entries = tree.pane().options().catalogue().volumes().entries();
  const bool isPath = name.starts_with('/');
  std::vector<int> rows;
  std::string paths;
  for (std::size_t row = 0; row < entries.size(); ++row) {
    const bool isMeant = isPath ? volumePath(entries[row]) == name : hasName(entries[row], name);
    if (!isMeant) continue;
    rows.push_back(static_cast<int>(row));
    paths += (paths.empty() ? "" : ", ") + std::string(volumePath(entries[row]));
  }
  if (rows.empty()) return tree.complain(formatText("there is no volume \"%@\"", {name}), kRefused);
  if (rows.size() > 1) {
    return tree.complain(
        formatText("more than one volume is called \"%@\"; name its mount path: %@", {name, paths}),
        kRefused);
  }
  tree.pane().optionsView().volumesTable.clickRow(rows.front());
  return kDone;
}

/// Opens the lock and selects the volume that is to be changed.
int begin(Tree& tree, const std::string& name) {
  if (const int status = expectList(tree)) return status;
  if (const int status = tree.openLock()) return status;
  if (const int status = expectList(tree)) return status;
  return select(tree, name);
}

}  // namespace

int showVolumes(const Session& session, Tree& tree) {
  if (const int status = expectList(tree)) return status;
  if (session.arguments.all) tree.pane().options().volumeTable().toggleShowAllVolumeTypes();
  Json volumes = Json::array();
  const int rows = tree.pane().optionsView().volumesTable.numberOfRows();
  for (int row = 0; row < rows; ++row) volumes.push_back(volumeOfRow(tree, row));
  const int status = tree.complainOfUnreadable({tree.paths().diskJournal, tree.paths().volumesSettings});
  if (session.output.isJson()) {
    session.output.document({{"root", tree.root()}, {"volumes", volumes}});
    return status;
  }
  std::vector<Row> table = {{{"VOLUME", Colour::Faint},
                             {"STATE", Colour::Faint},
                             {"ABSENCE", Colour::Faint},
                             {"USAGE", Colour::Faint},
                             {"MOUNT PATH", Colour::Faint}}};
  for (const Json& volume : volumes) table.push_back(rowOf(volume));
  session.output.table(table);
  return status;
}

int setVolume(const Session& session, Tree& tree) {
  const auto& words = session.arguments.words;
  OptionsTabView& view = tree.pane().optionsView();
  if (words.size() % 2 != 0) {
    return tree.complain(formatText("\"%@\" has no value", {words.back()}), kWrongUsage);
  }
  for (std::size_t i = 0; i < words.size(); i += 2) {
    const auto entry = entryNamed(view, words[i]);
    if (!entry) {
      return tree.complain(
          formatText(
              "there is no setting \"%@\" of a volume, only absence.warn, absence.minutes, usage.warn, "
              "usage.percent",
              {words[i]}),
          kRefused);
    }
    if (const auto refusal = refusalOf(*entry, words[i + 1])) {
      return tree.complain(formatText("%@: \"%@\" is refused: %@", {words[i], words[i + 1], *refusal}),
                           kRefused);
    }
  }
  if (const int status = begin(tree, session.arguments.name)) return status;
  if (!view.monitorPresenceCheckbox.enabled()) {
    return tree.complain(
        formatText("the alerts of \"%@\" cannot be changed: it is a duplicate", {session.arguments.name}),
        kRefused);
  }
  tree.beginAct();
  for (std::size_t i = 0; i < words.size(); i += 2) {
    if (session.interruption) return kOfSignal + session.interruption.signal();
    if (!give(*entryNamed(view, words[i]), words[i + 1])) {
      return tree.complain(formatText("%@ cannot be changed now", {words[i]}), kRefused);
    }
  }
  return tree.endAct();
}

int purgeVolume(const Session& session, Tree& tree) {
  if (const int status = begin(tree, session.arguments.name)) return status;
  Button& purge = tree.pane().optionsView().purgeButton;
  if (!purge.enabled()) {
    return tree.complain(formatText("\"%@\" is mounted and stays in the list", {session.arguments.name}),
                         kRefused);
  }
  tree.beginAct();
  purge.click();
  return tree.endAct();
}

}  // namespace corvane::cli
