// The order of texts as the system's users know it: regardless of case, and of how an accent is spelled.
#pragma once

#include <string_view>

namespace corvane {

class TextComparison {
 public:
  virtual ~TextComparison() = default;
  /// Negative, zero or positive, as the texts (UTF-8) order regardless of case; canonically equivalent texts
  /// are equal. Bytes that are no text have an order of their own.
  [[nodiscard]] virtual int caseInsensitiveCompare(std::string_view left, std::string_view right) = 0;
};

}  // namespace corvane
