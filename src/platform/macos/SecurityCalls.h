// The authorization services of the Security framework.
#pragma once

#include "platform/macos/AuthorizationCalls.h"

namespace corvane {

class SecurityCalls final : public AuthorizationCalls {
 public:
  void copyRights(const std::string& right, Asked asked) override;
  [[nodiscard]] std::int32_t execute(const Authorization& rights, const std::string& tool,
                                     char* const* arguments, std::FILE** output) override;
};

}  // namespace corvane
