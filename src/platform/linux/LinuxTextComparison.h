// Comparison of texts by Unicode case folding, with utf8proc. For Linux, and wherever its services run.
#pragma once

#include "platform/TextComparison.h"

namespace corvane {

class LinuxTextComparison : public TextComparison {
 public:
  [[nodiscard]] int caseInsensitiveCompare(std::string_view left, std::string_view right) override;
};

}  // namespace corvane
