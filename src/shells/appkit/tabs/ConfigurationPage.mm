#import "tabs/ConfigurationPage.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kLeft = 16;
constexpr CGFloat kLabelWidth = 232;
constexpr CGFloat kValues = kLeft + kLabelWidth + 8;  // where the values begin
constexpr CGFloat kLine = 20;
constexpr CGFloat kFieldHeight = 22;

NSRect labelAt(CGFloat y) { return NSMakeRect(kLeft, y, kLabelWidth, kLine); }
NSRect valueAt(CGFloat y, CGFloat width) { return NSMakeRect(kValues, y, width, kLine); }
NSRect fieldAt(CGFloat y, CGFloat width) { return NSMakeRect(kValues, y - 1, width, kFieldHeight); }

NSView* lineAt(CGFloat y, CGFloat width) {
  NSBox* line = [[[NSBox alloc] initWithFrame:NSMakeRect(kLeft, y, width - 2 * kLeft, 2)] autorelease];
  [line setBoxType:NSBoxSeparator];
  [line setTitlePosition:NSNoTitle];
  return line;
}

}  // namespace

ConfigurationPage::ConfigurationPage(ConfigurationTabView& view, NSSize size) : Page(size) {
  CGFloat y = size.height - 40;
  label(view.lastRunClientLabel, labelAt(y), kRightAligned);
  [label(view.lastRunClientField, valueAt(y, 300)) setSelectable:YES];
  pushButton(view.runClientButton, NSMakePoint(kValues, y -= 30));
  label(view.lastRunUpdaterLabel, labelAt(y -= 38), kRightAligned);
  [label(view.lastRunUpdaterField, valueAt(y, 300)) setSelectable:YES];
  pushButton(view.updateClientNowButton, NSMakePoint(kValues, y -= 30));
  put(lineAt(y -= 22, size.width));
  label(view.runIntervalLabel, labelAt(y -= 40), kRightAligned);
  entry(view.runIntervalTextField, fieldAt(y, 46));
  label(view.runIntervalUnit, NSMakeRect(kValues + 54, y, 200, kLine));
  label(view.clientGroupLabel, labelAt(y -= 32), kRightAligned);
  entry(view.clientGroupTextField, fieldAt(y, 260));
  put(lineAt(y -= 26, size.width));
  pushButton(view.uninstallButton, NSMakePoint(kValues, y -= 46));
  hint(view.removeClientField, valueAt(y - 22, 320));
}

}  // namespace corvane::appkit
