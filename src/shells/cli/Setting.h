// The settings of the Configuration and the Options tabs under the names that the command line has for them.
// A setting is a control of the pane: its value is what the control shows, and a new one is pasted, ticked or
// chosen there. The names are documented; none ever gets another meaning.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Output.h"
#include "assembly/PaneAssembly.h"

namespace corvane::cli {

/// A control that a value can be given to. Exactly one of them is there.
struct Entry {
  Entry(TextField& control) : field(&control) {}
  Entry(Button& control) : checkBox(&control) {}
  Entry(PopUpButton& control) : menu(&control) {}
  TextField* field = nullptr;
  Button* checkBox = nullptr;
  PopUpButton* menu = nullptr;
};

/// What the control shows: a number or nothing where its formatter admits only numbers, a text, a boolean, or
/// the chosen title.
[[nodiscard]] Json shownValue(const Entry& entry);
/// Why the value could not be pasted, ticked or chosen; nothing when it could.
[[nodiscard]] std::optional<std::string> refusalOf(const Entry& entry, const std::string& value);
/// Gives the value to the control as a user would; false when the control does not take it now. A box that is
/// in the state already is not clicked.
[[nodiscard]] bool give(const Entry& entry, const std::string& value);
/// Whether the control shows what was given.
[[nodiscard]] bool shows(const Entry& entry, const std::string& value);
/// A value as text: numbers and texts as they are, "on" and "off", nothing as nothing.
[[nodiscard]] std::string textOf(const Json& value);
/// The state that a word for it means: on, yes, true, 1 and their opposites, in any case.
[[nodiscard]] std::optional<bool> stateNamed(std::string_view word);
/// Why a formatter does not admit a text, with its range.
[[nodiscard]] std::optional<std::string> refusalBy(Formatter* formatter, const std::string& text);

struct Setting {
  std::string_view name;
  Entry (*entry)(PaneAssembly& pane);
  const std::string PathTable::*file;  // that holds it
  bool isInSheet = false;              // in the advanced sheet of Time Machine
};

[[nodiscard]] const std::vector<Setting>& allSettings();
/// Null when there is none of that name.
[[nodiscard]] const Setting* settingNamed(std::string_view name);

}  // namespace corvane::cli
