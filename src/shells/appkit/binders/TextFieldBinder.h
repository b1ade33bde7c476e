// Entry fields. Every change of the text is offered to the control, which may refuse or replace it, by way of
// a formatter of the toolkit that asks the control.
#pragma once

#include <optional>
#include <string>

#include "binders/Binder.h"
#include "controls/TextField.h"

namespace corvane::appkit {
class TextFieldBinder;
}

@interface CorvaneFieldFormatter : NSFormatter {
 @public
  corvane::appkit::TextFieldBinder* binder_;
}
@end

@interface CorvaneFieldDelegate : NSObject <NSTextFieldDelegate> {
 @public
  corvane::appkit::TextFieldBinder* binder_;
}
@end

namespace corvane::appkit {

class TextFieldBinder final : public Binder {
 public:
  TextFieldBinder(TextField& field, NSTextField* view, Placement placement = Placement::Layout);
  ~TextFieldBinder() override;

  // For the toolkit.
  /// The text that the field takes instead of the proposed one; nothing when it takes that.
  [[nodiscard]] std::optional<std::string> replacementFor(const std::string& proposed);
  void endEditing();
  /// Drops what was typed; false when nothing was.
  [[nodiscard]] bool abortEditing();

 private:
  void show() override;

  TextField& field_;
  NSTextField* widget_;
  CorvaneFieldFormatter* formatter_;
  CorvaneFieldDelegate* delegate_;
  bool offering_ = false;
};

}  // namespace corvane::appkit
