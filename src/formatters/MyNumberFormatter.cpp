#include "formatters/MyNumberFormatter.h"

#include <algorithm>
#include <string_view>

#include "values/Conversions.h"

namespace corvane {
namespace {

/// An optional minus and at least one decimal digit, and nothing else. Blanks and digit grouping are refused
/// since the value is read up to the first other character: "1,000" would be taken for 1.
bool isWholeNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

MyNumberFormatter::MyNumberFormatter(std::int32_t minimum, std::int32_t maximum, std::int32_t defaultValue)
    : minimum_(minimum), maximum_(maximum), defaultValue_(defaultValue) {}

std::optional<std::string> MyNumberFormatter::stringForObjectValue(const PropertyList& value) const {
  if (isEmpty_) return std::to_string(defaultValue_);
  if (!isNumber(value)) return std::nullopt;
  return std::to_string(intValue(value));
}

PropertyList MyNumberFormatter::objectValueForString(const std::string& text) const {
  return PropertyList::integer(intValue(text));
}

PartialStringCheck MyNumberFormatter::isPartialStringValid(const std::string& partial) {
  setEmpty(partial.empty());
  // Not valid, but with a text to take instead: so the field may be cleared.
  if (partial.empty()) return {false, std::string()};
  if (!isWholeNumber(partial)) return {false, std::nullopt};
  // Each prefix of a number is held against the whole range: with 10 to 99 the first digit is refused
  // already, and 15 has to be pasted or chosen. This is intended.
  const std::int32_t value = intValue(partial);
  return {minimum_ <= value && value <= maximum_, std::nullopt};
}

void MyNumberFormatter::setEmpty(bool isEmpty) {
  if (isEmpty == isEmpty_) return;
  isEmpty_ = isEmpty;
  displayDidChange();
}

}  // namespace corvane
