#include "plugins/FileFolderList.h"

#include <algorithm>
#include <string>
#include <vector>

#include "values/Text.h"

namespace corvane {
namespace {

std::string_view textOf(const PropertyList& element) {
  const std::string* text = element.asString();
  return text != nullptr ? std::string_view(*text) : std::string_view();
}

}  // namespace

bool isAddEntry(std::string_view element) { return hasPrefixIgnoringCase(element, "add a new"); }

void sortArrays(Array& list, TextComparison& texts) {
  std::vector<PropertyList> sorted = list.elements();
  const auto addEntry =
      std::ranges::find_if(sorted, [](const auto& element) { return textOf(element) == kAddEntry; });
  if (addEntry != sorted.end()) sorted.erase(addEntry);
  std::ranges::stable_sort(sorted, [&](const PropertyList& left, const PropertyList& right) {
    return texts.caseInsensitiveCompare(textOf(left), textOf(right)) < 0;
  });
  sorted.insert(sorted.begin(), PropertyList::string(std::string(kAddEntry)));
  list.replaceAll(std::move(sorted));
}

}  // namespace corvane
