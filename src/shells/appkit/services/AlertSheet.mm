#import "services/AlertSheet.h"

#include <utility>

#import "System.h"
#import "Text.h"

/// Hears the end of an alert's sheet.
@interface CorvaneAlertEnd : NSObject {
 @public
  std::function<void(NSInteger)> ended_;
}
- (void)alertDidEnd:(NSAlert*)alert returnCode:(NSInteger)code contextInfo:(void*)info;
@end

@implementation CorvaneAlertEnd

- (void)alertDidEnd:(NSAlert*)alert returnCode:(NSInteger)code contextInfo:(void*)info {
  [[alert window] orderOut:nil];
  const std::function<void(NSInteger)> ended = ended_;
  if (ended) ended(code);
}

@end

namespace corvane::appkit {
namespace {

NSAlertStyle styleOf(AlertStyle style) {
  switch (style) {
    case AlertStyle::Informational:
      return kInformationalStyle;
    case AlertStyle::Critical:
      return kCriticalStyle;
    case AlertStyle::Warning:
      break;
  }
  return kWarningStyle;
}

/// The caller releases it.
NSButton* makeAccessory(const AlertCheckBox& description) {
  const NSRect frame = NSMakeRect(0, 0, description.width, description.height);
  NSButton* box = [[NSButton alloc] initWithFrame:frame];
  [box setButtonType:kSwitch];
  [box setTitle:toNSString(description.title)];
  [box setState:description.on ? kOn : kOff];
  [[box cell] setRefusesFirstResponder:description.refusesFirstResponder];
  return box;
}

/// A button has one key. This one, which is not to be seen, has Escape and presses the button that cancels,
/// which may have Return. The caller releases it.
NSButton* makeEscapeKey(NSButton* cancels) {
  NSButton* key = [[NSButton alloc] initWithFrame:NSZeroRect];
  [key setTitle:@""];
  [key setTransparent:YES];
  [[key cell] setRefusesFirstResponder:YES];
  hideFromSpeech(key);
  [key setKeyEquivalent:@"\x1b"];
  [key setTarget:cancels];
  [key setAction:@selector(performClick:)];
  return key;
}

}  // namespace

Alert::Alert(const AlertDescription& description)
    : alert_([NSAlert new]), accessory_(description.accessory ? makeAccessory(*description.accessory) : nil) {
  [alert_ setAlertStyle:styleOf(description.style)];
  [alert_ setMessageText:toNSString(description.messageText)];
  [alert_ setInformativeText:toNSString(description.informativeText)];
  NSImage* icon = description.iconPath.empty()
                      ? nil
                      : [[NSImage alloc] initWithContentsOfFile:toNSString(description.iconPath)];
  if (icon != nil) [alert_ setIcon:icon];
  [icon release];
  for (const AlertButton& button : description.buttons) {
    NSButton* shown = [alert_ addButtonWithTitle:toNSString(button.title)];
    if (button.keyEquivalent) [shown setKeyEquivalent:toNSString(*button.keyEquivalent)];
    if (&button != escapeButton(description)) continue;
    escape_ = makeEscapeKey(shown);
    escapeCode_ = kAlertFirstButtonReturn + (&button - description.buttons.data());
  }
}

Alert::~Alert() {
  [escape_ removeFromSuperview];
  [escape_ release];
  [accessory_ release];
  [alert_ release];
}

AlertResult Alert::runModal() {
  prepareAlert(alert_, accessory_, escape_);
  return resultOf([alert_ runModal]);
}

void Alert::beginSheet(NSWindow* parent, CorvaneAlertEnd* delegate) {
  prepareAlert(alert_, accessory_, escape_);
  // Nothing may follow this call: on one system it returns at once, on the other when the alert has ended.
  [alert_ beginSheetModalForWindow:parent
                     modalDelegate:delegate
                    didEndSelector:@selector(alertDidEnd:returnCode:contextInfo:)
                       contextInfo:nullptr];
}

// The toolkit may end an alert without a button, as GNUstep does on Escape.
AlertResult Alert::resultOf(NSInteger code) const {
  const NSInteger answer = code < kAlertFirstButtonReturn ? escapeCode_ : code;
  return {static_cast<int>(answer), accessory_ != nil && [accessory_ state] == kOn};
}

AlertSheet::AlertSheet(SheetStage& stage, const AlertDescription& description, Ended ended)
    : stage_(stage), description_(description), ended_(std::move(ended)), end_([CorvaneAlertEnd new]) {}

AlertSheet::~AlertSheet() {
  end_->ended_ = nullptr;
  [end_ release];
}

void AlertSheet::begin(NSWindow* parent) {
  alert_ = std::make_unique<Alert>(description_);
  end_->ended_ = [this](NSInteger code) { finish(code); };
  alert_->beginSheet(parent, end_);
}

void AlertSheet::finish(NSInteger code) {
  const AlertResult result = alert_->resultOf(code);
  const Ended ended = std::move(ended_);
  stage_.ended(*this);
  if (ended) ended(result);
}

}  // namespace corvane::appkit
