// What a data source gives a cell to show: nothing, a property-list value, or a styled text.
#pragma once

#include <variant>

#include "values/AttributedText.h"
#include "values/PropertyList.h"

namespace corvane {

using ObjectValue = std::variant<std::monostate, PropertyList, AttributedText>;

}  // namespace corvane
