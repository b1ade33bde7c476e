#import "tabs/OptionsPage.h"

#include <algorithm>

#import "Text.h"
#import "binders/ScrollViewBinder.h"
#import "binders/TableViewBinder.h"
#import "widgets/VolumeBox.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kRowHeight = 20;
constexpr CGFloat kFieldHeight = 22;
constexpr CGFloat kSmallLine = 16;

}  // namespace

OptionsPage::OptionsPage(OptionsTabView& view, NSSize size) : Page(size) {
  addVolumes(view);
  addBox(view);
  addRows(view);
}

void OptionsPage::addVolumes(OptionsTabView& view) {
  const NSRect around = toNSRect(view.volumesScrollView.frame());
  label(view.defaultTextField, NSMakeRect(NSMinX(around), NSMaxY(around) + 6, NSWidth(around), kRowHeight));
  NSTableView* table = [[[NSTableView alloc] initWithFrame:NSMakeRect(0, 0, 230, 100)] autorelease];
  [table setRowHeight:kRowHeight];
  add(std::make_unique<TableViewBinder>(view.volumesTable, table));
  NSScrollView* scroll = scrollView(around, table);
  add(std::make_unique<ScrollViewBinder>(view.volumesScrollView, scroll));

  const CGFloat y = NSMinY(around) - 32;
  NSButton* showAll = pushButton(view.showAllVolumeTypesButton, NSMakePoint(NSMinX(around), y));
  pushButton(view.purgeButton, NSMakePoint(NSMaxX([showAll frame]) + 8, y));
}

void OptionsPage::addBox(OptionsTabView& view) {
  constexpr CGFloat kLabels = 86;
  constexpr CGFloat kValues = 90;
  constexpr CGFloat kWords = kValues + 22;  // beside the check boxes
  constexpr CGFloat kFields = kWords + 76;
  constexpr CGFloat kUnits = kFields + 54;
  NSView* box = [[[CorvaneVolumeBox alloc] initWithFrame:NSMakeRect(0, 0, 350, 162)] autorelease];
  put(box);
  add(std::make_unique<PlainBinder>(view.volumeOptionsBox, box, Placement::Frame));
  putInto(box);
  CGFloat y = 136;
  [label(view.volumeTextField, NSMakeRect(8, y, 320, 18)) setFont:[NSFont boldSystemFontOfSize:12]];
  labelButton(view.volumeOptionMountPathButton, NSMakeRect(0, y -= 26, kLabels, kRowHeight), kRightAligned);
  labelButton(view.volumeOptionPathButton, NSMakeRect(kValues, y, 240, kRowHeight));
  label(view.warnAfterTextField, NSMakeRect(0, y -= 28, kLabels, kRowHeight), kRightAligned);
  checkBox(view.monitorPresenceCheckbox, NSMakeRect(kValues, y, 20, kRowHeight));
  labelButton(view.volumeOptionWarnAfterButton, NSMakeRect(kWords, y, 72, kRowHeight));
  entry(view.monitorPresenceThresholdTextField, NSMakeRect(kFields, y - 1, 46, kFieldHeight));
  labelButton(view.volumeOptionMinutesButton, NSMakeRect(kUnits, y, 90, kRowHeight));
  hint(view.minutesTextField, NSMakeRect(kWords, y -= 18, 200, kSmallLine));
  label(view.warnAtTextField, NSMakeRect(0, y -= 28, kLabels, kRowHeight), kRightAligned);
  checkBox(view.monitorUsageCheckbox, NSMakeRect(kValues, y, 20, kRowHeight));
  labelButton(view.volumeOptionWarnAtButton, NSMakeRect(kWords, y, 72, kRowHeight));
  entry(view.monitorUsageThresholdTextField, NSMakeRect(kFields, y - 1, 46, kFieldHeight));
  labelButton(view.volumeOptionPercentageButton, NSMakeRect(kUnits, y, 90, kRowHeight));
  hint(view.percentageTextField, NSMakeRect(kWords, y - 18, 200, kSmallLine));
  putInto(nil);
}

void OptionsPage::addRows(OptionsTabView& view) {
  const auto labelBeside = [](const Control& checkBox) {
    return NSMakeRect(16, checkBox.frame().y, 108, checkBox.frame().height);
  };
  label(view.bootVolumeLabel, labelBeside(view.bootVolumeWarningCheckbox), kRightAligned);
  checkBox(view.bootVolumeWarningCheckbox, toNSRect(view.bootVolumeWarningCheckbox.frame()));
  entry(view.bootVolumeFullTextField, toNSRect(view.bootVolumeFullTextField.frame()), Placement::Frame);
  labelButton(view.bootVolumeWarningTrailingButton, toNSRect(view.bootVolumeWarningTrailingButton.frame()),
              kLeftAligned, Placement::Frame);
  label(view.timeMachineLabel, labelBeside(view.timeMachineWarningCheckbox), kRightAligned);
  checkBox(view.timeMachineWarningCheckbox, toNSRect(view.timeMachineWarningCheckbox.frame()));
  entry(view.timeMachineInactiveTextField, toNSRect(view.timeMachineInactiveTextField.frame()),
        Placement::Frame);
  labelButton(view.timeMachineWarningTrailingButton, toNSRect(view.timeMachineWarningTrailingButton.frame()),
              kLeftAligned, Placement::Frame);
  NSButton* advanced = pushButton(view.advancedButton, NSZeroPoint);
  const CGFloat right = NSMaxX(toNSRect(view.volumesScrollView.frame()));
  [advanced setFrameOrigin:NSMakePoint(right - NSWidth([advanced frame]), 50)];
  label(view.automountLabel, NSMakeRect(16, 24, 108, 18), kRightAligned);
  checkBox(view.automountCheckbox, NSMakeRect(130, 24, 400, 18));
}

}  // namespace corvane::appkit
