#include "formatters/CustomTextFieldCellFormatter.h"

#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {

std::optional<std::string> CustomTextFieldCellFormatter::stringForObjectValue(
    const PropertyList& value) const {
  return value ? std::optional<std::string>(description(value)) : std::nullopt;
}

PropertyList CustomTextFieldCellFormatter::objectValueForString(const std::string& text) const {
  return PropertyList::string(text);
}

PartialStringCheck CustomTextFieldCellFormatter::isPartialStringValid(const std::string& partial) {
  // Widened with its sign and then compared as an unsigned count, a negative maximum becomes a huge one. That
  // is intended: definitions with a negative limit mean no limit.
  const auto maximum = static_cast<std::uint64_t>(static_cast<std::int64_t>(maxLength_));
  return {static_cast<std::uint64_t>(utf16Length(partial)) <= maximum, std::nullopt};
}

}  // namespace corvane
