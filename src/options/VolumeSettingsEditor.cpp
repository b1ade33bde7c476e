#include "options/VolumeSettingsEditor.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <utility>

#include "options/VolumeKeys.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

// What is stored may lie outside what the fields' formatters let a user type (1 to 60 minutes). Both ranges
// are intended.
constexpr std::int32_t kLeastPresenceThreshold = 0;
constexpr std::int32_t kLeastUsageThreshold = 1;
constexpr std::int32_t kLargestThreshold = 99;

/// In points: between the name column and the box, and inside the scroll view's border.
constexpr double kGapAfterColumn = 3;
constexpr double kBorder = 1;

/// A number that a file holds as a text is shown as the number; what is neither is not shown.
PropertyList shownThreshold(const PropertyList& stored) {
  if (stored.asString() != nullptr) return PropertyList::integer(intValue(stored));
  return isNumber(stored) ? stored : PropertyList();
}

bool isOnlyOneOfItsVolume(const VolumeList& volumes, const Dictionary& entry) {
  return std::ranges::count_if(volumes.entries(), [&](const Dictionary& other) {
           return volumeName(other) == volumeName(entry) && volumePath(other) == volumePath(entry);
         }) == 1;
}

}  // namespace

Dictionary VolumeSettingsEditor::selectedEntry() const {
  return catalogue_.volumes().entryAtRow(view_.volumesTable.selectedRow());
}

void VolumeSettingsEditor::refreshVolumeControls() {
  const Dictionary entry = selectedEntry();
  if (entry) {
    showEntry(entry);
  } else {
    view_.purgeButton.setEnabled(false);
    view_.defaultTextField.setHidden(false);
  }
  hideBoxControls(!entry);
  view_.showAllVolumeTypesButton.setEnabled(pane_.unlocked());
}

/// A rebuild makes new entries; an old one is found again by its name and path where no other entry has the
/// same.
bool VolumeSettingsEditor::isShownAlready(const Dictionary& entry) const {
  if (!shown_) return false;
  if (shown_.isSameObject(entry)) return true;
  return shownIsTheOnlyOne_ && isOnlyOneOfItsVolume(catalogue_.volumes(), entry) &&
         volumeName(shown_) == volumeName(entry) && volumePath(shown_) == volumePath(entry);
}

/// Each number is stored as it is typed, so a text that is being typed stays only as long as the entry holds
/// what was stored for it: neither a volume's threshold that has changed meanwhile nor that of another volume
/// is hidden by it.
void VolumeSettingsEditor::showThresholds(const Dictionary& entry) {
  const bool isShown = isShownAlready(entry);
  shown_ = entry;
  shownIsTheOnlyOne_ = isOnlyOneOfItsVolume(catalogue_.volumes(), entry);
  for (const auto& [field, key] :
       {std::pair{&view_.monitorUsageThresholdTextField, volume_key::kUsageThreshold},
        std::pair{&view_.monitorPresenceThresholdTextField, volume_key::kPresenceThreshold}}) {
    const PropertyList threshold = shownThreshold(entry.value(key));
    if (isShown && field->objectValue() == threshold) continue;
    field->setObjectValue(threshold);
  }
}

void VolumeSettingsEditor::showEntry(const Dictionary& entry) {
  const std::string_view name = volumeName(entry);
  const std::string_view path = volumePath(entry);
  const bool unlocked = pane_.unlocked();
  view_.purgeButton.setEnabled(unlocked && !catalogue_.journal().isVolumePresentPath(name, path));
  view_.monitorPresenceCheckbox.setState(
      boolValue(entry.value(volume_key::kMonitorPresence)) ? ButtonState::On : ButtonState::Off);
  view_.monitorUsageCheckbox.setIntState(intValue(entry.value(volume_key::kMonitorUsage)));
  if (entry.string(volume_key::kPath) != nullptr) {
    view_.volumeOptionPathButton.setTitle(std::string(path));
    view_.volumeOptionPathButton.setToolTip(std::string(path));  // a long path is cut off
  }
  showThresholds(entry);

  const bool editable = unlocked && !catalogue_.isVolumeDuplicatePath(name, path);
  for (Control* control : std::initializer_list<Control*>{
           &view_.volumeOptionWarnAfterButton, &view_.volumeOptionWarnAtButton,
           &view_.volumeOptionMinutesButton, &view_.volumeOptionPercentageButton,
           &view_.volumeOptionMountPathButton, &view_.volumeOptionPathButton, &view_.monitorUsageCheckbox,
           &view_.monitorPresenceCheckbox, &view_.monitorUsageThresholdTextField,
           &view_.monitorPresenceThresholdTextField}) {
    control->setEnabled(editable);
  }
  // While the daemon is down the line says so, also over a selection.
  view_.defaultTextField.setHidden(daemon_.isDiskJournalPIDRunning());
}

void VolumeSettingsEditor::hideBoxControls(bool hidden) {
  for (Control* control : std::initializer_list<Control*>{
           &view_.monitorPresenceCheckbox, &view_.monitorUsageCheckbox, &view_.monitorUsageThresholdTextField,
           &view_.monitorPresenceThresholdTextField, &view_.warnAfterTextField, &view_.warnAtTextField,
           &view_.minutesTextField, &view_.percentageTextField, &view_.volumeTextField,
           &view_.volumeOptionPathButton, &view_.volumeOptionWarnAfterButton, &view_.volumeOptionWarnAtButton,
           &view_.volumeOptionMinutesButton, &view_.volumeOptionPercentageButton,
           &view_.volumeOptionMountPathButton}) {
    control->setHidden(hidden);
  }
}

void VolumeSettingsEditor::toggleMonitorPresenceCheckbox(const Button& sender) {
  setMonitored(volume_key::kMonitorPresence, sender);
}

void VolumeSettingsEditor::toggleMonitorUsageCheckbox(const Button& sender) {
  setMonitored(volume_key::kMonitorUsage, sender);
}

void VolumeSettingsEditor::setMonitored(const char* key, const Button& sender) {
  Dictionary entry = selectedEntry();
  if (!entry) return;
  entry.set(key, PropertyList::boolean(sender.state() != ButtonState::Off));
  view_.volumesTable.reloadData();  // the label's colour follows the setting
  catalogue_.write();
}

void VolumeSettingsEditor::controlTextDidChange(TextField& field) {
  const std::int32_t value = intValue(field.stringValue());
  const bool belowEnd = value <= kLargestThreshold;
  if (&field == &view_.monitorPresenceThresholdTextField) {
    if (value >= kLeastPresenceThreshold && belowEnd)
      setThreshold(volume_key::kPresenceThreshold, value, field);
  } else if (&field == &view_.monitorUsageThresholdTextField) {
    if (value >= kLeastUsageThreshold && belowEnd) setThreshold(volume_key::kUsageThreshold, value, field);
  }
  catalogue_.write();
}

void VolumeSettingsEditor::setThreshold(const char* key, std::int32_t value, TextField& field) {
  Dictionary entry = selectedEntry();
  if (!entry) return;
  entry.set(key, PropertyList::integer(value));
  field.setObjectValueBehindEditing(PropertyList::integer(value));
  view_.volumesTable.reloadData();
}

void VolumeSettingsEditor::positionVolumeOptions() {
  const TableView& table = view_.volumesTable;
  const auto nameColumn = std::ranges::find(table.columns(), volume_key::kName, &TableColumn::identifier);
  const double columnWidth = nameColumn != table.columns().end() ? std::trunc(nameColumn->width) : 0;
  const double headerHeight = std::trunc(table.headerHeight());
  const Rect around = view_.volumesScrollView.frame();
  view_.volumeOptionsBox.setFrame({around.x + columnWidth + kBorder + kGapAfterColumn, around.y + kBorder,
                                   around.width - columnWidth - 2 * kBorder - kGapAfterColumn,
                                   around.height - headerHeight - kBorder});
}

}  // namespace corvane
