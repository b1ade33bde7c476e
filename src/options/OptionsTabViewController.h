// The Options tab: volumes with their presence and usage warnings, the warnings about Time Machine and the
// startup disk, and the system's automount setting. Owns the four settings stores of the tab and composes the
// collaborators that carry its operations. The pane loads and refreshes it; the tab writes through the pane.
#pragma once

#include <string>
#include <vector>

#include "options/DiskJournal.h"
#include "options/JournalDaemon.h"
#include "options/OptionsTabView.h"
#include "options/PaneConnection.h"
#include "options/TimeMachineSheet.h"
#include "options/VolumeCatalogue.h"
#include "options/VolumeLabel.h"
#include "options/VolumeSettingsEditor.h"
#include "options/VolumeTable.h"
#include "options/WarningRows.h"
#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "pane/SettingsFile.h"
#include "pane/Tabs.h"
#include "platform/Platform.h"

namespace corvane {

class OptionsTabViewController final : public OptionsTab,
                                       public TableViewDataSource,
                                       public UnlockedObserver {
 public:
  /// Reads the four settings files. All references must outlive the controller.
  OptionsTabViewController(Platform& platform, const PathTable& paths, OptionsTabView& view);
  OptionsTabViewController(const OptionsTabViewController&) = delete;
  OptionsTabViewController& operator=(const OptionsTabViewController&) = delete;
  ~OptionsTabViewController() override;

  /// Ties the controls to the controller and shows everything. Called once, when pane and controls exist.
  void awakeFromNib(PaneServices& quorlenPrefPane);

  // What the pane asks.
  /// Shows everything afresh and selects the first volume.
  void refresh() override;
  [[nodiscard]] bool errorLoadingPlists() override;
  void refreshAutomountDisk() override { automountDisk_.refresh(); }
  void refreshTimeMachine() override;
  void refreshDiskFree() override { diskFree_.refresh(); }
  void refreshVolumes() override { table_.refreshVolumes(); }
  void unlockedDidChange() override;

  // What the table asks.
  [[nodiscard]] int numberOfRowsInTableView(const TableView& table) override;
  [[nodiscard]] ObjectValue tableViewObjectValueForTableColumnRow(const TableView& table,
                                                                  const TableColumn& column,
                                                                  int row) override;
  [[nodiscard]] std::string tableViewToolTipForCell(const TableView& table, const TableColumn& column,
                                                    int row) override;
  void tableViewSelectionDidChange(TableView& table) override;

  /// Opens the advanced sheet with the values of the file.
  void advancedButtonAction();

  /// The files that could not be read, as absolute paths.
  [[nodiscard]] std::vector<std::string> unreadableFiles() const;

  // The collaborators, for whoever needs one subject of the tab.
  [[nodiscard]] VolumeCatalogue& catalogue() { return catalogue_; }
  [[nodiscard]] VolumeTable& volumeTable() { return table_; }
  [[nodiscard]] VolumeSettingsEditor& volumeSettingsEditor() { return editor_; }
  [[nodiscard]] WarningRows& warningRows() { return rows_; }
  [[nodiscard]] const JournalDaemon& journalDaemon() const { return daemon_; }

 private:
  void connectActions();
  void disconnectActions();
  void attachFormatters();

  OptionsTabView& view_;
  PaneConnection pane_;
  SettingsFile timeMachine_;
  SettingsFile diskFree_;
  SettingsFile automountDisk_;
  SettingsFile diskJournald_;
  DiskJournal journal_;
  JournalDaemon daemon_;
  VolumeCatalogue catalogue_;
  VolumeLabel label_;
  VolumeTable table_;
  VolumeSettingsEditor editor_;
  WarningRows rows_;
  TimeMachineSheet sheet_;
};

}  // namespace corvane
