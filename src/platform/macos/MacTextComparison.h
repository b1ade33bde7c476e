// Comparison of texts as the system's own programs compare names.
#pragma once

#include "platform/TextComparison.h"

namespace corvane {

class MacTextComparison final : public TextComparison {
 public:
  [[nodiscard]] int caseInsensitiveCompare(std::string_view left, std::string_view right) override;
};

}  // namespace corvane
