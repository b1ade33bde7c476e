// What an entry field asks of the formatter that guards it: text for a value, a value for a text, and whether
// a text may stand in the field while it is being typed.
#pragma once

#include <optional>
#include <string>

#include "values/PropertyList.h"

namespace corvane {

/// The answer to a text that the user is typing.
struct PartialStringCheck {
  bool valid = false;
  /// When not valid: the text that the field takes instead; nothing leaves the field as it was.
  std::optional<std::string> newEditingString;
};

class Formatter {
 public:
  virtual ~Formatter() = default;
  [[nodiscard]] virtual std::optional<std::string> stringForObjectValue(const PropertyList& value) const = 0;
  [[nodiscard]] virtual PropertyList objectValueForString(const std::string& text) const = 0;
  [[nodiscard]] virtual PartialStringCheck isPartialStringValid(const std::string& partial) = 0;
};

}  // namespace corvane
