// What the product brings along on Linux: resources inside the executable, the helper beside it or in the
// installed place.
#pragma once

#include "platform/Bundle.h"

namespace corvane::qt {

class QtBundle final : public Bundle {
 public:
  [[nodiscard]] std::string name() override;
  /// The path of a resource inside the executable, as the toolkit names it. An icon is asked for by the name
  /// that it has in the bundle of a Mac.
  [[nodiscard]] std::string pathForResource(std::string_view name, std::string_view type) override;
  [[nodiscard]] std::string pathForAuxiliaryExecutable(std::string_view name) override;
};

}  // namespace corvane::qt
