// A field that shows a text or lets the user type one, with an optional formatter between its value and its
// text. Static labels are fields that are not editable.
//
// While the user is typing in it, a value that a controller sets does not disturb the text: it is shown when
// the editing ends without a change.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "controls/Control.h"
#include "formatters/Formatter.h"
#include "values/PropertyList.h"

namespace corvane {

class TextField final : public Control, private Formatter::Client {
 public:
  enum class Role { Label, Entry };
  explicit TextField(Role role, std::string text = {});
  ~TextField() override;

  [[nodiscard]] bool editable() const { return role_ == Role::Entry; }
  [[nodiscard]] const std::string& stringValue() const { return text_; }
  /// The leading integer of the text that the field shows.
  [[nodiscard]] std::int32_t intValue() const;
  [[nodiscard]] const PropertyList& objectValue() const { return objectValue_; }
  void setStringValue(std::string text);
  void setIntValue(std::int32_t value);
  /// Shows the value as the formatter (or, without one, its plain description) gives it; nothing shows as
  /// empty.
  void setObjectValue(PropertyList value);

  [[nodiscard]] const std::shared_ptr<Formatter>& formatter() const { return formatter_; }
  void setFormatter(std::shared_ptr<Formatter> formatter);
  [[nodiscard]] const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string text);

  // The user's acts.
  /// The field would now read `proposed`. The formatter may refuse (false: the text stays) or replace it
  /// (true: `stringValue` tells what stands there now); what is taken is reported through `textDidChange`.
  bool typeText(const std::string& proposed);
  /// The user left the field or pressed Return: what was typed becomes the value, shown by the formatter's
  /// rules, and a binding hears of it; nothing happens when nothing was typed. A field that was disabled or
  /// hidden meanwhile drops what was typed.
  void endEditing();
  [[nodiscard]] bool editing() const { return editing_; }
  /// Drops what was typed since the editing began and shows the value again.
  void abortEditing();

  std::function<void(TextField&)> textDidChange;

 private:
  void formatterDisplayDidChange() override;
  void showObjectValue();

  Role role_;
  std::string text_;
  std::string placeholder_;
  PropertyList objectValue_;
  std::shared_ptr<Formatter> formatter_;
  bool editing_ = false;
};

}  // namespace corvane
