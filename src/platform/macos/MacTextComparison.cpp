#include "platform/macos/MacTextComparison.h"

#include "platform/macos/Strings.h"

namespace corvane {

int MacTextComparison::caseInsensitiveCompare(std::string_view left, std::string_view right) {
  const auto leftString = stringFrom(left);
  const auto rightString = stringFrom(right);
  if (leftString && rightString) {
    return static_cast<int>(CFStringCompare(leftString.get(), rightString.get(),
                                            kCFCompareCaseInsensitive | kCFCompareNonliteral));
  }
  // What is no text stands behind all texts, so that the order is one.
  return leftString ? -1 : rightString ? 1 : left.compare(right);
}

}  // namespace corvane
