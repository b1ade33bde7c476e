// The calls of the system's authorization services that the pane makes. Apart, so that everything around them
// can be tested on any system.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>

#include "platform/Authorization.h"

namespace corvane {

class AuthorizationCalls {
 public:
  /// A status of the services, and the rights when it is 0.
  using Asked = std::function<void(std::int32_t status, std::unique_ptr<Authorization> rights)>;

  virtual ~AuthorizationCalls() = default;
  /// Has the system ask the user for the right. `asked` is called once, from the main run loop.
  virtual void copyRights(const std::string& right, Asked asked) = 0;
  /// Starts the tool as root with rights that `copyRights` gave; `arguments` end with a null pointer. With
  /// `output` (else null) it gets the tool's standard output, for the caller to close.
  [[nodiscard]] virtual std::int32_t execute(const Authorization& rights, const std::string& tool,
                                             char* const* arguments, std::FILE** output) = 0;
};

}  // namespace corvane
