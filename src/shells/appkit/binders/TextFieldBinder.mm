#import "binders/TextFieldBinder.h"

#include <objc/runtime.h>

#import "Text.h"

namespace corvane::appkit {

TextFieldBinder::TextFieldBinder(TextField& field, NSTextField* view, Placement placement)
    : Binder(field, view, placement),
      field_(field),
      widget_(view),
      formatter_([CorvaneFieldFormatter new]),
      delegate_([CorvaneFieldDelegate new]) {
  formatter_->binder_ = this;
  delegate_->binder_ = this;
  [widget_ setFormatter:formatter_];
  [widget_ setDelegate:delegate_];
  refresh();
}

TextFieldBinder::~TextFieldBinder() {
  formatter_->binder_ = nullptr;
  delegate_->binder_ = nullptr;
  [widget_ setDelegate:nil];
  [widget_ setFormatter:nil];
  [formatter_ release];
  [delegate_ release];
}

std::optional<std::string> TextFieldBinder::replacementFor(const std::string& proposed) {
  // The toolkit may ask about one text more than once.
  if (field_.editing() && proposed == field_.stringValue()) return std::nullopt;
  offering_ = true;
  const bool taken = field_.typeText(proposed);
  offering_ = false;
  if (taken && field_.stringValue() == proposed) return std::nullopt;
  return field_.stringValue();
}

void TextFieldBinder::endEditing() {
  field_.endEditing();
  show();
}

bool TextFieldBinder::abortEditing() {
  if (!field_.editing()) return false;
  field_.abortEditing();
  show();
  [[widget_ currentEditor] selectAll:nil];
  return true;
}

void TextFieldBinder::show() {
  if (!field_.placeholder().empty()) {
    auto* cell = static_cast<NSTextFieldCell*>([widget_ cell]);
    [cell setPlaceholderString:toNSString(field_.placeholder())];
  }
  if (offering_) return;  // the toolkit is told by the answer
  NSString* text = toNSString(field_.stringValue());
  if (NSText* editor = [widget_ currentEditor]) {
    if (![[editor string] isEqual:text]) [editor setString:text];
  } else if (![[widget_ stringValue] isEqual:text]) {
    [widget_ setStringValue:text];
  }
}

}  // namespace corvane::appkit

using corvane::appkit::fromNSString;
using corvane::appkit::toNSString;

@implementation CorvaneFieldFormatter

// The control has its own formatter: here a value is the text that it shows.
- (NSString*)stringForObjectValue:(id)value {
  return [value isKindOfClass:[NSString class]] ? value : @"";
}

- (BOOL)getObjectValue:(id*)value forString:(NSString*)text errorDescription:(NSString**)error {
  if (value != nullptr) *value = text;
  return YES;
}

- (BOOL)isPartialStringValid:(NSString*)partial
            newEditingString:(NSString**)replacement
            errorDescription:(NSString**)error {
  if (binder_ == nullptr) return YES;
  const std::optional<std::string> taken = binder_->replacementFor(fromNSString(partial));
  if (taken && replacement != nullptr) *replacement = toNSString(*taken);
  return !taken;
}

// Where the toolkit tells what stood in the field before, a refusal leaves the insertion point where it was.
- (BOOL)isPartialStringValid:(NSString**)partial
       proposedSelectedRange:(NSRangePointer)selection
              originalString:(NSString*)original
       originalSelectedRange:(NSRange)originalSelection
            errorDescription:(NSString**)error {
  if (binder_ == nullptr) return YES;
  const std::optional<std::string> taken = binder_->replacementFor(fromNSString(*partial));
  if (!taken) return YES;
  *partial = toNSString(*taken);
  *selection = [*partial isEqual:original] ? originalSelection : NSMakeRange([*partial length], 0);
  return NO;
}

@end

@implementation CorvaneFieldDelegate

- (void)controlTextDidEndEditing:(NSNotification*)notification {
  if (binder_ != nullptr) binder_->endEditing();
}

- (BOOL)control:(NSControl*)control textView:(NSTextView*)editor doCommandBySelector:(SEL)command {
  // Escape; GNUstep has it complete a word.
  const bool cancels =
      sel_isEqual(command, @selector(cancelOperation:)) || sel_isEqual(command, @selector(complete:));
  return cancels && binder_ != nullptr && binder_->abortEditing();
}

@end
