// Admits only whole numbers within a range as they are typed, and remembers when the field was cleared. Used
// by the number fields of the Configuration and Options tabs and by number options of plug-ins.
//
// A number is an optional minus and decimal digits: no plus, no blanks, no digit grouping, no fraction.
// Whether a negative one is admitted is the range's decision.
//
// That the field was cleared is remembered in the formatter. Fields that share one formatter therefore all
// show the default once one of them is cleared, until a text that is not empty is checked; this is intended.
#pragma once

#include <cstdint>

#include "formatters/Formatter.h"

namespace corvane {

class MyNumberFormatter final : public Formatter {
 public:
  MyNumberFormatter() = default;
  MyNumberFormatter(std::int32_t minimum, std::int32_t maximum, std::int32_t defaultValue);

  [[nodiscard]] std::int32_t minimum() const { return minimum_; }
  [[nodiscard]] std::int32_t maximum() const { return maximum_; }
  [[nodiscard]] std::int32_t defaultValue() const { return defaultValue_; }
  void setMinimum(std::int32_t value) { minimum_ = value; }
  void setMaximum(std::int32_t value) { maximum_ = value; }
  void setDefaultValue(std::int32_t value) { defaultValue_ = value; }

  /// The default while the field is cleared; otherwise the number's whole part; nothing for what is not a
  /// number.
  [[nodiscard]] std::optional<std::string> stringForObjectValue(const PropertyList& value) const override;
  /// The leading integer of the text; never fails.
  [[nodiscard]] PropertyList objectValueForString(const std::string& text) const override;
  /// Checks every partial text against the whole range. The empty text is not valid but taken, which clears
  /// the field.
  [[nodiscard]] PartialStringCheck isPartialStringValid(const std::string& partial) override;

 private:
  void setEmpty(bool isEmpty);

  bool isEmpty_ = false;
  std::int32_t minimum_ = 0;
  std::int32_t maximum_ = 99;
  std::int32_t defaultValue_ = 0;
};

}  // namespace corvane
