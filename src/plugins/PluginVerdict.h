// What the alert with the verdict of a validation run is called, which a shell may know it by.
#pragma once

#include <string>

#include "values/Text.h"

namespace corvane {

[[nodiscard]] inline std::string verdictMessage(bool succeeded) {
  return formatText("Plugin Validation %@", {succeeded ? "Succeeded" : "Failed"});
}

}  // namespace corvane
