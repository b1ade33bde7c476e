// Short words for the plain values that settings files hold.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "values/PropertyList.h"

namespace corvane::test {

inline PropertyList text(std::string value) { return PropertyList::string(std::move(value)); }
inline PropertyList number(std::int64_t value) { return PropertyList::integer(value); }
inline PropertyList flag(bool value) { return PropertyList::boolean(value); }

}  // namespace corvane::test
