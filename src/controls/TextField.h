// A field that shows a text or lets the user type one, with an optional formatter between its value and its
// text. Static labels are fields that are not editable.
//
// What is being typed is not yet the value. What a new value means for it, only the owner of the field knows
// and says: `setObjectValue` shows the value and drops what was typed, `setObjectValueBehindEditing` lets the
// user go on.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

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
  /// empty. A text that is being typed is dropped.
  void setObjectValue(PropertyList value);
  /// The same, but a text that is being typed stays; the value is shown if its editing is aborted.
  void setObjectValueBehindEditing(PropertyList value);

  [[nodiscard]] const std::shared_ptr<Formatter>& formatter() const { return formatter_; }
  void setFormatter(std::shared_ptr<Formatter> formatter);
  [[nodiscard]] const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string text);
  /// What may be typed, in words for who has typed something else: the tool tip, unless that is about
  /// something else.
  [[nodiscard]] const std::string& rangeText() const { return rangeText_.empty() ? toolTip() : rangeText_; }
  void setRangeText(std::string text) { rangeText_ = std::move(text); }

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
  std::string rangeText_;
  PropertyList objectValue_;
  std::shared_ptr<Formatter> formatter_;
  bool editing_ = false;
};

}  // namespace corvane
