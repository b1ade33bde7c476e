#include "options/OptionsTabViewController.h"

#include <initializer_list>
#include <memory>

#include "formatters/MyNumberFormatter.h"
#include "options/VolumeKeys.h"

namespace corvane {

OptionsTabViewController::OptionsTabViewController(Platform& platform, const PathTable& paths,
                                                   OptionsTabView& view)
    : view_(view),
      timeMachine_(platform, paths.timeMachineSettings),
      diskFree_(platform, paths.rootCapacitySettings),
      automountDisk_(platform, paths.autoDiskMount),
      diskJournald_(platform, paths.diskJournal),
      journal_(diskJournald_),
      daemon_(platform, paths.diskJournalPid),
      catalogue_(platform, paths, journal_, pane_),
      label_(catalogue_, pane_),
      table_(view, catalogue_, daemon_, pane_),
      editor_(view, catalogue_, daemon_, pane_),
      rows_(view, platform.workspace, timeMachine_, diskFree_, automountDisk_, pane_),
      sheet_(view, timeMachine_) {}

OptionsTabViewController::~OptionsTabViewController() {
  disconnectActions();
  sheet_.detachFormatters();
}

void OptionsTabViewController::awakeFromNib(PaneServices& quorlenPrefPane) {
  pane_.quorlenPrefPane = &quorlenPrefPane;
  for (SettingsFile* store : {&timeMachine_, &diskFree_, &automountDisk_, &diskJournald_}) {
    store->setDelegate(&quorlenPrefPane);
  }
  attachFormatters();
  connectActions();
  rows_.bindControls();
  view_.volumesScrollView.setHorizontalScrollElasticity(ScrollElasticity::None);
  view_.volumesScrollView.setVerticalScrollElasticity(ScrollElasticity::None);
  rows_.layOut();
  editor_.positionVolumeOptions();
  refresh();
}

void OptionsTabViewController::attachFormatters() {
  sheet_.attachFormatters();
  const auto percentOrDays = std::make_shared<MyNumberFormatter>(1, 99, 1);
  for (TextField* field : {&view_.monitorUsageThresholdTextField, &view_.timeMachineInactiveTextField,
                           &view_.bootVolumeFullTextField}) {
    field->setFormatter(percentOrDays);
  }
  view_.monitorPresenceThresholdTextField.setFormatter(std::make_shared<MyNumberFormatter>(1, 60, 1));
}

void OptionsTabViewController::connectActions() {
  view_.volumesTable.setDataSource(this);
  view_.purgeButton.action = [this](Button&) { table_.purgeVolume(); };
  view_.showAllVolumeTypesButton.action = [this](Button&) { table_.toggleShowAllVolumeTypes(); };
  view_.monitorPresenceCheckbox.action = [this](Button& sender) {
    editor_.toggleMonitorPresenceCheckbox(sender);
  };
  view_.monitorUsageCheckbox.action = [this](Button& sender) { editor_.toggleMonitorUsageCheckbox(sender); };
  for (Button* label : {&view_.volumeOptionWarnAfterButton, &view_.volumeOptionMinutesButton})
    label->action = [this](Button&) { view_.monitorPresenceCheckbox.click(); };
  for (Button* label : {&view_.volumeOptionWarnAtButton, &view_.volumeOptionPercentageButton})
    label->action = [this](Button&) { view_.monitorUsageCheckbox.click(); };
  for (TextField* field : {&view_.monitorPresenceThresholdTextField, &view_.monitorUsageThresholdTextField}) {
    field->textDidChange = [this](TextField& changed) { editor_.controlTextDidChange(changed); };
  }
  for (Button* label : {&view_.timeMachineWarningTrailingButton, &view_.bootVolumeWarningTrailingButton}) {
    label->action = [this](Button& sender) { rows_.toggleCheckboxButtonPairing(sender); };
  }
  view_.advancedButton.action = [this](Button&) { advancedButtonAction(); };
  view_.sheetOkButton.action = [this](Button&) { sheet_.acceptSheet(); };
  view_.sheetCancelButton.action = [this](Button&) { sheet_.cancelSheet(); };
}

void OptionsTabViewController::disconnectActions() {
  view_.volumesTable.setDataSource(nullptr);
  for (Button* button : {&view_.purgeButton, &view_.showAllVolumeTypesButton, &view_.monitorPresenceCheckbox,
                         &view_.monitorUsageCheckbox, &view_.timeMachineWarningTrailingButton,
                         &view_.bootVolumeWarningTrailingButton, &view_.advancedButton, &view_.sheetOkButton,
                         &view_.sheetCancelButton}) {
    button->action = nullptr;
  }
  for (TextField* field : {&view_.monitorPresenceThresholdTextField, &view_.monitorUsageThresholdTextField}) {
    field->textDidChange = nullptr;
  }
}

void OptionsTabViewController::refresh() {
  editor_.refreshVolumeControls();
  // One more registration on every refresh, and none is taken back: each adds one call per change of the
  // lock. This is intended; what is called has the same effect however often it is called.
  if (pane_.quorlenPrefPane != nullptr) pane_.quorlenPrefPane->addUnlockedObserver(*this);
  refreshAutomountDisk();
  refreshDiskFree();
  refreshTimeMachine();
  refreshVolumes();
  if (!catalogue_.volumes().empty()) view_.volumesTable.selectRow(0);
}

std::vector<std::string> OptionsTabViewController::unreadableFiles() const {
  std::vector<std::string> files;
  for (const SettingsFile* store : {&diskFree_, &timeMachine_, &automountDisk_, &diskJournald_}) {
    if (!store->validValues()) files.push_back(store->file());
  }
  return files;
}

bool OptionsTabViewController::errorLoadingPlists() { return !unreadableFiles().empty(); }

void OptionsTabViewController::refreshTimeMachine() {
  timeMachine_.refresh();
  sheet_.showSettings();
  rows_.showTimeMachineToolTip();
}

void OptionsTabViewController::unlockedDidChange() {
  editor_.refreshVolumeControls();
  view_.volumesTable.reloadData();  // the names' colour follows the lock
  rows_.showLockState();
}

int OptionsTabViewController::numberOfRowsInTableView(const TableView& /*table*/) {
  return static_cast<int>(catalogue_.volumes().size());
}

ObjectValue OptionsTabViewController::tableViewObjectValueForTableColumnRow(const TableView& /*table*/,
                                                                            const TableColumn& column,
                                                                            int row) {
  const Dictionary entry = catalogue_.volumes().entryAtRow(row);
  if (!entry) return {};
  if (column.identifier == volume_key::kName) return label_.labelOf(entry);
  const PropertyList value = entry.value(column.identifier);
  return value ? ObjectValue(value) : ObjectValue();
}

std::string OptionsTabViewController::tableViewToolTipForCell(const TableView& /*table*/,
                                                              const TableColumn& column, int row) {
  if (column.identifier != volume_key::kName) return {};
  return std::string(volumePath(catalogue_.volumes().entryAtRow(row)));
}

void OptionsTabViewController::tableViewSelectionDidChange(TableView& /*table*/) {
  editor_.refreshVolumeControls();
}

void OptionsTabViewController::advancedButtonAction() {
  refreshTimeMachine();
  sheet_.begin();
}

}  // namespace corvane
