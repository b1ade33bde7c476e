// The settings of the Configuration and the Options tabs, by name.
#include <algorithm>

#include "ExitStatus.h"
#include "Setting.h"
#include "commands/Commands.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

struct Change {
  const Setting* setting;
  Entry entry;
  std::string value;
};

int complainOfUnknown(Tree& tree, const std::string& name) {
  std::string known;
  for (const Setting& setting : allSettings())
    known += (known.empty() ? "" : ", ") + std::string(setting.name);
  return tree.complain(formatText("there is no setting \"%@\", only %@", {name, known}), kRefused);
}

/// Names with their values, all of them looked at before anything is changed.
int readChanges(const Session& session, Tree& tree, std::vector<Change>& changes) {
  const auto& words = session.arguments.words;
  if (words.size() % 2 != 0) {
    return tree.complain(formatText("\"%@\" has no value", {words.back()}), kWrongUsage);
  }
  for (std::size_t i = 0; i < words.size(); i += 2) {
    const Setting* setting = settingNamed(words[i]);
    if (setting == nullptr) return complainOfUnknown(tree, words[i]);
    changes.push_back({setting, setting->entry(tree.pane()), words[i + 1]});
    if (const auto refusal = refusalOf(changes.back().entry, changes.back().value)) {
      return tree.complain(formatText("%@: \"%@\" is refused: %@", {words[i], words[i + 1], *refusal}),
                           kRefused);
    }
  }
  return kDone;
}

/// Those in the sheet, or those outside it.
int giveAll(const Session& session, Tree& tree, const std::vector<Change>& changes, bool inSheet) {
  for (const Change& change : changes) {
    if (change.setting->isInSheet != inSheet) continue;
    if (session.interruption) return kOfSignal + session.interruption.signal();
    if (!give(change.entry, change.value)) {
      return tree.complain(formatText("%@ cannot be changed now", {change.setting->name}), kRefused);
    }
  }
  return kDone;
}

int giveInSheet(const Session& session, Tree& tree, const std::vector<Change>& changes) {
  const auto isInSheet = [](const Change& change) { return change.setting->isInSheet; };
  if (std::ranges::none_of(changes, isInSheet)) return kDone;
  OptionsTabView& view = tree.pane().optionsView();
  view.advancedButton.click();
  const int status = giveAll(session, tree, changes, true);
  (status == kDone ? view.sheetOkButton : view.sheetCancelButton).click();
  return status;
}

}  // namespace

int getSettings(const Session& session, Tree& tree) {
  std::vector<const Setting*> wanted;
  for (const std::string& name : session.arguments.words) {
    wanted.push_back(settingNamed(name));
    if (wanted.back() == nullptr) return complainOfUnknown(tree, name);
  }
  if (wanted.empty())
    for (const Setting& setting : allSettings()) wanted.push_back(&setting);

  Json values = Json::object();
  for (const Setting* setting : wanted)
    values[std::string(setting->name)] = shownValue(setting->entry(tree.pane()));
  if (session.output.isJson()) {
    session.output.document({{"root", tree.root()}, {"settings", values}});
  } else if (session.arguments.words.size() == 1) {
    session.output.line(textOf(values.front()));
  } else {
    std::vector<Row> rows;
    for (const auto& [name, value] : values.items()) rows.push_back({{name, Colour::Faint}, textOf(value)});
    session.output.table(rows);
  }
  std::vector<std::string> files;
  for (const Setting* setting : wanted) files.push_back(tree.paths().*setting->file);
  return tree.complainOfUnreadable(files);
}

int setSettings(const Session& session, Tree& tree) {
  std::vector<Change> changes;
  if (const int status = readChanges(session, tree, changes)) return status;
  if (const int status = tree.openLock()) return status;
  tree.beginAct();
  int status = giveAll(session, tree, changes, false);
  if (status == kDone) status = giveInSheet(session, tree, changes);
  if (const int failure = tree.endAct()) return failure;
  if (status != kDone) return status;
  tree.pane().pane().refresh();  // what is shown from here on is what is stored
  for (const Change& change : changes) {
    if (!shows(change.entry, change.value))
      return tree.nothingCame(change.setting->name, "its settings file cannot be read");
  }
  return kDone;
}

}  // namespace corvane::cli
