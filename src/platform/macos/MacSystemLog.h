// The unified log of macOS.
#pragma once

#include "platform/SystemLog.h"

namespace corvane {

class MacSystemLog final : public SystemLog {
 public:
  void write(std::string_view line) override;
};

}  // namespace corvane
