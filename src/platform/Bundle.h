// The pane's own bundle: its name and the files it brings along.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

class Bundle {
 public:
  virtual ~Bundle() = default;
  /// The value of "CFBundleName" in the information dictionary.
  [[nodiscard]] virtual std::string name() = 0;
  /// Absolute paths; empty when there is no such file.
  [[nodiscard]] virtual std::string pathForResource(std::string_view name, std::string_view type) = 0;
  [[nodiscard]] virtual std::string pathForAuxiliaryExecutable(std::string_view name) = 0;
};

}  // namespace corvane
