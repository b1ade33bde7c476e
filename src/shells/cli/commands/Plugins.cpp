// The plug-ins and their options.
#include <algorithm>
#include <iostream>

#include <termios.h>
#include <unistd.h>

#include "ExitStatus.h"
#include "PluginRows.h"
#include "Setting.h"
#include "commands/Commands.h"
#include "plugins/FileFolderList.h"
#include "plugins/PluginKeys.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

using Named = PluginRows::Named;

Json jsonOf(PluginRows& rows, const Named& plugin, bool withOptions) {
  Json json = {{"plugin", plugin.name},
               {"title", rows.titleOf(plugin.item)},
               {"enabled", rows.isEnabled(plugin.item)}};
  if (!withOptions) return json;
  json["options"] = Json::array();
  for (const Named& row : rows.options(plugin.item)) {
    const PluginOption option = PluginRows::optionOf(row.item);
    Json shown = {{"option", row.name},
                  {"type", option.type()},
                  {"title", option.title()},
                  {"hint", option.hint()},
                  {"value", rows.shownValue(row.item)}};
    if (option.isOfType(setting_type::kPopUpMenu)) {
      shown["choices"] = Json::array();
      for (const OutlineItem& value : rows.valueRows(row.item)) {
        const CellReference cell = rows.bareCell(value);
        if (const auto* menu = std::get_if<PopUpButtonCell>(cell.get())) shown["choices"] = menu->items;
      }
    }
    json["options"].push_back(std::move(shown));
  }
  return json;
}

/// The value in one line.
std::string lineOf(const Json& value) {
  if (!value.is_structured()) return textOf(value);
  std::string line;
  for (const auto& [key, part] : value.items()) {
    line += line.empty() ? "" : ", ";
    line += value.is_array() ? textOf(part) : key + "=" + textOf(part);
  }
  return line;
}

Row headOf(const Json& plugin) {
  const bool isEnabled = plugin.at("enabled").get<bool>();
  return {{plugin.at("plugin").get<std::string>(), Colour::Strong},
          {isEnabled ? "on" : "off", isEnabled ? Colour::Good : Colour::Bad},
          plugin.at("title").get<std::string>()};
}

void addRows(const Json& plugin, std::vector<Row>& table) {
  table.push_back(headOf(plugin));
  for (const Json& option : plugin.at("options")) {
    table.push_back({"  " + option.at("option").get<std::string>(),
                     {option.at("type").get<std::string>(), Colour::Faint},
                     option.at("title").get<std::string>(),
                     {lineOf(option.at("value")), Colour::Strong}});
  }
}

int complainOfType(Tree& tree, const Named& row, std::string_view act) {
  return tree.complain(
      formatText("%@ is a %@, which %@", {row.name, PluginRows::optionOf(row.item).type(), act}), kRefused);
}

/// Asks for something on a terminal, and keeps what is typed there from being seen for as long as it lives.
class QuietTerminal {
 public:
  explicit QuietTerminal(const std::string& question)
      : isTerminal_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!isTerminal_) return;
    Output::ask(question);
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_lflag |= ECHONL;
    (void)::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  QuietTerminal(const QuietTerminal&) = delete;
  QuietTerminal& operator=(const QuietTerminal&) = delete;
  ~QuietTerminal() {
    if (isTerminal_) (void)::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
  }

 private:
  termios before_{};
  bool isTerminal_;
};

/// The value itself, or the line that standard input has for it: a password need not stand on the command
/// line, where other users could see it.
int readValue(const Session& session, Tree& tree, const Named& row, std::string& value) {
  value = session.arguments.words.front();
  const bool isAsked = PluginRows::optionOf(row.item).isOfType(setting_type::kPasswordField) && value == "-";
  if (!isAsked) return kDone;
  const QuietTerminal quiet(formatText("%@: ", {row.name}));
  if (!session.interruption.waitReadable(STDIN_FILENO)) return kOfSignal + session.interruption.signal();
  if (std::getline(std::cin, value)) return kDone;
  return tree.complain(formatText("%@: standard input holds no password", {row.name}), kRefused);
}

/// The value that a cell of the option takes for the text; complains when it takes none.
std::optional<PropertyList> typedValue(Tree& tree, const Named& row, const CellReference& cell,
                                       const std::string& text) {
  const auto refuse = [&](const std::string& reason) {
    const bool isSecret = PluginRows::optionOf(row.item).isOfType(setting_type::kPasswordField);
    (void)tree.complain(isSecret ? formatText("%@: the value is refused: %@", {row.name, reason})
                                 : formatText("%@: \"%@\" is refused: %@", {row.name, text, reason}),
                        kRefused);
    return std::nullopt;
  };
  if (const auto* menu = std::get_if<PopUpButtonCell>(cell.get())) {
    const auto found = std::ranges::find(menu->items, text);
    if (found != menu->items.end()) return PropertyList::integer(found - menu->items.begin());
    std::string all;
    for (const std::string& item : menu->items) all += (all.empty() ? "" : ", ") + item;
    return refuse("expected one of " + all);
  }
  const auto formatter = std::visit(
      [](const auto& entry) -> Formatter* {
        if constexpr (requires { entry.formatter; }) return entry.formatter.get();
        return nullptr;
      },
      *cell);
  if (const auto refusal = refusalBy(formatter, text)) return refuse(*refusal);
  return PropertyList::string(text);
}

/// What the command line names, in an open pane.
struct Target {
  std::optional<Named> plugin;
  std::optional<Named> option;
};

/// Finds the plug-in, and the option where one is named, before and after the lock opens: what cannot be
/// found needs no rights.
int find(const Session& session, Tree& tree, Target& target) {
  const auto look = [&] {
    PluginRows rows(tree);
    target.plugin = rows.pluginNamed(session.arguments.name);
    if (!target.plugin) return false;
    if (session.arguments.option.empty()) return true;
    target.option = rows.optionNamed(*target.plugin, session.arguments.option);
    return target.option.has_value();
  };
  if (!look()) return kRefused;
  if (const int status = tree.openLock()) return status;
  return look() ? kDone : kRefused;
}

/// The act has ended: whether what is stored now is what was wanted. Files of root's home are not read for
/// it, since each such read leaves a copy.
int endChange(Tree& tree, const Target& target, const std::function<bool(const Json&)>& isAsWanted) {
  if (const int status = tree.endAct()) return status;
  const PluginOption option = PluginRows::optionOf(target.option->item);
  if (hasPrefixIgnoringCase(option.storagePath(), kRootHomePrefix)) return kDone;
  tree.pane().plugins().refresh();
  PluginRows rows(tree);
  const auto plugin = rows.pluginNamed(target.plugin->name);
  const auto again = plugin ? rows.optionNamed(*plugin, target.option->name) : std::nullopt;
  if (!again) return kRefused;  // it has gone meanwhile
  const Json shown = rows.shownValue(again->item);
  if (isAsWanted(shown)) return kDone;
  return tree.nothingCame(target.option->name, formatText("the pane still shows \"%@\"", {lineOf(shown)}));
}

int setCheckbox(Tree& tree, const Target& target, const std::string& word) {
  const auto wanted = stateNamed(word);
  if (!wanted) {
    return tree.complain(formatText("%@: \"%@\" is refused: expected on or off", {target.option->name, word}),
                         kRefused);
  }
  PluginRows rows(tree);
  tree.beginAct();
  if (rows.shownValue(target.option->item) != Json(*wanted)) rows.click(target.option->item);
  return endChange(tree, target, [&](const Json& shown) { return shown == Json(*wanted); });
}

int setNames(Tree& tree, const Target& target, const std::vector<std::string>& words) {
  PluginRows rows(tree);
  const Json before = rows.shownValue(target.option->item);
  Json wanted = before;
  for (const std::string& word : words) {
    const auto equals = word.rfind('=');
    const auto state = equals != std::string::npos ? stateNamed(word.substr(equals + 1)) : std::nullopt;
    const std::string name = word.substr(0, equals);
    if (!state || !before.contains(name)) {
      std::string names;
      for (const auto& [known, on] : before.items()) names += (names.empty() ? "" : ", ") + known;
      return tree.complain(
          formatText("%@: \"%@\" is refused: expected NAME=on or NAME=off, with one of the names %@",
                     {target.option->name, word, names}),
          kRefused);
    }
    wanted[name] = *state;
  }
  tree.beginAct();
  for (const OutlineItem& row : rows.valueRows(target.option->item)) {
    const std::string& name = *row.object().asString();
    if (wanted.contains(name) && wanted[name] != before[name]) rows.click(row);
  }
  return endChange(tree, target, [&](const Json& shown) { return shown == wanted; });
}

int choosePath(Tree& tree, const Target& target, const OutlineItem& row, const std::string& path,
               const std::function<bool(const Json&)>& isAsWanted) {
  tree.dialogs().chosenPath = tree.paths().onDisk(path);
  tree.dialogs().wasRefused = false;
  tree.beginAct();
  PluginRows(tree).click(row);
  if (tree.dialogs().wasRefused) {
    return tree.complain(
        formatText("%@: \"%@\" is refused: there is no such file, or it is of the other kind",
                   {target.option->name, path}),
        kRefused);
  }
  return endChange(tree, target, isAsWanted);
}

int setText(Tree& tree, const Target& target, const OutlineItem& row, const std::string& text) {
  PluginRows rows(tree);
  const CellReference cell = rows.bareCell(row);
  const auto typed = typedValue(tree, *target.option, cell, text);
  if (!typed) return kRefused;
  tree.beginAct();
  rows.edit(row, *typed);
  return endChange(tree, target, [&](const Json& shown) {
    if (std::holds_alternative<SecureTextFieldCell>(*cell))
      return shown.empty() || text.empty() == (shown == "");
    // A cleared number stores what it then shows.
    if (std::holds_alternative<ComboBoxCell>(*cell))
      return text.empty() || textOf(shown) == textOf(Json(intValue(text)));
    return textOf(shown) == text;
  });
}

int showAll(const Session& session, Tree& tree, const std::vector<Named>& plugins, bool withOptions) {
  PluginRows rows(tree);
  Json all = Json::array();
  for (const Named& plugin : plugins) all.push_back(jsonOf(rows, plugin, withOptions));
  if (session.output.isJson()) {
    session.output.document({{"root", tree.root()}, {"plugins", all}});
    return kDone;
  }
  std::vector<Row> table;
  for (const Json& plugin : all) {
    if (withOptions) {
      addRows(plugin, table);
    } else {
      table.push_back(headOf(plugin));
    }
  }
  session.output.table(table);
  return kDone;
}

}  // namespace

int showPlugins(const Session& session, Tree& tree) {
  return showAll(session, tree, PluginRows(tree).plugins(), false);
}

int showPluginOptions(const Session& session, Tree& tree) {
  PluginRows rows(tree);
  if (session.arguments.words.empty()) return showAll(session, tree, rows.plugins(), true);
  std::vector<Named> wanted;
  for (const std::string& name : session.arguments.words) {
    const auto plugin = rows.pluginNamed(name);
    if (!plugin) return kRefused;
    wanted.push_back(*plugin);
  }
  return showAll(session, tree, wanted, true);
}

int enablePlugin(const Session& session, Tree& tree) {
  const bool wanted = session.arguments.command == Command::PluginsEnable;
  Target target;
  if (const int status = find(session, tree, target)) return status;
  PluginRows rows(tree);
  tree.beginAct();
  if (rows.isEnabled(target.plugin->item) != wanted) rows.clickEnabled(target.plugin->item);
  if (const int status = tree.endAct()) return status;
  tree.pane().plugins().refresh();
  const auto again = PluginRows(tree).pluginNamed(target.plugin->name);
  if (again && PluginRows(tree).isEnabled(again->item) == wanted) return kDone;
  return tree.nothingCame(target.plugin->name, "its settings file cannot be read");
}

int setPluginOption(const Session& session, Tree& tree) {
  using Editor = SettingType::Editor;
  Target target;
  if (const int status = find(session, tree, target)) return status;
  const auto& words = session.arguments.words;
  const PluginOption option = PluginRows::optionOf(target.option->item);
  const SettingType& type = option.settingType();
  if (type.rows == SettingType::Rows::Names) return setNames(tree, target, words);
  if (type.rows == SettingType::Rows::Entries)
    return complainOfType(tree, *target.option, "is changed with add and remove");
  if (words.size() != 1) {
    return tree.complain(formatText("%@ takes one value", {target.option->name}), kRefused);
  }
  if (option.isOfType(setting_type::kCheckbox)) return setCheckbox(tree, target, words.front());
  const auto rows = PluginRows(tree).valueRows(target.option->item);
  const bool isPicker = type.editor == Editor::FilePicker || type.editor == Editor::FolderPicker;
  if (rows.empty() || (!isPicker && !type.showsValue))
    return complainOfType(tree, *target.option, "has no value");
  if (!isPicker) {
    std::string value;
    if (const int status = readValue(session, tree, *target.option, value)) return status;
    return setText(tree, target, rows.front(), value);
  }
  return choosePath(tree, target, rows.front(), words.front(),
                    [&](const Json& shown) { return textOf(shown) == words.front(); });
}

int changePluginList(const Session& session, Tree& tree) {
  Target target;
  if (const int status = find(session, tree, target)) return status;
  const bool adds = session.arguments.command == Command::PluginsAdd;
  if (PluginRows::optionOf(target.option->item).settingType().rows != SettingType::Rows::Entries) {
    return complainOfType(tree, *target.option, "is no list");
  }
  for (const std::string& path : session.arguments.words) {
    if (session.interruption) return kOfSignal + session.interruption.signal();
    PluginRows rows(tree);
    const auto plugin = rows.pluginNamed(target.plugin->name);
    target.option = plugin ? rows.optionNamed(*plugin, target.option->name) : std::nullopt;
    if (!target.option) return kRefused;
    const auto values = rows.valueRows(target.option->item);
    const auto row = std::ranges::find_if(values, [&](const OutlineItem& value) {
      const std::string& text = *value.object().asString();
      return adds ? isAddEntry(text) : text == path && !isAddEntry(text);
    });
    const auto holds = [&](const Json& shown) {
      return std::ranges::any_of(shown, [&](const Json& entry) { return entry == path; });
    };
    int status = kDone;
    if (row == values.end()) {
      status = tree.complain(
          adds ? formatText("%@ holds no \"%@\", so nothing can be added", {target.option->name, kAddEntry})
               : formatText("%@ holds no \"%@\"", {target.option->name, path}),
          kRefused);
    } else if (adds) {
      status = choosePath(tree, target, *row, path, holds);
    } else {
      tree.dialogs().confirms = true;
      tree.beginAct();
      rows.click(*row);
      status = endChange(tree, target, [&](const Json& shown) { return !holds(shown); });
    }
    if (status != kDone) return status;
  }
  return kDone;
}

int testPlugin(const Session& session, Tree& tree) {
  Target target;
  if (const int status = find(session, tree, target)) return status;
  PluginRows rows(tree);
  const auto options = rows.options(target.plugin->item);
  const auto isTest = [](const Named& row) {
    return PluginRows::optionOf(row.item).isOfType(setting_type::kPluginValidation);
  };
  const auto test = std::ranges::find_if(options, isTest);
  if (test == options.end()) {
    return tree.complain(formatText("%@ has no test of its settings", {target.plugin->name}), kRefused);
  }
  tree.beginAct();
  rows.click(rows.valueRows(test->item).front());
  if (session.interruption) return kOfSignal + session.interruption.signal();
  const auto& verdict = tree.pane().plugins().validation().verdict();
  if (tree.dialogs().told.empty()) return tree.nothingCame(target.plugin->name, "it names no executable");
  if (!verdict) return kHighestCode;  // told by the pane's alert
  if (session.output.isJson()) {
    session.output.document({{"root", tree.root()},
                             {"plugin", target.plugin->name},
                             {"code", verdict->code},
                             {"message", verdict->message}});
  } else if (verdict->code == 0) {
    session.output.line(verdict->message);
  }
  return verdict->code >= 0 && verdict->code < kHighestCode ? verdict->code : kHighestCode;
}

}  // namespace corvane::cli
