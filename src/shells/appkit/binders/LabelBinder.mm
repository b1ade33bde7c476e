#import "binders/LabelBinder.h"

#import "Text.h"

namespace corvane::appkit {

LabelBinder::LabelBinder(TextField& field, NSTextField* view)
    : Binder(field, view), field_(field), widget_(view) {
  refresh();
}

void LabelBinder::show() { [widget_ setStringValue:toNSString(field_.stringValue())]; }

}  // namespace corvane::appkit
