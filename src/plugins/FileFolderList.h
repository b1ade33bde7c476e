// The stored form of a file or folder list: the paths, and among them the element that stands for the row
// with which the user adds one. The element is stored with the list; a list without it can't be added to.
#pragma once

#include <string_view>

#include "platform/TextComparison.h"
#include "values/PropertyList.h"

namespace corvane {

inline constexpr std::string_view kAddEntry = "Add a new entry";
/// The title of an entry's row: one blank, then the entry.
inline constexpr std::string_view kEntryTitleFormat = " %@";

/// Whether the element stands for adding: it begins with "add a new", in any letter case.
[[nodiscard]] bool isAddEntry(std::string_view element);

/// Puts the list of texts into the order in which it is stored after an addition: a new `kAddEntry` in front
/// (in place of the first one in the list), the rest sorted regardless of case. Elements that are no texts
/// are not for the pane to understand; they come right behind it, in their order.
void sortArrays(Array& list, TextComparison& texts);

}  // namespace corvane
