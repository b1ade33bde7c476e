#include "options/TimeMachineSheet.h"

#include <memory>
#include <string>

#include "formatters/MyNumberFormatter.h"
#include "options/WarningKeys.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr int kAm = 0;
constexpr int kPm = 1;
constexpr std::int32_t kNoon = 12;

/// An hour of the day as a clock of twelve hours shows it.
struct ClockHour {
  std::int32_t hour = kNoon;
  int half = kAm;
};

ClockHour clockHour(std::int32_t hourOfDay) {
  if (hourOfDay == 0) return {kNoon, kAm};
  // Compared and subtracted without a sign: a negative hour counts as one of the afternoon.
  const auto hour = static_cast<std::uint32_t>(hourOfDay);
  constexpr auto noon = static_cast<std::uint32_t>(kNoon);
  if (hour < noon) return {hourOfDay, kAm};
  return {hour == noon ? kNoon : static_cast<std::int32_t>(hour - noon), kPm};
}

}  // namespace

void TimeMachineSheet::attachFormatters() {
  view_.timeOfDayTextField.setFormatter(std::make_shared<MyNumberFormatter>(1, 12, 1));
  view_.manuallyTriggerTextField.setFormatter(std::make_shared<MyNumberFormatter>(0, 99, 0));
}

void TimeMachineSheet::detachFormatters() {
  view_.timeOfDayTextField.setFormatter(nullptr);
  view_.manuallyTriggerTextField.setFormatter(nullptr);
}

void TimeMachineSheet::showSettings() {
  // A formatter remembers that its field was cleared, and would show its default in place of the file's
  // value.
  attachFormatters();
  const QLDefaultsController& store = timeMachine_.store();
  const ClockHour shown = clockHour(intValue(store.value(time_machine_key::kManualRunHour)));
  view_.amPmButton.selectItemAtIndex(shown.half);
  view_.timeOfDayTextField.setIntValue(shown.hour);
  view_.manuallyTriggerTextField.setIntValue(intValue(store.value(time_machine_key::kDaysUntilManualRun)));
  view_.timeMachineRemovalWarning.setIntState(intValue(store.value(time_machine_key::kEnableOnRemoval)));
}

void TimeMachineSheet::begin() { view_.window.beginSheet(view_.timeMachineAdvancedWindow); }

std::int32_t TimeMachineSheet::enteredHour() const {
  const std::int32_t entered = view_.timeOfDayTextField.intValue();
  const int half = view_.amPmButton.indexOfSelectedItem();
  if (entered == kNoon) return half != kAm ? kNoon : 0;
  if (half != kPm) return entered;
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(entered) + static_cast<std::uint32_t>(kNoon));
}

void TimeMachineSheet::acceptSheet() {
  // Who presses the button need not have left the field: what was cleared in it is stored as it will be
  // shown.
  for (TextField* field : {&view_.timeOfDayTextField, &view_.manuallyTriggerTextField}) field->endEditing();
  QLDefaultsController& store = timeMachine_.store();
  if (ObservableDictionary* values = store.values()) {
    // Keys that the file held already are observed, so each of them writes the file at once, and all are
    // written once more at the end. This is intended: the last write holds also the keys that are new.
    values->set(time_machine_key::kManualRunHour,
                PropertyList::string(formatText("%d", {std::to_string(enteredHour())})));
    values->set(time_machine_key::kDaysUntilManualRun,
                PropertyList::integer(view_.manuallyTriggerTextField.intValue()));
    values->set(time_machine_key::kEnableOnRemoval,
                PropertyList::boolean(view_.timeMachineRemovalWarning.state() != ButtonState::Off));
  }
  store.commitChanges();
  end();
}

void TimeMachineSheet::cancelSheet() { end(); }

void TimeMachineSheet::end() { view_.window.endSheet(view_.timeMachineAdvancedWindow); }

}  // namespace corvane
