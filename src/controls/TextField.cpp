#include "controls/TextField.h"

#include <utility>

#include "values/Conversions.h"

namespace corvane {

TextField::TextField(Role role, std::string text) : role_(role), text_(std::move(text)) {
  if (!text_.empty()) objectValue_ = PropertyList::string(text_);
}

TextField::~TextField() {
  if (formatter_) formatter_->removeClient(*this);
}

std::int32_t TextField::intValue() const { return corvane::intValue(text_); }

void TextField::setStringValue(std::string text) {
  if (text.empty()) {
    setObjectValue({});
  } else {
    setObjectValue(formatter_ ? formatter_->objectValueForString(text)
                              : PropertyList::string(std::move(text)));
  }
}

void TextField::setIntValue(std::int32_t value) { setObjectValue(PropertyList::integer(value)); }

void TextField::setObjectValue(PropertyList value) {
  editing_ = false;
  setObjectValueBehindEditing(std::move(value));
}

void TextField::setObjectValueBehindEditing(PropertyList value) {
  objectValue_ = std::move(value);
  if (!editing_) showObjectValue();
}

void TextField::setFormatter(std::shared_ptr<Formatter> formatter) {
  if (formatter_) formatter_->removeClient(*this);
  formatter_ = std::move(formatter);
  if (formatter_) formatter_->addClient(*this);
  if (!editing_) showObjectValue();
}

void TextField::setPlaceholder(std::string text) {
  if (text == placeholder_) return;
  placeholder_ = std::move(text);
  didChange();
}

bool TextField::typeText(const std::string& proposed) {
  if (!editable() || !takesUserActs()) return false;
  const bool wasEditing = std::exchange(editing_, true);  // the check may change how values are shown
  const PartialStringCheck check =
      formatter_ ? formatter_->isPartialStringValid(proposed) : PartialStringCheck{true, std::nullopt};
  if (!check.valid && !check.newEditingString) {
    editing_ = wasEditing;
    if (!editing_) showObjectValue();
    return false;
  }
  text_ = check.valid ? proposed : *check.newEditingString;
  didChange();
  if (textDidChange) textDidChange(*this);
  return true;
}

void TextField::endEditing() {
  if (!editing_) return;
  if (!takesUserActs()) {
    abortEditing();
    return;
  }
  editing_ = false;
  objectValue_ = formatter_ ? formatter_->objectValueForTypedText(text_) : PropertyList::string(text_);
  showObjectValue();
  if (onUserEdit) onUserEdit();
}

void TextField::abortEditing() {
  if (!editing_) return;
  editing_ = false;
  showObjectValue();
}

void TextField::formatterDisplayDidChange() {
  if (!editing_) showObjectValue();
}

void TextField::showObjectValue() {
  std::string shown;
  if (objectValue_) {
    shown = formatter_ ? formatter_->stringForObjectValue(objectValue_).value_or(std::string())
                       : description(objectValue_);
  }
  if (shown == text_) return;
  text_ = std::move(shown);
  didChange();
}

}  // namespace corvane
