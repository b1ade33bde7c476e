// Keeps late calls away from an object that has gone: whoever hands out a callback for later wraps it with
// one of these that it owns, and the callback does nothing once that is destroyed.
#pragma once

#include <memory>
#include <utility>

namespace corvane {

class LateCalls {
 public:
  LateCalls() = default;
  LateCalls(const LateCalls&) = delete;
  LateCalls& operator=(const LateCalls&) = delete;
  ~LateCalls() = default;

  template <typename Function>
  [[nodiscard]] auto wrap(Function function) const {
    return [alive = std::weak_ptr<const bool>(alive_), function = std::move(function)](auto&&... arguments) {
      if (!alive.expired()) function(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace corvane
