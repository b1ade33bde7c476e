#import "tabs/TimeMachineSheet.h"

namespace corvane::appkit {
namespace {

constexpr CGFloat kWidth = 420;
constexpr CGFloat kHeight = 178;
constexpr CGFloat kLine = 20;
constexpr CGFloat kFieldHeight = 22;
constexpr CGFloat kButtonWidth = 84;
constexpr CGFloat kMargin = 20;

void place(NSButton* button, CGFloat right, NSString* key) {
  [button setFrame:NSMakeRect(right - kButtonWidth, 16, kButtonWidth, 26)];
  [button setKeyEquivalent:key];
}

}  // namespace

TimeMachineSheet::TimeMachineSheet(OptionsTabView& view, SheetStage& sheets)
    : Page(NSMakeSize(kWidth, kHeight)),
      panel_([[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, kWidth, kHeight)
                                        styleMask:kTitled
                                          backing:NSBackingStoreBuffered
                                            defer:YES]) {
  [panel_ setReleasedWhenClosed:NO];
  constexpr CGFloat kFields = 190;
  constexpr CGFloat kWords = kFields + 54;
  label(view.manualRunLabel, NSMakeRect(kMargin, 134, 162, kLine), kRightAligned);
  NSView* first = entry(view.manuallyTriggerTextField, NSMakeRect(kFields, 133, 46, kFieldHeight));
  label(view.manualRunDaysLabel, NSMakeRect(kWords, 134, 160, kLine));
  label(view.timeOfDayLabel, NSMakeRect(kMargin, 102, 162, kLine), kRightAligned);
  entry(view.timeOfDayTextField, NSMakeRect(kFields, 101, 46, kFieldHeight));
  popUp(view.amPmButton, NSMakeRect(kWords, 100, 80, 24));
  checkBox(view.timeMachineRemovalWarning, NSMakeRect(60, 66, 340, kLine));
  place(pushButton(view.sheetCancelButton, NSZeroPoint), kWidth - kMargin - kButtonWidth - 8, @"\x1b");
  place(pushButton(view.sheetOkButton, NSZeroPoint), kWidth - kMargin, @"\r");
  [[panel_ contentView] addSubview:this->view()];
  [panel_ recalculateKeyViewLoop];
  [panel_ setInitialFirstResponder:first];
  binder_ = std::make_unique<SheetBinder>(view.timeMachineAdvancedWindow, panel_, sheets);
}

TimeMachineSheet::~TimeMachineSheet() {
  binder_.reset();
  [this->view() removeFromSuperview];
  [panel_ release];
}

}  // namespace corvane::appkit
