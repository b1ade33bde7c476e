#include "Setting.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane::cli {
namespace {

bool isNumberField(const TextField& field) {
  return dynamic_cast<const MyNumberFormatter*>(field.formatter().get()) != nullptr;
}

std::string lowered(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](unsigned char c) { return std::tolower(c); });
  return result;
}

std::optional<int> itemNamed(const PopUpButton& menu, const std::string& title) {
  for (std::size_t index = 0; index < menu.items().size(); ++index)
    if (lowered(menu.items()[index]) == lowered(title)) return static_cast<int>(index);
  return std::nullopt;
}

std::string joined(const std::vector<std::string>& items) {
  std::string all;
  for (const std::string& item : items) all += (all.empty() ? "" : ", ") + item;
  return all;
}

ButtonState stateOf(bool on) { return on ? ButtonState::On : ButtonState::Off; }

template <auto Control>
Entry ofConfiguration(PaneAssembly& pane) {
  return pane.configurationView().*Control;
}
template <auto Control>
Entry ofOptions(PaneAssembly& pane) {
  return pane.optionsView().*Control;
}

}  // namespace

std::optional<bool> stateNamed(std::string_view word) {
  constexpr std::array<std::string_view, 4> kOn = {"on", "yes", "true", "1"};
  constexpr std::array<std::string_view, 4> kOff = {"off", "no", "false", "0"};
  const std::string wanted = lowered(word);
  if (std::ranges::find(kOn, wanted) != kOn.end()) return true;
  if (std::ranges::find(kOff, wanted) != kOff.end()) return false;
  return std::nullopt;
}

std::optional<std::string> refusalBy(Formatter* formatter, const std::string& text) {
  if (formatter == nullptr) return std::nullopt;
  const PartialStringCheck check = formatter->isPartialStringValid(text);
  if (check.valid || check.newEditingString) return std::nullopt;
  if (const auto* number = dynamic_cast<const MyNumberFormatter*>(formatter)) {
    return formatText("expected a whole number from %d to %d",
                      {std::to_string(number->minimum()), std::to_string(number->maximum())});
  }
  if (const auto* length = dynamic_cast<const CustomTextFieldCellFormatter*>(formatter)) {
    return formatText("expected at most %d characters", {std::to_string(length->maximumLength())});
  }
  return "the field does not take it";
}

Json shownValue(const Entry& entry) {
  if (entry.checkBox != nullptr) return entry.checkBox->state() != ButtonState::Off;
  if (entry.menu != nullptr) {
    const int selected = entry.menu->indexOfSelectedItem();
    return selected < 0 ? Json() : Json(entry.menu->items()[static_cast<std::size_t>(selected)]);
  }
  const std::string& text = entry.field->stringValue();
  if (!isNumberField(*entry.field)) return text;
  return text.empty() ? Json() : Json(intValue(text));
}

std::optional<std::string> refusalOf(const Entry& entry, const std::string& value) {
  if (entry.checkBox != nullptr) {
    return stateNamed(value) ? std::nullopt : std::optional<std::string>("expected on or off");
  }
  if (entry.menu != nullptr) {
    if (itemNamed(*entry.menu, value)) return std::nullopt;
    return "expected one of " + joined(entry.menu->items());
  }
  return refusalBy(entry.field->formatter().get(), value);
}

bool give(const Entry& entry, const std::string& value) {
  const auto takesActs = [](const Control& control) { return control.enabled() && !control.hidden(); };
  if (entry.checkBox != nullptr) {
    if (!takesActs(*entry.checkBox)) return false;
    if (entry.checkBox->state() != stateOf(*stateNamed(value))) entry.checkBox->click();
    return true;
  }
  if (entry.menu != nullptr) {
    if (!takesActs(*entry.menu)) return false;
    entry.menu->choose(*itemNamed(*entry.menu, value));
    return true;
  }
  if (!entry.field->typeText(value)) return false;
  entry.field->endEditing();
  return true;
}

bool shows(const Entry& entry, const std::string& value) {
  if (entry.checkBox != nullptr) return entry.checkBox->state() == stateOf(*stateNamed(value));
  if (entry.menu != nullptr) return entry.menu->indexOfSelectedItem() == itemNamed(*entry.menu, value);
  if (!isNumberField(*entry.field)) return entry.field->stringValue() == value;
  // A cleared number field stores what it then shows.
  return value.empty() || entry.field->intValue() == intValue(value);
}

std::string textOf(const Json& value) {
  if (value.is_null()) return {};
  if (value.is_boolean()) return value.get<bool>() ? "on" : "off";
  return value.is_string() ? value.get<std::string>() : value.dump();
}

const std::vector<Setting>& allSettings() {
  using C = ConfigurationTabView;
  using O = OptionsTabView;
  using P = PathTable;
  static const std::vector<Setting> all = {
      {"run-interval", ofConfiguration<&C::runIntervalTextField>, &P::clientSettings},
      {"group", ofConfiguration<&C::clientGroupTextField>, &P::clientSettings},
      {"startup-disk.warn", ofOptions<&O::bootVolumeWarningCheckbox>, &P::rootCapacitySettings},
      {"startup-disk.percent", ofOptions<&O::bootVolumeFullTextField>, &P::rootCapacitySettings},
      {"time-machine.warn", ofOptions<&O::timeMachineWarningCheckbox>, &P::timeMachineSettings},
      {"time-machine.days", ofOptions<&O::timeMachineInactiveTextField>, &P::timeMachineSettings},
      {"time-machine.backup-days", ofOptions<&O::manuallyTriggerTextField>, &P::timeMachineSettings, true},
      {"time-machine.backup-hour", ofOptions<&O::timeOfDayTextField>, &P::timeMachineSettings, true},
      {"time-machine.backup-half", ofOptions<&O::amPmButton>, &P::timeMachineSettings, true},
      {"time-machine.removal-warn", ofOptions<&O::timeMachineRemovalWarning>, &P::timeMachineSettings, true},
      {"automount", ofOptions<&O::automountCheckbox>, &P::autoDiskMount},
  };
  return all;
}

const Setting* settingNamed(std::string_view name) {
  const auto& all = allSettings();
  const auto found = std::ranges::find(all, name, &Setting::name);
  return found != all.end() ? &*found : nullptr;
}

}  // namespace corvane::cli
