// Caps the length of a text as it is typed. Used by the text, user-name and password options of plug-ins.
#pragma once

#include <cstdint>
#include <optional>

#include "formatters/Formatter.h"
#include "values/AttributedText.h"

namespace corvane {

class CustomTextFieldCellFormatter final : public Formatter {
 public:
  /// Length in UTF-16 code units; a negative maximum admits every length, 0 only the empty text.
  [[nodiscard]] std::int32_t maximumLength() const { return maxLength_; }
  void setMaximumLength(std::int32_t length) { maxLength_ = length; }

  [[nodiscard]] std::optional<std::string> stringForObjectValue(const PropertyList& value) const override;
  [[nodiscard]] PropertyList objectValueForString(const std::string& text) const override;
  [[nodiscard]] PartialStringCheck isPartialStringValid(const std::string& partial) override;
  /// For a shell whose toolkit asks a formatter for styled text: none, so that the cell draws the plain
  /// string with its own attributes.
  [[nodiscard]] static std::optional<AttributedText> attributedStringForObjectValueWithDefaultAttributes(
      const PropertyList& /*value*/, const TextAttributes& /*attributes*/) {
    return std::nullopt;
  }

 private:
  std::int32_t maxLength_ = 100;
};

}  // namespace corvane
