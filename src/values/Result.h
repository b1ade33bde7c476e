// What a call that can fail has come to: it is done, or there is a reason why not, in words for a person.
#pragma once

#include <string>

namespace corvane {

struct [[nodiscard]] Result {
  std::string reason;  // empty when it is done
  [[nodiscard]] explicit operator bool() const { return reason.empty(); }
};

}  // namespace corvane
