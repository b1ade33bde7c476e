#include "options/VolumeTable.h"

#include <optional>
#include <string>

namespace corvane {
namespace {

constexpr const char* kDaemonIsDown =
    "An error has been detected. Please contact support, mentioning \"ReasonCode 412\"";
constexpr const char* kSelectHint =
    "Select a volume to configure alerts based on presence and/or free space.";
constexpr const char* kMountHint =
    "Mount a volume to configure monitoring thresholds for presence and/or free space.";

}  // namespace

void VolumeTable::refreshVolumes() {
  TableView& table = view_.volumesTable;
  const VolumeList& volumes = catalogue_.volumes();
  const Dictionary selected = volumes.entryAtRow(table.selectedRow());
  const std::string name(volumeName(selected));
  const std::string path(volumePath(selected));
  table.deselectAll();
  if (!daemon_.isDiskJournalPIDRunning()) {
    table.setEnabled(false);
    view_.defaultTextField.setStringValue(kDaemonIsDown);
    return;
  }
  table.setEnabled(pane_.unlocked());
  catalogue_.rebuild();
  const std::optional<int> again = name.empty() ? std::nullopt : volumes.rowOf(name, path);
  view_.defaultTextField.setStringValue(volumes.empty() ? kMountHint : kSelectHint);
  table.reloadData();
  if (!volumes.empty()) table.selectRow(again.value_or(0));
}

void VolumeTable::purgeVolume() {
  const int row = view_.volumesTable.selectedRow();
  if (row < 0) return;
  catalogue_.volumes().removeRow(row);
  catalogue_.write();
  refreshVolumes();
}

void VolumeTable::toggleShowAllVolumeTypes() {
  VolumeFilters& filters = catalogue_.filters();
  filters.setShowAllVolumeTypes(!filters.showAllVolumeTypes());
  view_.showAllVolumeTypesButton.setTitle(filters.showAllVolumeTypes() ? OptionsTabView::kHideSystemVolumes
                                                                       : OptionsTabView::kShowSystemVolumes);
  refreshVolumes();
}

}  // namespace corvane
